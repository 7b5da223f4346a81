#pragma once

#include "PictalCore/Platform/Graphics/Kernels/CapsuleLines.h"
#include "PictalCore/Platform/Graphics/detail/StrokeCapsule.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace pictal::detail {

/// Up to 64 neighbouring columns of a pixel row.
struct Run {
    CGFloat row = 0;
    CGFloat left = 0;
    std::int64_t width = 0;

    [[nodiscard]] CGFloat right() const { return left + static_cast<CGFloat>(width); }
};

/// Measures what capsules cover of the pixels of a run on lines in its row, each in the middle of
/// its share: 64 of them, and four times as many in the quarters of the row in which a piece of the
/// outline is nearly level. Ends are rounded to 1/65536 px and added up as whole numbers, so that
/// no order of capsules or of additions shows.
template <class T>
class RunLines {
  public:
    /// Starts over.
    void reset(const Run& run);
    void add(const StrokeCapsule& capsule);
    /// A capsule that all lines cross and that goes on beyond the run at the other side.
    void addEnd(Side side, const StrokeCapsule& capsule);
    void cover(std::span<std::uint8_t> levels);

  private:
    using Capsules = std::vector<kernels::CapsuleInRow<T>>;

    void noteLevelPieces(const StrokeCapsule& capsule);
    void coverBlock(const T* lines, std::int32_t share);
    void uniteBetween(const T* lines);
    void leaveBehind();
    void uniteLeftBehind();
    void addEdge(std::int64_t x, std::int32_t share);
    void addEdges(std::span<const std::int32_t, kernels::lineBlock> xs, std::int32_t share);
    [[nodiscard]] T width() const { return static_cast<T>(run_.width); }

    Run run_;
    unsigned fineQuarters_ = 0;
    Capsules fromLeft_, fromRight_, between_;
    kernels::LineIntervals<T> intervals_;
    /// Intervals of a block for which there was no room: the line, then both ends, in one number.
    std::vector<std::uint64_t> leftBehind_;
    std::size_t mostLeftBehind_ = 0;
    /// What edges cover of the column that they are in, and of all columns from here on.
    std::array<std::int32_t, 66> partly_{};
    std::array<std::int32_t, 66> wholly_{};
};

}  // namespace pictal::detail
