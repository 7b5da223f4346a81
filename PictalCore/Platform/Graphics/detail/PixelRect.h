#pragma once

#include <algorithm>
#include <cstdint>

namespace pictal::detail {

/// Whole pixels of a raster, top row first: columns left…right − 1 of rows top…bottom − 1.
struct PixelRect {
    std::int64_t left = 0;
    std::int64_t top = 0;
    std::int64_t right = 0;
    std::int64_t bottom = 0;

    [[nodiscard]] constexpr std::int64_t width() const { return right - left; }
    [[nodiscard]] constexpr std::int64_t height() const { return bottom - top; }
    [[nodiscard]] constexpr bool isEmpty() const { return left >= right || top >= bottom; }
    [[nodiscard]] constexpr PixelRect intersection(const PixelRect& other) const {
        return {std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
                std::min(bottom, other.bottom)};
    }

    friend constexpr bool operator==(const PixelRect&, const PixelRect&) = default;
};

}  // namespace pictal::detail
