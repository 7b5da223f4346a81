#pragma once

#include "PictalCore/Platform/ImageIO/PNG.h"

#include <optional>

namespace pictal::detail {

/// The first chunk of a file. A parsed one is valid: positive sides, a depth that its colour type
/// allows.
struct PNGHeader {
    std::int64_t width = 0;
    std::int64_t height = 0;
    int bitDepth = 8;
    PNG::ColorType colorType = PNG::ColorType::rgb;
    bool interlaced = false;

    [[nodiscard]] int channels() const;
    /// Bytes of a row of so many pixels, without its filter type.
    [[nodiscard]] std::size_t rowBytes(std::int64_t pixels) const;
    /// Bytes of all rows with their filter types: what the compressed stream holds.
    [[nodiscard]] std::uint64_t filteredBytes() const;
};

/// One of the seven pictures of an interlaced file: it holds the pixels (x0 + i·dx, y0 + j·dy).
struct PNGPass {
    std::int64_t x0, y0, dx, dy;

    [[nodiscard]] std::int64_t columns(std::int64_t width) const {
        return width > x0 ? (width - x0 + dx - 1) / dx : 0;
    }
    [[nodiscard]] std::int64_t rows(std::int64_t height) const {
        return height > y0 ? (height - y0 + dy - 1) / dy : 0;
    }
};

/// The passes of a file, in order: seven when it is interlaced, else the whole picture.
[[nodiscard]] std::span<const PNGPass> passesOf(const PNGHeader& header);

/// A file cut into its chunks, each one's checksum held against its bytes. Views on the bytes.
struct PNGFile {
    using Bytes = std::span<const std::byte>;
    enum class Extent { beforePixels, whole };

    PNGHeader header;
    /// The first chunk of each kind that stands before the pixels; empty where there is none.
    Bytes palette, transparency, codingPoints, profile, standardRGB, gamma, chromaticities;
    std::vector<Bytes> imageData;
    /// Whether nothing is there but chunks that the standard knows, the pixels in one run of them,
    /// and a palette and transparency once at most, in this order before them.
    bool hasPlainLayout = true;

    [[nodiscard]] static std::expected<PNGFile, PNG::ReadError> parse(Bytes bytes, Extent extent);
};

}  // namespace pictal::detail
