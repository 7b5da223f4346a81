#include "PictalCore/Platform/Graphics/Kernels/Arithmetic.h"
#include "PictalCore/Platform/ImageIO/PNG.h"
#include "PictalCore/Platform/ImageIO/detail/PNGChunkWriter.h"

#include <memory>

#include <libdeflate.h>

namespace pictal::PNG {

using detail::PNGChunkWriter;

std::expected<std::vector<std::byte>, WriteError> write(const CGImage& image,
                                                        Compression compression) {
    if (image.width() == 0) return std::unexpected(WriteError::emptyImage);
    const std::size_t channels = image.isOpaque() ? 3 : 4;
    const std::size_t rowBytes = static_cast<std::size_t>(image.width()) * channels + 1;
    const std::size_t size = rowBytes * static_cast<std::size_t>(image.height());
    const std::unique_ptr<std::byte[]> filtered(new (std::nothrow) std::byte[size]);
    if (!filtered) return std::unexpected(WriteError::outOfMemory);
    for (std::int64_t y = 0; y < image.height(); ++y) {
        std::byte* to = filtered.get() + static_cast<std::size_t>(y) * rowBytes;
        *to++ = std::byte{0};
        for (const std::uint32_t pixel : image.row(y)) {
            const std::uint32_t straight = kernels::unpremultiplied(pixel);
            for (std::size_t c = 0; c < channels; ++c)
                *to++ = static_cast<std::byte>(straight >> (8 * c) & 255);
        }
    }

    const int level = compression == Compression::fast    ? 1
                      : compression == Compression::small ? 12
                                                          : 6;
    const std::unique_ptr<libdeflate_compressor, decltype(&libdeflate_free_compressor)> compressor(
        libdeflate_alloc_compressor(level), &libdeflate_free_compressor);
    if (!compressor) return std::unexpected(WriteError::outOfMemory);
    const std::size_t room = libdeflate_zlib_compress_bound(compressor.get(), size);
    const std::unique_ptr<std::byte[]> packed(new (std::nothrow) std::byte[room]);
    if (!packed) return std::unexpected(WriteError::outOfMemory);
    const std::size_t packedSize =
        libdeflate_zlib_compress(compressor.get(), filtered.get(), size, packed.get(), room);

    PNGChunkWriter file;
    file.begin(image.width(), image.height(), image.isOpaque() ? ColorType::rgb : ColorType::rgba,
               8);
    file.colorSpace(image.colorSpace());
    file.imageData({packed.get(), packedSize});
    return std::move(file).end();
}

}  // namespace pictal::PNG
