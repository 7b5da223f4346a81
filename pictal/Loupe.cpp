#include "pictal/Loupe.h"

#include "PictalCore/Color/ColorLoupeGeometry.h"

#include <algorithm>
#include <vector>

namespace pictal::program {

namespace {

constexpr std::uint32_t black = 0xFF000000;
constexpr std::uint32_t white = 0xFFFFFFFF;
constexpr std::uint32_t grey = 0xFF808080;

/// Squares in a row with a line of one pixel between them.
struct Grid {
    std::int64_t count;
    std::int64_t square;

    [[nodiscard]] std::int64_t size() const { return count * (square + 1) - 1; }
    [[nodiscard]] std::int64_t squareAt(std::int64_t place) const { return place / (square + 1); }
    [[nodiscard]] bool isLine(std::int64_t place) const { return place % (square + 1) == square; }
    /// How far a place is inside a square, from the nearer side: 0 at its edge, −1 on the line.
    [[nodiscard]] std::int64_t depth(std::int64_t place, std::int64_t of) const {
        const std::int64_t start = of * (square + 1);
        return std::min(place - start, start + square - 1 - place);
    }
};

}  // namespace

std::optional<CGImage> loupePicture(const CGImage& image, std::int64_t x, std::int64_t y,
                                    std::int64_t side) {
    const CGSize size{static_cast<CGFloat>(image.width()), static_cast<CGFloat>(image.height())};
    const CGRect crop = ColorLoupeGeometry::cropRect(
        {static_cast<CGFloat>(x), static_cast<CGFloat>(y)}, size, side);
    const auto left = static_cast<std::int64_t>(crop.minX());
    const auto top = static_cast<std::int64_t>(crop.minY());
    const std::int64_t square = std::max<std::int64_t>(8, (240 - (side - 1)) / side);
    const Grid across{static_cast<std::int64_t>(crop.width()), square};
    const Grid down{static_cast<std::int64_t>(crop.height()), square};

    const auto colorAt = [&](std::int64_t column, std::int64_t row) {
        const std::int64_t depth =
            std::min(across.depth(column, x - left), down.depth(row, y - top));
        if (depth == -1) return black;
        if (depth == 0) return white;
        if (across.isLine(column) || down.isLine(row)) return grey;
        return image.row(
            top + down.squareAt(row))[static_cast<std::size_t>(left + across.squareAt(column))];
    };
    std::vector<std::uint32_t> pixels;
    pixels.reserve(static_cast<std::size_t>(across.size() * down.size()));
    for (std::int64_t row = 0; row < down.size(); ++row)
        for (std::int64_t column = 0; column < across.size(); ++column)
            pixels.push_back(colorAt(column, row));
    return CGImage::fromBytes(std::as_bytes(std::span(pixels)),
                              {across.size(), down.size(), across.size() * 4}, image.colorSpace());
}

}  // namespace pictal::program
