#include "PictalCore/Geometry/OverlayPanelLayout.h"

#include <algorithm>

namespace pictal::OverlayPanelLayout {

namespace {

CGFloat clamped(CGFloat center, CGFloat min, CGFloat max) {
    return min <= max ? std::min(std::max(min, center), max) : (min + max) * 0.5;
}

/// The centre of a panel after the point, or before it where it would pass the limit.
CGFloat besidePoint(CGFloat point, CGFloat length, CGFloat gap, CGFloat limit) {
    const bool overflows = limit < point + gap + length;
    return (overflows ? point - gap - length : point + gap) + length * 0.5;
}

}  // namespace

CGPoint clampedCenter(CGPoint center, CGSize panelSize, const CGRect& container, CGFloat margin) {
    const CGFloat halfWidth = panelSize.width * 0.5;
    const CGFloat halfHeight = panelSize.height * 0.5;
    return {clamped(center.x, container.minX() + margin + halfWidth,
                    container.maxX() - margin - halfWidth),
            clamped(center.y, container.minY() + margin + halfHeight,
                    container.maxY() - margin - halfHeight)};
}

OverlaySidePanelPlacement sidePanelPlacement(const CGRect& selection, CGSize panelSize,
                                             const CGRect& container, CGFloat margin, CGFloat gap) {
    if (container.minX() + margin <= selection.minX() - gap - panelSize.width)
        return OverlaySidePanelPlacement::left;
    if (selection.maxX() + gap + panelSize.width <= container.maxX() - margin)
        return OverlaySidePanelPlacement::right;
    return OverlaySidePanelPlacement::overlapping;
}

CGPoint sidePanelCenter(const CGRect& selection, CGSize panelSize, const CGRect& container,
                        CGFloat margin, CGFloat gap,
                        std::optional<OverlaySidePanelPlacement> preferredPlacement) {
    const auto placement = preferredPlacement.value_or(
        sidePanelPlacement(selection, panelSize, container, margin, gap));
    CGFloat x = selection.midX();
    if (placement == OverlaySidePanelPlacement::left)
        x = selection.minX() - gap - panelSize.width * 0.5;
    if (placement == OverlaySidePanelPlacement::right)
        x = selection.maxX() + gap + panelSize.width * 0.5;
    return clampedCenter({x, selection.midY()}, panelSize, container, margin);
}

OverlayActionBarPlacement actionBarPlacement(const CGRect& selection, CGSize panelSize,
                                             const CGRect& container, CGFloat margin, CGFloat gap) {
    if (selection.maxY() + gap + panelSize.height <= container.maxY() - margin)
        return OverlayActionBarPlacement::below;
    if (container.minY() + margin <= selection.minY() - gap - panelSize.height)
        return OverlayActionBarPlacement::above;
    return container.midY() <= selection.minY() ? OverlayActionBarPlacement::screenTop
                                                : OverlayActionBarPlacement::screenBottom;
}

CGPoint actionBarCenter(const CGRect& selection, CGSize panelSize, const CGRect& container,
                        CGFloat margin, CGFloat gap,
                        std::optional<OverlayActionBarPlacement> preferredPlacement) {
    const auto placement = preferredPlacement.value_or(
        actionBarPlacement(selection, panelSize, container, margin, gap));
    const CGFloat halfHeight = panelSize.height * 0.5;
    CGFloat y = 0;
    switch (placement) {
        case OverlayActionBarPlacement::below:
            y = selection.maxY() + gap + halfHeight;
            break;
        case OverlayActionBarPlacement::above:
            y = selection.minY() - gap - halfHeight;
            break;
        case OverlayActionBarPlacement::screenTop:
            y = container.minY() + margin + halfHeight;
            break;
        case OverlayActionBarPlacement::screenBottom:
            y = container.maxY() - margin - halfHeight;
            break;
    }
    return clampedCenter({selection.maxX() - panelSize.width * 0.5, y}, panelSize, container,
                         margin);
}

CGPoint floatingPanelCenter(CGPoint near, CGSize panelSize, const CGRect& container, CGFloat margin,
                            CGFloat gap) {
    return clampedCenter({besidePoint(near.x, panelSize.width, gap, container.maxX() - margin),
                          besidePoint(near.y, panelSize.height, gap, container.maxY() - margin)},
                         panelSize, container, margin);
}

}  // namespace pictal::OverlayPanelLayout
