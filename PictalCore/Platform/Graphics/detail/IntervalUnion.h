#pragma once

#include "PictalCore/Platform/Graphics/detail/Capsule.h"
#include "PictalCore/Platform/Graphics/detail/CoverageRow.h"

#include <vector>

namespace pictal::detail {

/// Unites the intervals that capsules cut out of the lines of one pixel row. Capsules mostly come
/// in the order of a path, where each overlaps the one before: so one run a line is held open and
/// grown, and the few that it leaves behind are sorted at the end.
class IntervalUnion {
  public:
    /// Starts over without intervals, on lines that divide the row evenly.
    void reset(std::span<const CGFloat> lines);
    void add(const Capsule& capsule, CGFloat row);
    /// Hands each run on as two upright edges, as high as its line's share of the row.
    void flush(CoverageRow& row);

  private:
    struct Run {
        std::size_t line;
        Interval interval;
    };
    void grow(std::size_t firstLine, std::size_t count);
    void sortRuns();

    std::span<const CGFloat> lines_;
    /// The open run of each line; infinity where there is none.
    std::vector<CGFloat> lows_;
    std::vector<CGFloat> highs_;
    std::vector<Run> leftBehind_;
    std::vector<CGFloat> newLows_;
    std::vector<CGFloat> newHighs_;
};

}  // namespace pictal::detail
