#pragma once

#include "PictalCore/Platform/Graphics/CGImage.h"
#include "PictalCore/Platform/Registration/Comparison.h"
#include "PictalCore/Platform/Registration/RowBits.h"
#include "PictalCore/Platform/Registration/SegmentTable.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace pictal::detail {

/// How far sums of rows differ that ought to be the same: the tenth percentile, over a sample of
/// segments, of the largest difference to the row above. 0 on clean screens.
[[nodiscard]] std::uint16_t noiseOf(const CGImage& image, const SegmentGrid& grid);

/// The sums of one frame's segments.
class SumTable {
  public:
    /// @param shift  so many pixels further to the left than the grid says
    SumTable(const CGImage& image, const SegmentGrid& grid, std::int64_t shift);

    [[nodiscard]] std::int64_t rows() const { return rows_; }
    [[nodiscard]] std::size_t columns() const { return columns_; }
    [[nodiscard]] const kernels::SegmentSums* row(std::int64_t y) const {
        return sums_.get() + static_cast<std::size_t>(y) * columns_;
    }

  private:
    std::int64_t rows_;
    std::size_t columns_;
    std::unique_ptr<kernels::SegmentSums[]> sums_;
};

/// Segments are equal when their sums are nearly so: frames that passed through a lossy codec or a
/// camera.
class NoisyComparison final : public Comparison {
  public:
    /// @param target   moved to the left by `shift` against the grid
    /// @param unmoved  the target as it is
    NoisyComparison(const SegmentGrid& grid, const SumTable& reference, const SumTable& target,
                    const SumTable& unmoved, std::int64_t shift, std::uint16_t noise);

    [[nodiscard]] std::int64_t rows() const override { return reference_.rows(); }
    [[nodiscard]] std::uint64_t columns() const override { return columns_; }
    [[nodiscard]] std::uint64_t referenceTestable(std::int64_t y) const override {
        return referenceTestable_[static_cast<std::size_t>(y)];
    }
    [[nodiscard]] std::uint64_t targetTestable(std::int64_t y) const override {
        return targetTestable_[static_cast<std::size_t>(y)];
    }
    [[nodiscard]] std::uint32_t referenceKey(std::int64_t y, std::size_t column) const override {
        return key(reference_.row(y)[column]);
    }
    [[nodiscard]] std::uint32_t targetKey(std::int64_t y, std::size_t column) const override {
        return key(target_.row(y)[column]);
    }
    [[nodiscard]] std::uint64_t equal(std::int64_t y, std::int64_t other) const override {
        return kernel_.alikeSegments(reference_.row(y), target_.row(other), reference_.columns(),
                                     tolerance_);
    }
    [[nodiscard]] std::uint64_t still(std::int64_t y) const override {
        return kernel_.alikeSegments(reference_.row(y), unmoved_.row(y), reference_.columns(),
                                     tolerance_);
    }
    /// Noise makes repeated content look unique now and then.
    [[nodiscard]] double uniqueness() const override { return 0.4; }

  private:
    [[nodiscard]] std::uint32_t key(const kernels::SegmentSums& sums) const;
    [[nodiscard]] RowBits testable(const SumTable& table) const;

    const kernels::SegmentKernels& kernel_ = kernels::segmentKernels();
    const SumTable& reference_;
    const SumTable& target_;
    const SumTable& unmoved_;
    std::uint64_t columns_;
    std::uint16_t tolerance_, step_;
    RowBits referenceTestable_, targetTestable_;
};

}  // namespace pictal::detail
