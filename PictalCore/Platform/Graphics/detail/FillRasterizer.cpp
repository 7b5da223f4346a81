#include "PictalCore/Platform/Graphics/detail/FillRasterizer.h"

#include "PictalCore/Platform/Graphics/detail/Fixed.h"
#include "PictalCore/Platform/Graphics/detail/RowBuckets.h"
#include "PictalCore/Platform/Graphics/detail/WorldClip.h"

#include <algorithm>
#include <vector>

// Exact area, row by row. Contours are taken apart into edges that lead down, each with the sign of
// its direction; edges are sorted into buckets by the first row of pixels that they reach, and go
// along in a list of active edges until their last. Each active edge hands the piece of it that
// lies in the row to the accumulator of that row, which knows the rest (CoverageRow.h).
//
// Corners are rounded to 1/65536 px once, so that the heights of a closed contour add up to zero
// exactly. Where an edge passes from row to row its x is computed from its unrounded upper end and
// rounded; it depends neither on the direction of the edge nor on the clip nor on the rows before.
// So the edge that two shapes share is the same in both, and a crop shows what the whole does.

namespace pictal::detail {
namespace {

struct Edge {
    CGPoint upper;
    CGFloat slope = 0;  // x per row
    Fixed top = 0;
    Fixed bottom = 0;
    Fixed bottomX = 0;
    Fixed x = 0;  // where it enters the next row
    int sign = 0;

    [[nodiscard]] Fixed xAtRow(std::int64_t row) const {
        return toFixed(upper.x + (static_cast<CGFloat>(row) - upper.y) * slope);
    }
    [[nodiscard]] std::int64_t endRow() const { return (bottom + fixedOne - 1) >> fixedBits; }
};

class EdgeList {
  public:
    EdgeList(const PixelRect& clip, std::size_t expected)
        : clip_(clip), touched_{clip.right, clip.bottom, clip.left, clip.top} {
        edges_.reserve(expected);
    }

    void addContour(std::span<const CGPoint> points) {
        CGPoint last = points.back();
        for (const CGPoint& point : points) {
            if (last.y < point.y) addDownward(last, point, 1);
            if (last.y > point.y) addDownward(point, last, -1);
            last = point;
        }
    }

    void rasterize(FillRule rule, CoverageSink& sink) {
        if (edges_.empty() || touched_.isEmpty()) return;
        RowBuckets buckets(touched_.top, touched_.bottom, edges_.size());
        for (std::uint32_t i = 0; i < edges_.size(); ++i)
            buckets.add(firstRowOf(edges_[i]), i);

        CoverageRow accumulator(touched_);
        std::vector<std::uint32_t> active;
        for (std::int64_t row = touched_.top; row < touched_.bottom; ++row) {
            for (auto i = buckets.first(row); i != RowBuckets::none; i = buckets.after(i))
                active.push_back(i);
            if (active.empty()) continue;
            std::erase_if(active, [&](std::uint32_t i) {
                addPiece(edges_[i], row, accumulator);
                return edges_[i].endRow() == row + 1;
            });
            accumulator.flush(row, rule, sink);
        }
    }

  private:
    void addDownward(CGPoint upper, CGPoint lower, int sign) {
        forPiecesInWorld(upper, lower, [&](CGPoint from, CGPoint to) {
            Edge edge{.upper = from,
                      .slope = (to.x - from.x) / (to.y - from.y),
                      .top = toFixed(from.y),
                      .bottom = toFixed(to.y),
                      .bottomX = toFixed(to.x),
                      .x = toFixed(from.x),
                      .sign = sign};
            if (edge.top == edge.bottom || edge.endRow() <= clip_.top ||
                edge.top >= clip_.bottom * fixedOne)
                return;
            const auto [left, right] = std::minmax({edge.x, edge.bottomX});
            touched_.right =
                std::min(clip_.right, std::max(touched_.right, (right >> fixedBits) + 1));
            if (left >= clip_.right * fixedOne) return;
            touched_.left = std::max(clip_.left, std::min(touched_.left, left >> fixedBits));
            touched_.top = std::min(touched_.top, firstRowOf(edge));
            touched_.bottom = std::max(touched_.bottom, std::min(edge.endRow(), clip_.bottom));
            if (edge.top < clip_.top * fixedOne) edge.x = edge.xAtRow(clip_.top);
            edges_.push_back(edge);
        });
    }

    [[nodiscard]] std::int64_t firstRowOf(const Edge& edge) const {
        return std::max(edge.top >> fixedBits, clip_.top);
    }

    static void addPiece(Edge& edge, std::int64_t row, CoverageRow& accumulator) {
        const Fixed from = std::max(edge.top, row * fixedOne);
        const Fixed to = std::min(edge.bottom, (row + 1) * fixedOne);
        const Fixed x = to == edge.bottom ? edge.bottomX : edge.xAtRow(row + 1);
        accumulator.addSloped(edge.x, x, edge.sign * (to - from));
        edge.x = x;
    }

    PixelRect clip_;
    /// What the edges reach of the clip: so the cost does not grow with the canvas.
    PixelRect touched_;
    std::vector<Edge> edges_;
};

}  // namespace

void rasterizeFill(const FlatPath& path, FillRule rule, const PixelRect& clip, CoverageSink& sink) {
    if (clip.isEmpty()) return;
    EdgeList edges(clip, path.points().size());
    for (std::size_t i = 0; i < path.contourCount(); ++i)
        edges.addContour(path.contour(i).points);
    edges.rasterize(rule, sink);
}

}  // namespace pictal::detail
