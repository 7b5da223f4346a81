#pragma once

#include "PictalCore/Platform/Foundation/CGGeometry.h"

#include <cstddef>
#include <optional>
#include <span>

namespace pictal::detail {

/// What a level line cuts out of a shape.
struct Interval {
    CGFloat low = 0;
    CGFloat high = 0;
};

/// All points within `radius` of a segment. A level line crosses it in one interval, whose ends lie
/// on the cap of the upper point, then on a straight side, then on the cap of the lower point.
class Capsule {
  public:
    Capsule(CGPoint a, CGPoint b, CGFloat radius);

    [[nodiscard]] CGPoint upper() const { return upper_; }
    [[nodiscard]] CGPoint lower() const { return lower_; }
    [[nodiscard]] CGFloat radius() const { return radius_; }
    /// The unit vector from the upper point to the lower one; (1, 0) when they are one.
    [[nodiscard]] CGPoint direction() const { return direction_; }
    [[nodiscard]] CGFloat top() const { return upper_.y - radius_; }
    [[nodiscard]] CGFloat bottom() const { return lower_.y + radius_; }

    /// An interval that holds all of the capsule between two level lines.
    [[nodiscard]] Interval extent(CGFloat top, CGFloat bottom) const;
    /// The intervals at `top` and `bottom`, if both sides are straight from one to the other.
    [[nodiscard]] std::optional<std::pair<Interval, Interval>> straightPiece(CGFloat top,
                                                                             CGFloat bottom) const;
    /// The intervals on lines that all cross the capsule, y = origin + lines[i], evenly spaced.
    void intersect(CGFloat origin, std::span<const CGFloat> lines, std::span<CGFloat> lows,
                   std::span<CGFloat> highs) const;

  private:
    [[nodiscard]] CGFloat axisAt(CGFloat y) const;
    void followSide(CGFloat side, CGFloat origin, std::span<const CGFloat> lines,
                    std::span<CGFloat> xs) const;

    CGPoint upper_;
    CGPoint lower_;
    CGFloat radius_;
    CGPoint direction_{1, 0};
};

}  // namespace pictal::detail
