#include "PictalCore/Platform/ImageIO/detail/ZlibStream.h"

#include <new>

#include <libdeflate.h>

namespace pictal::detail {

namespace {

struct Release {
    void operator()(libdeflate_compressor* it) const { libdeflate_free_compressor(it); }
    void operator()(libdeflate_decompressor* it) const { libdeflate_free_decompressor(it); }
};

}  // namespace

std::optional<ByteBuffer> compressed(std::span<const std::byte> bytes, int level) {
    const std::unique_ptr<libdeflate_compressor, Release> compressor(
        libdeflate_alloc_compressor(level));
    if (!compressor) return std::nullopt;
    const std::size_t room = libdeflate_zlib_compress_bound(compressor.get(), bytes.size());
    ByteBuffer stream{std::unique_ptr<std::byte[]>(new (std::nothrow) std::byte[room])};
    if (!stream.bytes) return std::nullopt;
    stream.size = libdeflate_zlib_compress(compressor.get(), bytes.data(), bytes.size(),
                                           stream.bytes.get(), room);
    return stream;
}

Inflation inflate(std::span<const std::byte> stream, std::span<std::byte> room) {
    const std::unique_ptr<libdeflate_decompressor, Release> decompressor(
        libdeflate_alloc_decompressor());
    if (!decompressor) return {};
    Inflation result;
    switch (libdeflate_zlib_decompress_ex(decompressor.get(), stream.data(), stream.size(),
                                          room.data(), room.size(), &result.taken, &result.made)) {
        case LIBDEFLATE_SUCCESS:
            result.status = Inflation::Status::done;
            break;
        case LIBDEFLATE_INSUFFICIENT_SPACE:
            result.status = Inflation::Status::roomTooSmall;
            break;
        case LIBDEFLATE_BAD_DATA:
        case LIBDEFLATE_SHORT_OUTPUT:
            break;
    }
    return result;
}

}  // namespace pictal::detail
