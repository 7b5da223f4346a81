#pragma once

#include "PictalCore/Platform/Graphics/detail/CoverageSink.h"
#include "PictalCore/Platform/Graphics/detail/PixelRect.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

#include <gtest/gtest.h>

namespace pictal::test {

/// Keeps the levels that a rasteriser reports for the pixels of a clip, and holds it to the order
/// of `CoverageSink`.
class CoverageCanvas : public detail::CoverageSink {
  public:
    explicit CoverageCanvas(const detail::PixelRect& clip)
        : clip_(clip), levels_(static_cast<std::size_t>(clip.width() * clip.height())) {}

    void solid(std::int64_t row, std::int64_t left, std::int64_t right) override {
        if (accepts(row, left, right)) std::fill_n(place(left, row), right - left, 255);
        solidPixels_ += right - left;
    }
    void varied(std::int64_t row, std::int64_t left,
                std::span<const std::uint8_t> coverage) override {
        if (accepts(row, left, left + std::ssize(coverage)))
            std::ranges::copy(coverage, place(left, row));
    }

    int at(std::int64_t x, std::int64_t y) const {
        return levels_[static_cast<std::size_t>((y - clip_.top) * clip_.width() + x - clip_.left)];
    }
    /// Covered pixels, in pixels.
    double area() const { return std::accumulate(levels_.begin(), levels_.end(), 0.0) / 255; }
    std::int64_t solidPixels() const { return solidPixels_; }
    const detail::PixelRect& clip() const { return clip_; }

  private:
    bool accepts(std::int64_t row, std::int64_t left, std::int64_t right) {
        const bool inside =
            row >= clip_.top && row < clip_.bottom && left >= clip_.left && right <= clip_.right;
        const bool ordered = row > lastRow_ || (row == lastRow_ && left >= lastRight_);
        EXPECT_TRUE(inside && ordered && left < right)
            << "row " << row << ", columns " << left << "…" << right;
        lastRow_ = row;
        lastRight_ = right;
        return inside && ordered;
    }
    std::vector<std::uint8_t>::iterator place(std::int64_t x, std::int64_t y) {
        return levels_.begin() + ((y - clip_.top) * clip_.width() + x - clip_.left);
    }

    detail::PixelRect clip_;
    std::vector<std::uint8_t> levels_;
    std::int64_t lastRow_ = clip_.top - 1, lastRight_ = 0, solidPixels_ = 0;
};

/// The greatest difference, in levels, between what was reported and `expected(x, y)` in 0…1.
template <class Expected>
double maxLevelError(const CoverageCanvas& canvas, Expected expected) {
    double greatest = 0;
    const detail::PixelRect& clip = canvas.clip();
    for (std::int64_t y = clip.top; y < clip.bottom; ++y)
        for (std::int64_t x = clip.left; x < clip.right; ++x)
            greatest = std::max(greatest, std::abs(canvas.at(x, y) - 255 * expected(x, y)));
    return greatest;
}

/// The greatest difference of two canvases, in levels, within the clip of the first.
inline double difference(const CoverageCanvas& have, const CoverageCanvas& want) {
    return std::round(maxLevelError(have, [&](auto x, auto y) { return want.at(x, y) / 255.0; }));
}

}  // namespace pictal::test
