#pragma once

#include "PictalCore/Platform/Graphics/detail/ColumnSet.h"
#include "PictalCore/Platform/Graphics/detail/CoverageSink.h"
#include "PictalCore/Platform/Graphics/detail/PixelRect.h"
#include "PictalCore/Platform/Graphics/detail/RunLines.h"
#include "PictalCore/Platform/Graphics/detail/StraightEdge.h"
#include "PictalCore/Platform/Graphics/detail/StrokeCapsule.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace pictal::detail {

/// What a capsule does in one row, or in a band of rows.
struct RowCapsule {
    const StrokeCapsule* of = nullptr;
    Section top{};
    Section bottom{};
    Section reach{};
    /// Whether it reaches from the top to the bottom.
    bool spans = false;
    /// Whether others hide a side of it.
    bool leftIsHidden = false;
    bool rightIsHidden = false;
    /// Columns counted from the start of the work area: touched, covered wholly.
    std::int32_t begin = 0, solidBegin = 0, solidEnd = 0, end = 0;

    [[nodiscard]] const Capsule& capsule() const { return of->capsule; }
    /// The rightmost left end or leftmost right end of a capsule that spans the row.
    [[nodiscard]] CGFloat innermost(Side side) const {
        return side == Side::left ? std::max(top.left, bottom.left)
                                  : std::min(top.right, bottom.right);
    }
};

/// The area of a stroke's clip, sideways to whole words of 64 columns. A pixel's level is decided
/// within its word, so it does not depend on the clip.
struct WorkArea {
    PixelRect clip;
    std::int64_t left = 0;
    std::int64_t width = 0;

    explicit WorkArea(const PixelRect& pixels)
        : clip(pixels),
          left(pixels.left & ~std::int64_t{63}),
          width(((pixels.right + 63) & ~std::int64_t{63}) - left) {}

    /// The column that x lies in, or the nearest one; for `ceil`, the first at or right of x.
    [[nodiscard]] std::int32_t floor(CGFloat x) const {
        return static_cast<std::int32_t>(bounded(x));
    }
    [[nodiscard]] std::int32_t ceil(CGFloat x) const {
        const CGFloat inside = bounded(x);
        const auto column = static_cast<std::int32_t>(inside);
        return column + (static_cast<CGFloat>(column) < inside ? 1 : 0);
    }

  private:
    [[nodiscard]] CGFloat bounded(CGFloat x) const {
        const CGFloat inside = x - static_cast<CGFloat>(left);
        return inside > 0 ? std::min(inside, static_cast<CGFloat>(width)) : 0;
    }
};

/// Unites what capsules cover of one row of pixels after the other.
class StrokeRow {
  public:
    StrokeRow(const WorkArea& area, CGFloat radius);

    /// Starts a row in which these columns are covered wholly.
    void begin(std::int64_t row, const ColumnSet& solid);
    /// Notes which columns the capsule touches. It stays where it is until `flush`.
    void add(RowCapsule& capsule);
    /// Reports the row.
    void flush(CoverageSink& sink);

  private:
    static constexpr std::int32_t none = -1;
    struct Member {
        const RowCapsule* capsule;
        std::int32_t next;
    };

    using Capsules = std::vector<const RowCapsule*>;

    void enlist(const RowCapsule& capsule);
    void coverWord(std::size_t word);
    void coverRun(std::int32_t begin, std::int32_t end);
    [[nodiscard]] bool coverByFormulas(const Run& run, std::span<std::uint8_t> levels) const;
    [[nodiscard]] static const RowCapsule& outermost(Side side, const Capsules& capsules);
    [[nodiscard]] std::optional<StraightEdge> boundary(Side side, const Capsules& capsules) const;
    [[nodiscard]] bool hides(const RowCapsule& capsule, const RowCapsule& other, Side side) const;
    template <class T>
    void coverByLines(RunLines<T>& lines, const Run& run, std::span<std::uint8_t> levels);

    WorkArea area_;
    bool isLarge_;
    CGFloat row_ = 0;
    ColumnSet touched_;
    ColumnSet solid_;
    Capsules capsules_;
    /// A list of capsules for each word that has columns to be measured.
    std::vector<std::int32_t> heads_;
    std::vector<Member> members_;
    Capsules inWord_;
    /// The capsules of a run: those that span the row and reach beyond the run's left or right side
    /// throughout, so that they have one end in it, and all others.
    Capsules fromLeft_, fromRight_, between_;
    std::vector<std::uint8_t> levels_;
    RunLines<float> lines_;
    RunLines<double> linesOfLarge_;
};

}  // namespace pictal::detail
