#include "PictalCore/Platform/Graphics/detail/StrokeRasterizer.h"

#include "PictalCore/Platform/Graphics/detail/Capsule.h"
#include "PictalCore/Platform/Graphics/detail/FillRasterizer.h"
#include "PictalCore/Platform/Graphics/detail/IntervalUnion.h"
#include "PictalCore/Platform/Graphics/detail/RowBuckets.h"
#include "PictalCore/Platform/Graphics/detail/WorldClip.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

// A stroke is the union of the capsules around its segments. Areas cannot be united, but intervals
// can. In each row of pixels, capsules whose extents there meet form a group. A capsule by itself
// with straight sides is two edges, exactly. For any other group the row is divided by 64 lines,
// the intervals that the capsules cut out of each are united, and each run makes two upright edges,
// as high as the line's share of the row. A level side may be off by half that height: where a
// group holds a nearly level piece of an outline it is divided by 256 lines.

namespace pictal::detail {
namespace {

constexpr std::size_t coarse = 64;
constexpr std::size_t fine = 256;
/// Sides that rise less per pixel than two coarse lines.
constexpr CGFloat levelRise = 2.0 / coarse;

/// The lines of a row: in the middles of their shares.
template <std::size_t count>
constexpr auto lines = [] {
    std::array<CGFloat, count> ys{};
    for (std::size_t i = 0; i < count; ++i)
        ys[i] = (static_cast<CGFloat>(i) + 0.5) / count;
    return ys;
}();

/// A stretch of the stroke. The tips of its caps belong to the outline only where the path ends or
/// turns back; elsewhere a neighbour hides them.
struct Stretch {
    Capsule capsule;
    bool topShows;
    bool bottomShows;
};

/// Whether a nearly level piece of the outline lies in the row: a side, or the tip of a cap.
bool hasLevelPiece(const Stretch& stretch, CGFloat row) {
    const Capsule& capsule = stretch.capsule;
    const auto reaches = [&](CGFloat top, CGFloat bottom) { return top < row + 1 && bottom > row; };
    if (capsule.direction().y >= levelRise)
        return (stretch.topShows && reaches(capsule.top(), capsule.top())) ||
               (stretch.bottomShows && reaches(capsule.bottom(), capsule.bottom()));
    const CGFloat reach = capsule.radius() * std::abs(capsule.direction().x);
    return reaches(capsule.top(), capsule.lower().y - reach) ||
           reaches(capsule.upper().y + reach, capsule.bottom());
}

class Stroke {
  public:
    Stroke(CGFloat radius, const PixelRect& clip)
        : radius_(radius), clip_(clip), firstRow_(clip.bottom), endRow_(clip.top) {}

    void addContour(const FlatPath::Contour& contour) {
        const std::span<const CGPoint> points = contour.points;
        const std::size_t count = points.size();
        const std::size_t segments = contour.closed || count == 1 ? count : count - 1;
        for (std::size_t i = 0; i < segments; ++i) {
            const CGPoint a = points[i];
            const CGPoint b = points[(i + 1) % count];
            const bool hasBefore = i > 0 || contour.closed;
            const bool hasAfter = i + 1 < segments || contour.closed;
            const CGFloat before = hasBefore ? points[(i + count - 1) % count].y : b.y;
            const CGFloat after = hasAfter ? points[(i + 2) % count].y : a.y;
            add({.capsule = Capsule(a, b, radius_),
                 .topShows = a.y <= b.y ? before >= a.y : after >= b.y,
                 .bottomShows = a.y <= b.y ? after <= b.y : before <= a.y});
        }
    }

    void rasterize(CoverageSink& sink) {
        if (stretches_.empty()) return;
        RowBuckets buckets(firstRow_, endRow_, stretches_.size());
        for (std::size_t i = stretches_.size(); i-- > 0;)
            buckets.add(firstRowOf(stretches_[i].capsule.top()), static_cast<std::uint32_t>(i));

        CoverageRow accumulator(clip_);
        std::vector<Active> active;
        for (std::int64_t row = firstRow_; row < endRow_; ++row) {
            for (auto i = buckets.first(row); i != RowBuckets::none; i = buckets.after(i))
                active.push_back({i, {}});
            if (active.empty()) continue;
            addRow(active, row, accumulator);
            accumulator.flush(row, FillRule::nonZero, sink);
            std::erase_if(active, [&](const Active& a) {
                return endRowOf(stretches_[a.stretch].capsule.bottom()) == row + 1;
            });
        }
    }

  private:
    struct Active {
        std::uint32_t stretch;
        Interval extent;
    };

    void add(const Stretch& stretch) {
        const Capsule& capsule = stretch.capsule;
        const CGFloat top = std::max(capsule.top(), static_cast<CGFloat>(clip_.top));
        const CGFloat bottom = std::min(capsule.bottom(), static_cast<CGFloat>(clip_.bottom));
        if (top >= bottom) return;
        stretches_.push_back(stretch);
        firstRow_ = std::min(firstRow_, firstRowOf(top));
        endRow_ = std::max(endRow_, endRowOf(bottom));
    }

    [[nodiscard]] std::int64_t firstRowOf(CGFloat y) const { return clippedRow(std::floor(y)); }
    [[nodiscard]] std::int64_t endRowOf(CGFloat y) const { return clippedRow(std::ceil(y)); }
    [[nodiscard]] std::int64_t clippedRow(CGFloat y) const {
        return static_cast<std::int64_t>(
            std::clamp(y, static_cast<CGFloat>(clip_.top), static_cast<CGFloat>(clip_.bottom)));
    }

