#pragma once

#include "PictalCore/Platform/Foundation/CGGeometry.h"

#include <optional>

/// Where the panels of an overlay go: beside a selection, under or over it, next to a point.
///
/// Points; y grows downward, so that `below` means at greater y. Every `…Center` answers the centre
/// of a panel, pulled inside the container so that the margin stays free on each side; a panel that
/// does not fit across an axis is centred on it. A NaN position ends at the smaller end.
namespace pictal {

enum class OverlaySidePanelPlacement { left, right, overlapping };
enum class OverlayActionBarPlacement { below, above, screenTop, screenBottom };

namespace OverlayPanelLayout {

/// Between a panel and the edges of the container.
inline constexpr CGFloat defaultMargin = 12;
/// Between a panel and the selection or point that it belongs to.
inline constexpr CGFloat defaultGap = 14;

[[nodiscard]] constexpr CGRect frame(CGPoint center, CGSize size) {
    return {center.x - size.width * 0.5, center.y - size.height * 0.5, size.width, size.height};
}

[[nodiscard]] PICTAL_API CGPoint clampedCenter(CGPoint center, CGSize panelSize,
                                               const CGRect& container,
                                               CGFloat margin = defaultMargin);

/// Left where it fits, else right where it fits, else over the selection.
[[nodiscard]] PICTAL_API OverlaySidePanelPlacement
sidePanelPlacement(const CGRect& selection, CGSize panelSize, const CGRect& container,
                   CGFloat margin = defaultMargin, CGFloat gap = defaultGap);

/// @param preferredPlacement  taken even where it does not fit
[[nodiscard]] PICTAL_API CGPoint
sidePanelCenter(const CGRect& selection, CGSize panelSize, const CGRect& container,
                CGFloat margin = defaultMargin, CGFloat gap = defaultGap,
                std::optional<OverlaySidePanelPlacement> preferredPlacement = std::nullopt);

/// Below where it fits, else above where it fits, else at the end of the screen that the selection
/// leaves free: the top when it starts in the lower half.
[[nodiscard]] PICTAL_API OverlayActionBarPlacement
actionBarPlacement(const CGRect& selection, CGSize panelSize, const CGRect& container,
                   CGFloat margin = defaultMargin, CGFloat gap = defaultGap);

/// The bar's right edge lines up with the selection's.
/// @param preferredPlacement  taken even where it does not fit
[[nodiscard]] PICTAL_API CGPoint
actionBarCenter(const CGRect& selection, CGSize panelSize, const CGRect& container,
                CGFloat margin = defaultMargin, CGFloat gap = defaultGap,
                std::optional<OverlayActionBarPlacement> preferredPlacement = std::nullopt);

/// To the right of the point and below it; on the other side, on each axis, where it would
/// overflow.
[[nodiscard]] PICTAL_API CGPoint floatingPanelCenter(CGPoint near, CGSize panelSize,
                                                     const CGRect& container,
                                                     CGFloat margin = defaultMargin,
                                                     CGFloat gap = defaultGap);

}  // namespace OverlayPanelLayout
}  // namespace pictal
