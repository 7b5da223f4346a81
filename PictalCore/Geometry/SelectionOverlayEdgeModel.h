#pragma once

#include "PictalCore/Platform/Foundation/CGGeometry.h"

/// The rectangles and radii that an overlay draws around a selection: the dimming is cut out and
/// the picture is clipped at the selection itself, the accent stroke runs outside of it. Points.
namespace pictal {

class SelectionOverlayEdgeModel {
  public:
    /// For a selection that was dragged freely.
    static constexpr CGFloat regionCornerRadius = 6;
    /// For a selection that is a window.
    static constexpr CGFloat windowCornerRadius = 22;

    constexpr SelectionOverlayEdgeModel(const CGRect& rect, CGFloat cornerRadius,
                                        CGFloat accentOutset)
        : rect_(rect), cornerRadius_(cornerRadius), accentOutset_(accentOutset) {}

    [[nodiscard]] constexpr const CGRect& rect() const { return rect_; }
    [[nodiscard]] constexpr CGFloat cornerRadius() const { return cornerRadius_; }
    /// How far outside the selection the accent stroke runs.
    [[nodiscard]] constexpr CGFloat accentOutset() const { return accentOutset_; }

    [[nodiscard]] constexpr CGRect highlightRect() const { return rect_; }
    [[nodiscard]] constexpr CGRect imageClipRect() const { return rect_; }
    [[nodiscard]] constexpr CGRect dimCutoutRect() const { return rect_; }
    /// Null when a negative outset leaves nothing of the selection.
    [[nodiscard]] constexpr CGRect accentStrokeRect() const {
        return rect_.insetBy(-accentOutset_, -accentOutset_);
    }
    [[nodiscard]] constexpr CGFloat accentCornerRadius() const {
        return cornerRadius_ + accentOutset_;
    }

    friend constexpr bool operator==(const SelectionOverlayEdgeModel&,
                                     const SelectionOverlayEdgeModel&) = default;

  private:
    CGRect rect_;
    CGFloat cornerRadius_;
    CGFloat accentOutset_;
};

}  // namespace pictal
