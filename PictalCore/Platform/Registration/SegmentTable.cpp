#include "PictalCore/Platform/Registration/SegmentTable.h"

#include "PictalCore/Platform/Registration/SegmentRows.h"

#include <algorithm>

namespace pictal::detail {

using kernels::maximumSegments;
using kernels::segmentBit;
using kernels::segmentPixels;

SegmentGrid::SegmentGrid(std::int64_t width) : width_(width) {
    const auto pixels = static_cast<std::size_t>(std::max<std::int64_t>(width, segmentPixels));
    const std::size_t count =
        std::min((pixels + segmentPixels - 1) / segmentPixels, maximumSegments);
    const std::size_t last = pixels - segmentPixels;
    for (std::size_t i = 0; i < count; ++i) {
        const bool sideBySide = count < maximumSegments && i + 1 < count;
        const std::size_t start = sideBySide  ? i * segmentPixels
                                  : count > 1 ? last * i / (count - 1)
                                              : 0;
        starts_.push_back(static_cast<std::uint32_t>(start));
    }
}

SegmentGrid::SegmentGrid(const SegmentGrid& whole, std::size_t columns) : width_(whole.width_) {
    const std::size_t count = std::min(columns, whole.columns());
    for (std::size_t i = 0; i < count; ++i)
        starts_.push_back(whole.starts_[(2 * i + 1) * whole.columns() / (2 * count)]);
}

std::uint64_t SegmentGrid::inside(std::int64_t shift) const {
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < columns(); ++i) {
        const std::int64_t left = std::int64_t{starts_[i]} - shift;
        const bool fits = left >= 0 && left + static_cast<std::int64_t>(segmentPixels) <=
                                           std::max<std::int64_t>(width_, segmentPixels);
        bits |= std::uint64_t{fits} << segmentBit(i);
    }
    return bits;
}

std::vector<std::uint32_t> SegmentGrid::shiftedStarts(std::int64_t shift) const {
    std::vector<std::uint32_t> starts = starts_;
    const std::int64_t last =
        std::max<std::int64_t>(width_ - static_cast<std::int64_t>(segmentPixels), 0);
    for (std::uint32_t& start : starts)
        start = static_cast<std::uint32_t>(
            std::clamp<std::int64_t>(std::int64_t{start} - shift, 0, last));
    return starts;
}

SegmentTable::SegmentTable(const CGImage& image, const SegmentGrid& grid, std::int64_t shift)
    : rows_(image.height()),
      stride_(grid.blocks() * kernels::segmentBlock),
      hashes_(std::make_unique_for_overwrite<std::uint32_t[]>(static_cast<std::size_t>(rows_) *
                                                              stride_)),
      testable_(static_cast<std::size_t>(rows_)) {
    const auto& kernel = kernels::segmentKernels();
    const std::vector<std::uint32_t> starts = grid.shiftedStarts(shift);
    SegmentRows source(image);
    std::uint32_t* row = hashes_.get();
    for (std::int64_t y = 0; y < rows_; ++y, row += stride_) {
        std::fill(row + starts.size(), row + stride_, 0U);
        const std::uint64_t textured = kernel.hashSegments(source.row(y), starts, row);
        // Nothing is known of what would be above the first row.
        const std::uint64_t same =
            y == 0 ? ~std::uint64_t{0} : kernel.equalSegments(row - stride_, row, grid.blocks());
        testable_[static_cast<std::size_t>(y)] = textured & ~same;
    }
}

}  // namespace pictal::detail
