#pragma once

#include "PictalCore/Platform/Foundation/CGGeometry.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace pictal::detail {

enum class Side : std::int8_t { left = -1, right = 1 };

[[nodiscard]] constexpr CGFloat sign(Side side) {
    return static_cast<CGFloat>(side);
}

/// What a horizontal line cuts out of a shape.
struct Section {
    CGFloat left = 0;
    CGFloat right = 0;

    [[nodiscard]] constexpr CGFloat end(Side side) const {
        return side == Side::left ? left : right;
    }
};

/// All points within `radius` of a segment, its axis. A horizontal line crosses it in one section,
/// whose ends lie on the cap of the upper point, then on a straight side, then on the cap of the
/// lower point.
class Capsule {
  public:
    Capsule(CGPoint a, CGPoint b, CGFloat radius)
        : upper_(a.y <= b.y ? a : b), lower_(a.y <= b.y ? b : a), radius_(radius) {
        const CGPoint axis{lower_.x - upper_.x, lower_.y - upper_.y};
        const CGFloat length = std::sqrt(axis.x * axis.x + axis.y * axis.y);
        along_ = length > 0 ? CGPoint{axis.x / length * radius, axis.y / length * radius}
                            : CGPoint{radius, 0};
        slope_ = axis.y > 0 ? axis.x / axis.y : 0;
    }

    [[nodiscard]] CGPoint upper() const { return upper_; }
    [[nodiscard]] CGPoint lower() const { return lower_; }
    [[nodiscard]] CGFloat radius() const { return radius_; }
    /// As long as the radius, from the upper point towards the lower one.
    [[nodiscard]] CGPoint along() const { return along_; }
    /// How far the axis goes to the right while it goes down by 1; 0 where it is horizontal.
    [[nodiscard]] CGFloat slope() const { return slope_; }
    [[nodiscard]] CGFloat top() const { return upper_.y - radius_; }
    [[nodiscard]] CGFloat bottom() const { return lower_.y + radius_; }

    /// Where the side begins to be straight; it ends at the same offset from the lower point.
    [[nodiscard]] CGPoint sideBegin(Side side) const {
        return {upper_.x + sign(side) * along_.y, upper_.y - sign(side) * along_.x};
    }
    [[nodiscard]] CGPoint sideEnd(Side side) const {
        return {lower_.x + sign(side) * along_.y, lower_.y - sign(side) * along_.x};
    }
    [[nodiscard]] bool isStraight(Side side, CGFloat from, CGFloat to) const {
        return from >= sideBegin(side).y && to <= sideEnd(side).y;
    }

    /// The end of the section at y, from `top()` to `bottom()`.
    [[nodiscard]] CGFloat endAt(Side side, CGFloat y) const {
        const CGPoint begin = sideBegin(side);
        if (y < begin.y) return upper_.x + sign(side) * halfChord(y - upper_.y);
        const CGPoint end = sideEnd(side);
        if (y > end.y) return lower_.x + sign(side) * halfChord(y - lower_.y);
        const CGFloat x = begin.x + (y - begin.y) * slope_;
        return begin.x < end.x ? std::clamp(x, begin.x, end.x) : std::clamp(x, end.x, begin.x);
    }
    /// The section at y; beyond the capsule, its tip.
    [[nodiscard]] Section sectionAt(CGFloat y) const {
        if (y <= top()) return {upper_.x, upper_.x};
        if (y >= bottom()) return {lower_.x, lower_.x};
        return {endAt(Side::left, y), endAt(Side::right, y)};
    }
    /// The farthest that the side reaches to its side.
    [[nodiscard]] CGPoint extreme(Side side) const {
        const bool isUpper = (upper_.x - lower_.x) * sign(side) >= 0;
        const CGPoint at = isUpper ? upper_ : lower_;
        return {at.x + sign(side) * radius_, at.y};
    }
    /// How far the capsule reaches between two lines, given its sections there. Its left ends are
    /// convex in y and its right ends concave, so the farthest are at a line or are its own.
    [[nodiscard]] Section reach(CGFloat from, Section atFrom, CGFloat to, Section atTo) const {
        const CGPoint leftmost = extreme(Side::left);
        const CGPoint rightmost = extreme(Side::right);
        const auto isBetween = [=](CGPoint p) { return p.y > from && p.y < to; };
        return {isBetween(leftmost) ? leftmost.x : std::min(atFrom.left, atTo.left),
                isBetween(rightmost) ? rightmost.x : std::max(atFrom.right, atTo.right)};
    }
    /// The point of the axis that the end of the section at y belongs to.
    [[nodiscard]] CGPoint axisPoint(Side side, CGFloat y) const {
        const CGFloat begin = sideBegin(side).y;
        if (y <= begin) return upper_;
        if (y >= sideEnd(side).y) return lower_;
        const CGFloat t = (y - begin) / (lower_.y - upper_.y);
        return {upper_.x + t * (lower_.x - upper_.x), upper_.y + t * (lower_.y - upper_.y)};
    }

  private:
    [[nodiscard]] CGFloat halfChord(CGFloat distance) const {
        const CGFloat square = (radius_ - distance) * (radius_ + distance);
        return square > 0 ? std::sqrt(square) : 0;
    }

    CGPoint upper_;
    CGPoint lower_;
    CGPoint along_;
    CGFloat radius_;
    CGFloat slope_;
};

}  // namespace pictal::detail
