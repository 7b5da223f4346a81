#pragma once

#include "PictalCore/Platform/Graphics/CGImage.h"
#include "PictalCore/Platform/Graphics/Kernels/Segments.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace pictal::detail {

/// Where the segments of a frame begin: side by side, or spread evenly over a frame that has more
/// pixels than a row of segments; the last one ends at the right edge.
class SegmentGrid {
  public:
    explicit SegmentGrid(std::int64_t width);
    /// So many columns of another one, evenly chosen.
    SegmentGrid(const SegmentGrid& whole, std::size_t columns);

    [[nodiscard]] std::size_t columns() const { return starts_.size(); }
    /// Eights of hashes that a row takes.
    [[nodiscard]] std::size_t blocks() const {
        return (columns() + kernels::segmentBlock - 1) / kernels::segmentBlock;
    }
    /// The columns that still lie on the frame when they are moved to the left, a bit each.
    [[nodiscard]] std::uint64_t inside(std::int64_t shift) const;
    [[nodiscard]] std::vector<std::uint32_t> shiftedStarts(std::int64_t shift) const;

  private:
    std::int64_t width_;
    std::vector<std::uint32_t> starts_;
};

/// One frame, read once: a hash a segment, and which segments can tell a movement.
class SegmentTable {
  public:
    /// @param shift  so many pixels further to the left than the grid says
    SegmentTable(const CGImage& image, const SegmentGrid& grid, std::int64_t shift);

    [[nodiscard]] std::int64_t rows() const { return rows_; }
    [[nodiscard]] const std::uint32_t* hashes(std::int64_t y) const {
        return hashes_.get() + static_cast<std::size_t>(y) * stride_;
    }
    /// Segments that are textured and differ from the one above, a bit each.
    [[nodiscard]] std::uint64_t testable(std::int64_t y) const {
        return testable_[static_cast<std::size_t>(y)];
    }

  private:
    std::int64_t rows_;
    std::size_t stride_;
    std::unique_ptr<std::uint32_t[]> hashes_;
    std::vector<std::uint64_t> testable_;
};

}  // namespace pictal::detail
