#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <utility>
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
        Bytes header = number(width);
        append(header, number(height));
        append(header, {static_cast<std::uint8_t>(bitDepth), static_cast<std::uint8_t>(colorType),
                        0, 0, static_cast<std::uint8_t>(interlace)});
        chunk("IHDR", header);
    }

    PNGBuilder& chunk(std::string_view type, const Bytes& data) {
        chunks_.emplace_back(type, data);
        return *this;
    }
    /// The image data: rows with their filter types, compressed here.
    PNGBuilder& rows(const Bytes& filtered) { return chunk("IDAT", compressed(filtered)); }

    /// The file, with the end chunk.
    [[nodiscard]] std::vector<std::byte> build() const {
        Bytes file{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
        for (const auto& [type, data] : chunks_)
            appendChunk(file, type, data);
        appendChunk(file, "IEND", {});
        const auto bytes = std::as_bytes(std::span(file));
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

    /// Four bytes, the most significant first.
    [[nodiscard]] static Bytes number(std::uint32_t value) {
        return {static_cast<std::uint8_t>(value >> 24), static_cast<std::uint8_t>(value >> 16),
                static_cast<std::uint8_t>(value >> 8), static_cast<std::uint8_t>(value)};
    }
    [[nodiscard]] static Bytes numbers(std::initializer_list<std::uint32_t> values) {
        Bytes all;
        for (const std::uint32_t value : values)
            append(all, number(value));
        return all;
    }

  private:
    static void append(Bytes& bytes, const Bytes& more) {
        bytes.insert(bytes.end(), more.begin(), more.end());
    }
    static void appendChunk(Bytes& file, const std::string& type, const Bytes& data) {
        append(file, number(static_cast<std::uint32_t>(data.size())));
        const std::size_t covered = file.size();
        file.insert(file.end(), type.begin(), type.end());
        append(file, data);
        append(file, number(libdeflate_crc32(0, file.data() + covered, file.size() - covered)));
    }

    std::vector<std::pair<std::string, Bytes>> chunks_;
};

/// Makes the checksum of every chunk right again, so that damage reaches the decoder behind it.
inline void repairChecksums(std::span<std::byte> file) {
    constexpr std::size_t frame = 12;
    for (std::size_t at = 8; at + frame <= file.size();) {
        std::size_t length = 0;
        for (std::size_t i = 0; i < 4; ++i)
            length = length << 8 | std::to_integer<std::size_t>(file[at + i]);
        if (length > file.size() - at - frame) return;
        const auto checksum =
            PNGBuilder::number(libdeflate_crc32(0, file.data() + at + 4, length + 4));
        std::ranges::copy(std::as_bytes(std::span(checksum)), file.data() + at + 8 + length);
        at += length + frame;
    }
}

}  // namespace pictal
