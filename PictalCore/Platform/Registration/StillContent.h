#pragma once

#include "PictalCore/Platform/Registration/Comparison.h"
#include "PictalCore/Platform/Registration/RowBits.h"

namespace pictal::detail {

/// What did not move between two frames: headers, footers, sidebars, or the whole page. None of it
/// can testify to a movement.
class StillContent {
  public:
    explicit StillContent(const Comparison& frames);

    /// Segments that may testify to a movement, a bit each, in either frame.
    [[nodiscard]] std::uint64_t mobile(std::int64_t y) const {
        return mobile_[static_cast<std::size_t>(y)];
    }
    /// Rows above and below the content that moves, equal almost throughout.
    [[nodiscard]] std::int64_t rowsAtTop() const { return rowsAtTop_; }
    [[nodiscard]] std::int64_t rowsAtBottom() const { return rowsAtBottom_; }
    /// The part of what can tell a movement that stands still.
    [[nodiscard]] double share(const RowRange& rows) const;
    /// The part of writing that stands still; pictures and videos are not counted.
    [[nodiscard]] double writingShare(const RowRange& rows) const;
    /// How much can tell a movement at all, in segments.
    [[nodiscard]] double testable(const RowRange& rows) const { return testable_.in(rows); }

  private:
    RowBits mobile_;
    std::int64_t rowsAtTop_ = 0;
    std::int64_t rowsAtBottom_ = 0;
    BitCounts testable_, still_, changedLines_;
};

}  // namespace pictal::detail
