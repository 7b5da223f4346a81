#pragma once

#include "PictalCore/Platform/Foundation/CGGeometry.h"

#include <algorithm>

namespace pictal::detail {

/// A straight edge through a pixel row, from `topX` to `bottomX`. What lies right of it up to x is
/// half a square and then a strip, so the area in a column is a difference of two formulas.
class StraightEdge {
  public:
    StraightEdge(CGFloat topX, CGFloat bottomX)
        : topX_(topX),
          bottomX_(bottomX),
          left_(std::min(topX, bottomX)),
          width_(std::max(topX, bottomX) - left_) {}

    [[nodiscard]] bool isLeftOf(const StraightEdge& other) const {
        return topX_ <= other.topX_ && bottomX_ <= other.bottomX_;
    }

    /// The area right of the edge and left of x, per row.
    [[nodiscard]] CGFloat areaUpTo(CGFloat x) const {
        const CGFloat reached = x - left_;
        if (reached <= 0) return 0;
        if (reached >= width_) return reached - width_ / 2;
        return reached * reached / (2 * width_);
    }

  private:
    CGFloat topX_;
    CGFloat bottomX_;
    CGFloat left_;
    CGFloat width_;
};

}  // namespace pictal::detail
