#pragma once

#include "PictalCore/Platform/Graphics/detail/CoverageSink.h"
#include "PictalCore/Platform/Graphics/detail/PixelRect.h"

#include <algorithm>
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
        ASSERT_LT(left, right);
        if (accepts(row, left, right)) std::fill_n(place(left, row), right - left, 255);
        solidPixels_ += right - left;
    }
    void varied(std::int64_t row, std::int64_t left,
                std::span<const std::uint8_t> coverage) override {
        ASSERT_FALSE(coverage.empty());
        const auto right = left + static_cast<std::int64_t>(coverage.size());
        if (accepts(row, left, right))
            std::copy(coverage.begin(), coverage.end(), place(left, row));
    }

    [[nodiscard]] int at(std::int64_t x, std::int64_t y) const {
        return levels_[static_cast<std::size_t>((y - clip_.top) * clip_.width() + x - clip_.left)];
    }
    /// Covered pixels, in pixels.
    [[nodiscard]] double area() const {
        double sum = 0;
        for (const std::uint8_t level : levels_)
            sum += level;
        return sum / 255;
    }
    [[nodiscard]] std::int64_t solidPixels() const { return solidPixels_; }
    [[nodiscard]] const detail::PixelRect& clip() const { return clip_; }

  private:
    bool accepts(std::int64_t row, std::int64_t left, std::int64_t right) {
        const bool inside =
            row >= clip_.top && row < clip_.bottom && left >= clip_.left && right <= clip_.right;
        const bool ordered = row > lastRow_ || (row == lastRow_ && left >= lastRight_);
        EXPECT_TRUE(inside) << "row " << row << ", columns " << left << "…" << right;
        EXPECT_TRUE(ordered) << "row " << row << ", columns " << left << "…" << right;
        lastRow_ = row;
        lastRight_ = right;
        return inside && ordered;
    }
    [[nodiscard]] std::vector<std::uint8_t>::iterator place(std::int64_t x, std::int64_t y) {
        return levels_.begin() + ((y - clip_.top) * clip_.width() + x - clip_.left);
    }

    detail::PixelRect clip_;
    std::vector<std::uint8_t> levels_;
    std::int64_t lastRow_ = clip_.top - 1;
    std::int64_t lastRight_ = 0;
    std::int64_t solidPixels_ = 0;
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

/// The text form of the first pixels that differ by more than `tolerance`; empty if none does.
inline std::string difference(const CoverageCanvas& have, const CoverageCanvas& want,
                              int tolerance = 0) {
    std::string text;
    const detail::PixelRect common = have.clip().intersection(want.clip());
    int found = 0;
    for (std::int64_t y = common.top; y < common.bottom; ++y)
        for (std::int64_t x = common.left; x < common.right; ++x)
            if (std::abs(have.at(x, y) - want.at(x, y)) > tolerance && ++found <= 4)
                text += "(" + std::to_string(x) + ", " + std::to_string(y) + ") has " +
                        std::to_string(have.at(x, y)) + ", want " + std::to_string(want.at(x, y)) +
                        "\n";
    return text;
}

}  // namespace pictal::test