    void addRow(std::vector<Active>& active, std::int64_t row, CoverageRow& accumulator) {
        const auto y = static_cast<CGFloat>(row);
        for (Active& a : active) {
            const Capsule& capsule = stretches_[a.stretch].capsule;
            a.extent = capsule.extent(y, y + 1);
            // A giant pen: no other stretch matters.
            if (coversClip(a.extent) && coversClip(capsule, y)) {
                const auto left = static_cast<CGFloat>(clip_.left);
                return accumulator.addUprights({&left, 1}, fixedOne);
            }
        }
        std::sort(active.begin(), active.end(),
                  [](const Active& a, const Active& b) { return a.extent.low < b.extent.low; });
        for (auto begin = active.begin(); begin != active.end();) {
            auto end = begin;
            CGFloat high = begin->extent.high;
            for (; end != active.end() && end->extent.low <= high; ++end)
                high = std::max(high, end->extent.high);
            const bool isBeside = high <= static_cast<CGFloat>(clip_.left) ||
                                  begin->extent.low >= static_cast<CGFloat>(clip_.right);
            if (!isBeside) addGroup(std::span(begin, end), row, accumulator);
            begin = end;
        }
    }

    void addGroup(std::span<Active> group, std::int64_t row, CoverageRow& accumulator) {
        const auto y = static_cast<CGFloat>(row);
        if (group.size() == 1 &&
            addStraight(stretches_[group.front().stretch].capsule, y, accumulator))
            return;
        // In the order of the path, where neighbours overlap.
        std::sort(group.begin(), group.end(),
                  [](const Active& a, const Active& b) { return a.stretch < b.stretch; });
        const bool isFine = std::ranges::any_of(
            group, [&](const Active& a) { return hasLevelPiece(stretches_[a.stretch], y); });
        union_.reset(isFine ? std::span<const CGFloat>(lines<fine>) : lines<coarse>);
        for (const Active& a : group)
            union_.add(stretches_[a.stretch].capsule, y);
        union_.flush(accumulator);
    }

    [[nodiscard]] bool coversClip(const Interval& interval) const {
        return interval.low <= static_cast<CGFloat>(clip_.left) &&
               interval.high >= static_cast<CGFloat>(clip_.right);
    }
    /// Capsules are convex: what covers both sides of a row covers the row.
    [[nodiscard]] bool coversClip(const Capsule& capsule, CGFloat row) const {
        if (capsule.top() > row || capsule.bottom() < row + 1) return false;
        constexpr std::array<CGFloat, 2> sides{0, 1};
        std::array<CGFloat, 2> lows{};
        std::array<CGFloat, 2> highs{};
        capsule.intersect(row, sides, lows, highs);
        return coversClip(Interval{lows[0], highs[0]}) && coversClip(Interval{lows[1], highs[1]});
    }

    /// @return whether the capsule has straight sides throughout the row, as was added
    static bool addStraight(const Capsule& capsule, CGFloat row, CoverageRow& accumulator) {
        const auto piece = capsule.straightPiece(row, row + 1);
        if (!piece) return false;
        const auto& [from, to] = *piece;
        const auto isInWorld = [](const Interval& interval) {
            return interval.low > -worldEdge && interval.high < worldEdge;
        };
        if (!isInWorld(from) || !isInWorld(to)) return false;
        accumulator.addSloped(toFixed(from.low), toFixed(to.low), fixedOne);
        accumulator.addSloped(toFixed(from.high), toFixed(to.high), -fixedOne);
        return true;
    }

    CGFloat radius_;
    PixelRect clip_;
    std::int64_t firstRow_;
    std::int64_t endRow_;
    std::vector<Stretch> stretches_;
    IntervalUnion union_;
};

/// A lone line or dot cannot meet itself, so its outline can be filled, which is exact.
void fillCapsule(const Capsule& capsule, const PixelRect& clip, CoverageSink& sink) {
    const CGPoint along{capsule.direction().x * capsule.radius(),
                        capsule.direction().y * capsule.radius()};
    const CGPoint aside{-along.y, along.x};
    const auto from = [&](CGPoint end, CGFloat alongSign, CGFloat asideSign) {
        return CGPoint{end.x + alongSign * along.x + asideSign * aside.x,
                       end.y + alongSign * along.y + asideSign * aside.y};
    };
    const CGPoint a = capsule.upper();
    const CGPoint b = capsule.lower();
    Path outline;
    outline.moveTo(from(a, 0, 1));
    outline.quarterTo(from(a, -1, 1), from(a, -1, 0));
    outline.quarterTo(from(a, -1, -1), from(a, 0, -1));
    outline.lineTo(from(b, 0, -1));
    outline.quarterTo(from(b, 1, -1), from(b, 1, 0));
    outline.quarterTo(from(b, 1, 1), from(b, 0, 1));
    outline.close();
    rasterizeFill(flattenedForFill(outline, AffineTransform::identity(), clip), FillRule::nonZero,
                  clip, sink);
}

}  // namespace

void rasterizeStroke(const FlatPath& path, CGFloat width, const PixelRect& clip,
                     CoverageSink& sink) {
    const CGFloat radius = std::min(width / 2, farthest);
    if (!(width > 0) || !std::isfinite(width) || clip.isEmpty() || path.isEmpty()) return;
    if (path.contourCount() == 1 && path.contour(0).points.size() <= 2) {
        const std::span<const CGPoint> points = path.contour(0).points;
        return fillCapsule(Capsule(points.front(), points.back(), radius), clip, sink);
    }
    Stroke stroke(radius, clip);
    for (std::size_t i = 0; i < path.contourCount(); ++i)
        stroke.addContour(path.contour(i));
    stroke.rasterize(sink);
}

}  // namespace pictal::detail
