#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string_view>
#include <vector>

#include <libdeflate.h>

namespace pictal {

/// Makes PNG files by hand, right or wrong: a header, any chunks, filtered rows as they stand. What
/// it makes is valid as long as the caller's chunks are.
class PNGBuilder {
  public:
    using Bytes = std::vector<std::uint8_t>;

    PNGBuilder(std::uint32_t width, std::uint32_t height, int colorType, int bitDepth,
               int interlace = 0) {
        Bytes header = numbers({width, height});
        for (const int field : {bitDepth, colorType, 0, 0, interlace})
            header.push_back(static_cast<std::uint8_t>(field));
        chunk("IHDR", header);
    }

    PNGBuilder& chunk(std::string_view type, const Bytes& data) {
        append(file_, numbers({static_cast<std::uint32_t>(data.size())}));
        const std::size_t covered = file_.size();
        append(file_, type);
        append(file_, data);
        append(file_, numbers({libdeflate_crc32(0, &file_[covered], file_.size() - covered)}));
        return *this;
    }
    /// The image data: rows with their filter types, compressed here.
    PNGBuilder& rows(const Bytes& filtered) { return chunk("IDAT", compressed(filtered)); }

    /// The file, with the end chunk.
    [[nodiscard]] std::vector<std::byte> build() const {
        PNGBuilder ended = *this;
        const auto bytes = std::as_bytes(std::span(ended.chunk("IEND", {}).file_));
        return {bytes.begin(), bytes.end()};
    }

    /// A zlib stream.
    [[nodiscard]] static Bytes compressed(const Bytes& data) {
        libdeflate_compressor* const compressor = libdeflate_alloc_compressor(6);
        Bytes stream(libdeflate_zlib_compress_bound(compressor, data.size()));
        stream.resize(libdeflate_zlib_compress(compressor, data.data(), data.size(), stream.data(),
                                               stream.size()));
        libdeflate_free_compressor(compressor);
        return stream;
    }
    /// Four bytes each, the most significant first.
    [[nodiscard]] static Bytes numbers(std::initializer_list<std::uint32_t> values) {
        Bytes all;
        for (const std::uint32_t value : values)
            for (int shift = 24; shift >= 0; shift -= 8)
                all.push_back(static_cast<std::uint8_t>(value >> shift));
        return all;
    }
    static void append(Bytes& bytes, const auto& more) {
        bytes.insert(bytes.end(), more.begin(), more.end());
    }

  private:
    Bytes file_{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
};

/// Makes the checksum of every chunk right again, so that damage reaches the decoder behind it.
inline void repairChecksums(std::span<std::byte> file) {
    constexpr std::size_t frame = 12;
    for (std::size_t at = 8; at + frame <= file.size();) {
        std::size_t length = 0;
        for (const std::byte byte : file.subspan(at, 4))
            length = length << 8 | std::to_integer<std::size_t>(byte);
        if (length > file.size() - at - frame) return;
        const auto sum = PNGBuilder::numbers({libdeflate_crc32(0, &file[at + 4], length + 4)});
        std::ranges::copy(std::as_bytes(std::span(sum)), &file[at + 8 + length]);
        at += length + frame;
    }
}

}  // namespace pictal
