#pragma once

#include "PictalCore/Platform/Registration/Comparison.h"
#include "PictalCore/Platform/Registration/SegmentTable.h"

namespace pictal::detail {

/// Segments are equal when all of their pixels are: screens repeat pixels exactly.
class ExactComparison final : public Comparison {
  public:
    /// @param target  moved to the left by `shift` against the grid
    /// @param unmoved  the target as it is
    ExactComparison(const SegmentGrid& grid, const SegmentTable& reference,
                    const SegmentTable& target, const SegmentTable& unmoved, std::int64_t shift)
        : reference_(reference),
          target_(target),
          unmoved_(unmoved),
          blocks_(grid.blocks()),
          columns_(grid.inside(shift)) {}

    [[nodiscard]] std::int64_t rows() const override { return reference_.rows(); }
    [[nodiscard]] std::uint64_t columns() const override { return columns_; }
    [[nodiscard]] std::uint64_t referenceTestable(std::int64_t y) const override {
        return reference_.testable(y);
    }
    [[nodiscard]] std::uint64_t targetTestable(std::int64_t y) const override {
        return target_.testable(y);
    }
    [[nodiscard]] std::uint32_t referenceKey(std::int64_t y, std::size_t column) const override {
        return reference_.hashes(y)[column];
    }
    [[nodiscard]] std::uint32_t targetKey(std::int64_t y, std::size_t column) const override {
        return target_.hashes(y)[column];
    }
    [[nodiscard]] std::uint64_t equal(std::int64_t y, std::int64_t other) const override {
        return kernel_.equalSegments(reference_.hashes(y), target_.hashes(other), blocks_);
    }
    [[nodiscard]] std::uint64_t still(std::int64_t y) const override {
        return kernel_.equalSegments(reference_.hashes(y), unmoved_.hashes(y), blocks_);
    }

  private:
    const SegmentTable& reference_;
    const SegmentTable& target_;
    const SegmentTable& unmoved_;
    std::size_t blocks_;
    std::uint64_t columns_;
    const kernels::SegmentKernels& kernel_ = kernels::segmentKernels();
};

}  // namespace pictal::detail
