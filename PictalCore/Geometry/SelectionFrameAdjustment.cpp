#include "PictalCore/Geometry/SelectionFrameAdjustment.h"

#include <algorithm>
#include <cmath>

namespace pictal::SelectionFrameAdjustment {

using Handle = SelectionFrameAdjustmentHandle;

namespace {

/// The two edges of a rectangle on one axis. Edges are carried as edges until the end, since an
/// edge rebuilt from an origin and a size can miss a whole number by a hair, and so leave the
/// bounds when it is rounded outward.
struct Span {
    CGFloat min;
    CGFloat max;
};

enum class Edge { none, min, max };

struct Edges {
    Edge x, y;
};

Edges edgesMovedBy(Handle handle) {
    switch (handle) {
        case Handle::move:
            return {Edge::none, Edge::none};
        case Handle::minX:
            return {Edge::min, Edge::none};
        case Handle::maxX:
            return {Edge::max, Edge::none};
        case Handle::minY:
            return {Edge::none, Edge::min};
        case Handle::maxY:
            return {Edge::none, Edge::max};
        case Handle::minXMinY:
            return {Edge::min, Edge::min};
        case Handle::maxXMinY:
            return {Edge::max, Edge::min};
        case Handle::minXMaxY:
            return {Edge::min, Edge::max};
        case Handle::maxXMaxY:
            return {Edge::max, Edge::max};
    }
    return {Edge::none, Edge::none};
}

Span moved(Span span, CGFloat length, CGFloat by, Span bounds) {
    CGFloat min = span.min + by;
    if (!(min >= bounds.min)) min = bounds.min;
    if (min + length > bounds.max) return {bounds.max - length, bounds.max};
    return {min, min + length};
}

Span resized(Span span, Edge edge, CGFloat by, Span bounds, CGFloat minimum) {
    if (edge == Edge::min)
        span.min = std::min(std::max(bounds.min, span.min + by), span.max - minimum);
    if (edge == Edge::max)
        span.max = std::min(std::max(span.min + minimum, span.max + by), bounds.max);
    return span;
}

/// Edges that the bounds have pushed past each other change places.
Span integral(Span span) {
    const auto [min, max] = std::minmax(span.min, span.max);
    return {std::floor(min), std::ceil(max)};
}

CGFloat effectiveMinimum(CGFloat minimum, CGFloat available) {
    return std::min(std::max(1.0, minimum), available);
}

CGRect squareAround(CGFloat x, CGFloat y, CGFloat halfSide) {
    return {x - halfSide, y - halfSide, 2 * halfSide, 2 * halfSide};
}

}  // namespace

std::optional<Handle> hitHandle(CGPoint point, const CGRect& rect, CGFloat edgeTolerance,
                                CGFloat cornerTolerance) {
    if (rect.isEmpty() || !rect.insetBy(-edgeTolerance, -edgeTolerance).contains(point))
        return std::nullopt;

    const auto atCorner = [&](CGFloat x, CGFloat y) {
        return squareAround(x, y, cornerTolerance).contains(point);
    };
    if (atCorner(rect.minX(), rect.minY())) return Handle::minXMinY;
    if (atCorner(rect.maxX(), rect.minY())) return Handle::maxXMinY;
    if (atCorner(rect.minX(), rect.maxY())) return Handle::minXMaxY;
    if (atCorner(rect.maxX(), rect.maxY())) return Handle::maxXMaxY;

    const auto near = [&](CGFloat a, CGFloat b) { return std::abs(a - b) <= edgeTolerance; };
    if (near(point.x, rect.minX())) return Handle::minX;
    if (near(point.x, rect.maxX())) return Handle::maxX;
    if (near(point.y, rect.minY())) return Handle::minY;
    if (near(point.y, rect.maxY())) return Handle::maxY;
    return Handle::move;
}

CGRect adjustedRect(const CGRect& rect, Handle handle, CGSize translation, const CGRect& bounds,
                    CGSize minimumSize) {
    if (rect.isEmpty() || bounds.isEmpty()) return rect.standardized();

    Span x{rect.minX(), rect.maxX()};
    Span y{rect.minY(), rect.maxY()};
    const Span boundsX{bounds.minX(), bounds.maxX()};
    const Span boundsY{bounds.minY(), bounds.maxY()};
    if (handle == Handle::move) {
        x = moved(x, rect.width(), translation.width, boundsX);
        y = moved(y, rect.height(), translation.height, boundsY);
    } else {
        const Edges edges = edgesMovedBy(handle);
        x = resized(x, edges.x, translation.width, boundsX,
                    effectiveMinimum(minimumSize.width, bounds.width()));
        y = resized(y, edges.y, translation.height, boundsY,
                    effectiveMinimum(minimumSize.height, bounds.height()));
    }
    x = integral(x);
    y = integral(y);
    return {x.min, y.min, x.max - x.min, y.max - y.min};
}

}  // namespace pictal::SelectionFrameAdjustment
