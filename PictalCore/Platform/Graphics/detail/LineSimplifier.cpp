#include "PictalCore/Platform/Graphics/detail/LineSimplifier.h"

#include <algorithm>
#include <cmath>

namespace pictal::detail {

namespace {

CGFloat dot(CGPoint a, CGPoint b) {
    return a.x * b.x + a.y * b.y;
}
CGFloat cross(CGPoint a, CGPoint b) {
    return a.x * b.y - a.y * b.x;
}

}  // namespace

void LineSimplifier::addLine(CGPoint from, CGPoint to) {
    if (!underWay_) {
        underWay_ = true;
        startAt(from);
    } else {
        skip(last_);
        if (!isAhead(to)) {
            flat_.add(last_);
            startAt(last_);
        }
    }
    last_ = to;
}

void LineSimplifier::finish() {
    if (underWay_) flat_.add(last_);
    underWay_ = false;
}

void LineSimplifier::startAt(CGPoint anchor) {
    anchor_ = anchor;
    hasCone_ = false;
    squaredReach_ = 0;
}

/// Narrows the cone to the directions that pass the point.
void LineSimplifier::skip(CGPoint point) {
    const CGPoint v = fromAnchor(point);
    const CGFloat square = dot(v, v);
    squaredReach_ = std::max(squaredReach_, square);
    if (square <= tolerance * tolerance) return;  // every chord passes it
    const CGFloat sine = tolerance / std::sqrt(square);
    const CGFloat cosine = std::sqrt(1 - sine * sine);
    const CGPoint begin{v.x * cosine + v.y * sine, v.y * cosine - v.x * sine};
    const CGPoint end{v.x * cosine - v.y * sine, v.y * cosine + v.x * sine};
    if (!hasCone_ || cross(coneBegin_, begin) > 0) coneBegin_ = begin;
    if (!hasCone_ || cross(end, coneEnd_) > 0) coneEnd_ = end;
    hasCone_ = true;
}

bool LineSimplifier::isAhead(CGPoint point) const {
    const CGPoint v = fromAnchor(point);
    if (dot(v, v) < squaredReach_) return false;
    return !hasCone_ || (cross(coneBegin_, v) >= 0 && cross(v, coneEnd_) >= 0 &&
                         dot(coneBegin_, v) + dot(coneEnd_, v) > 0);
}

}  // namespace pictal::detail
