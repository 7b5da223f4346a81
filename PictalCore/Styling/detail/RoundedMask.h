#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace pictal::detail {

/// How much of each pixel a rounded rectangle covers that fills its raster: exact areas. All four
/// corners are alike, so only what one of them changes is kept.
class RoundedMask {
  public:
    /// @param radius  0…half the shorter side
    RoundedMask(std::int64_t width, std::int64_t height, double radius);

    /// One row, from its left end; the right end is the mirror image.
    struct Row {
        /// So many pixels are not covered at all.
        std::int64_t outside = 0;
        /// The next ones are covered in part, 0…1, and everything up to the mirror image whole.
        std::span<const float> edge;

        /// The first column that is covered whole.
        [[nodiscard]] std::int64_t inside() const { return outside + std::ssize(edge); }
    };
    /// 0 ≤ y < height
    [[nodiscard]] Row row(std::int64_t y) const;

    [[nodiscard]] std::int64_t width() const { return width_; }
    [[nodiscard]] std::int64_t height() const { return height_; }
    /// So many rows at the top, and at the bottom, are not covered whole.
    [[nodiscard]] std::int64_t cornerRows() const { return std::ssize(rows_); }

  private:
    struct Extent {
        std::int64_t outside = 0;
        std::size_t begin = 0;
        std::size_t end = 0;
    };

    std::int64_t width_ = 0;
    std::int64_t height_ = 0;
    std::vector<float> coverage_;
    std::vector<Extent> rows_;
};

}  // namespace pictal::detail
