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
// as high as the line's share of the row. A level side may be off by half that height: rows that
// hold a nearly level piece of an outline are divided by 256 lines.

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

class CapsuleList {
  public:
    CapsuleList(CGFloat radius, const PixelRect& clip)
        : radius_(radius),
          clip_(clip),
          firstRow_(clip.bottom),
          endRow_(clip.top),
          isFine_(static_cast<std::size_t>(clip.height())) {}

    void addContour(const FlatPath::Contour& contour) {
        const std::span<const CGPoint> points = contour.points;
        for (std::size_t i = 1; i < points.size(); ++i)
            add(points[i - 1], points[i]);
        if (points.size() == 1 || contour.closed) add(points.back(), points.front());
        refineTips(contour);
    }

    void rasterize(CoverageSink& sink) {
        if (capsules_.empty()) return;
        RowBuckets buckets(firstRow_, endRow_, capsules_.size());
        for (std::size_t i = capsules_.size(); i-- > 0;)
            buckets.add(firstRowOf(capsules_[i].top()), static_cast<std::uint32_t>(i));

        CoverageRow accumulator(clip_);
        std::vector<Active> active;
        for (std::int64_t row = firstRow_; row < endRow_; ++row) {
            for (auto i = buckets.first(row); i != RowBuckets::none; i = buckets.after(i))
                active.push_back({i, {}});
            if (active.empty()) continue;
            addRow(active, row, accumulator);
            accumulator.flush(row, FillRule::nonZero, sink);
            std::erase_if(active, [&](const Active& a) {
                return endRowOf(capsules_[a.capsule].bottom()) == row + 1;
            });
        }
    }

  private:
    struct Active {
        std::uint32_t capsule;
        Interval extent;
    };

    void add(CGPoint a, CGPoint b) {
        const Capsule capsule(a, b, radius_);
        if (capsule.direction().y < levelRise) {
            const CGFloat reach = radius_ * std::abs(capsule.direction().x);
            refine(capsule.upper().y - reach, capsule.lower().y - reach);
            refine(capsule.upper().y + reach, capsule.lower().y + reach);
        }
        const CGFloat top = std::max(capsule.top(), static_cast<CGFloat>(clip_.top));
        const CGFloat bottom = std::min(capsule.bottom(), static_cast<CGFloat>(clip_.bottom));
        if (top >= bottom) return;
        capsules_.push_back(capsule);
        firstRow_ = std::min(firstRow_, firstRowOf(top));
        endRow_ = std::max(endRow_, endRowOf(bottom));
    }

    /// Where the path turns or ends, a cap's tip is part of the outline; elsewhere it is hidden.
    void refineTips(const FlatPath::Contour& contour) {
        const std::span<const CGPoint> points = contour.points;
        const std::size_t count = points.size();
        for (std::size_t i = 0; i < count; ++i) {
            const CGFloat y = points[i].y;
            const bool hasLast = i > 0 || contour.closed;
            const bool hasNext = i + 1 < count || contour.closed;
            const CGFloat last = hasLast ? points[i > 0 ? i - 1 : count - 1].y : y;
            const CGFloat next = hasNext ? points[i + 1 < count ? i + 1 : 0].y : y;
            if (last >= y && next >= y) refine(y - radius_, y - radius_);
            if (last <= y && next <= y) refine(y + radius_, y + radius_);
        }
    }

    void refine(CGFloat top, CGFloat bottom) {
        if (bottom < static_cast<CGFloat>(clip_.top)) return;
        const std::int64_t endRow = std::min(firstRowOf(bottom) + 1, clip_.bottom);
        for (std::int64_t row = firstRowOf(top); row < endRow; ++row)
            isFine_[static_cast<std::size_t>(row - clip_.top)] = true;
    }

    [[nodiscard]] std::int64_t firstRowOf(CGFloat y) const { return clippedRow(std::floor(y)); }
    [[nodiscard]] std::int64_t endRowOf(CGFloat y) const { return clippedRow(std::ceil(y)); }
    [[nodiscard]] std::int64_t clippedRow(CGFloat y) const {
        return static_cast<std::int64_t>(
            std::clamp(y, static_cast<CGFloat>(clip_.top), static_cast<CGFloat>(clip_.bottom)));
    }

    void addRow(std::vector<Active>& active, std::int64_t row, CoverageRow& accumulator) {
        const auto y = static_cast<CGFloat>(row);
        for (Active& a : active)
            a.extent = capsules_[a.capsule].extent(y, y + 1);
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
        const Capsule& only = capsules_[group.front().capsule];
        const Interval reach = group.front().extent;
        if (group.size() == 1 && std::max(-reach.low, reach.high) < worldEdge) {
            if (const auto piece = only.straightPiece(y, y + 1)) {
                const auto& [from, to] = *piece;
                accumulator.addSloped(toFixed(from.low), toFixed(to.low), fixedOne);
                accumulator.addSloped(toFixed(from.high), toFixed(to.high), -fixedOne);
                return;
            }
        }
        // In the order of the path, where neighbours overlap.
        std::sort(group.begin(), group.end(),
                  [](const Active& a, const Active& b) { return a.capsule < b.capsule; });
        const bool isFine = isFine_[static_cast<std::size_t>(row - clip_.top)];
        union_.reset(isFine ? std::span<const CGFloat>(lines<fine>) : lines<coarse>);
        for (const Active& a : group)
            union_.add(capsules_[a.capsule], y);
        union_.flush(accumulator);
    }

    CGFloat radius_;
    PixelRect clip_;
    std::int64_t firstRow_;
    std::int64_t endRow_;
    std::vector<Capsule> capsules_;
    std::vector<bool> isFine_;
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
    CapsuleList capsules(radius, clip);
    for (std::size_t i = 0; i < path.contourCount(); ++i)
        capsules.addContour(path.contour(i));
    capsules.rasterize(sink);
}

}  // namespace pictal::detail
