#pragma once

#include "PictalCore/Platform/Graphics/FillRule.h"
#include "PictalCore/Platform/Graphics/detail/ColumnSet.h"
#include "PictalCore/Platform/Graphics/detail/CoverageSink.h"
#include "PictalCore/Platform/Graphics/detail/Fixed.h"
#include "PictalCore/Platform/Graphics/detail/PixelRect.h"

#include <cstddef>
#include <vector>

namespace pictal::detail {

/// Gathers the edges that cross one row of pixels and reports what they enclose.
///
/// An edge adds its height to all pixels to its right, and to those that it crosses the part of the
/// height that lies to its right. So each pixel needs two sums: the heights of the edges in it,
/// `cover`, and twice the area between them and its left side, `area`. What is enclosed in a pixel
/// is the sum of all covers up to it less its own area; between touched pixels it does not change.
class CoverageRow {
  public:
    /// @param area  the columns that matter; right of them nothing is reported
    explicit CoverageRow(const PixelRect& area);

    /// A straight edge from x1 to x2, in either direction. Its height counts down positive.
    void addSloped(Fixed x1, Fixed x2, Fixed height);

    /// Reports the row and forgets its edges.
    void flush(std::int64_t row, FillRule rule, CoverageSink& sink);

  private:
    struct Cell {
        Fixed cover = 0;
        std::int64_t area = 0;
    };

    void touch(std::int64_t column, Fixed height, std::int64_t area) {
        Cell& cell = cells_[static_cast<std::size_t>(column)];
        cell.cover += height;
        cell.area += area;
        touched_.insert(column);
    }

    Fixed left_;
    Fixed width_;
    std::vector<Cell> cells_;
    /// Which cells are not zero.
    ColumnSet touched_;
    std::vector<std::uint8_t> levels_;
};

}  // namespace pictal::detail
