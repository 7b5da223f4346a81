#pragma once

#include "PictalCore/Platform/Graphics/detail/FlatPath.h"

namespace pictal::detail {

/// Adds straight stretches of a path to a flat one without the points that a stroke does not need:
/// those within 1/4096 px of the chord that replaces them, which is as near to them. A pixel
/// changes by that times the length of outline in it, 0.06 levels of 255 a pixel of length.
///
/// From an anchor on, the directions that pass all points skipped so far closely enough are a cone.
/// A point outside it, or nearer to the anchor than another was, starts anew at its predecessor.
class LineSimplifier {
  public:
    static constexpr CGFloat tolerance = 1.0 / 4096;

    explicit LineSimplifier(FlatPath& flat) : flat_(flat) {}

    /// @param from  where the path is; for the first line of a stretch it is there already
    void addLine(CGPoint from, CGPoint to);
    /// Ends the stretch. Its last point stays.
    void finish();

  private:
    [[nodiscard]] CGPoint fromAnchor(CGPoint point) const {
        return {point.x - anchor_.x, point.y - anchor_.y};
    }
    void startAt(CGPoint anchor);
    void skip(CGPoint point);
    [[nodiscard]] bool isAhead(CGPoint point) const;

    FlatPath& flat_;
    bool underWay_ = false;
    CGPoint anchor_;
    CGPoint last_;
    bool hasCone_ = false;
    CGPoint coneBegin_;
    CGPoint coneEnd_;
    CGFloat squaredReach_ = 0;
};

}  // namespace pictal::detail
