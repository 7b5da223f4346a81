#pragma once

#include "PictalCore/Geometry/AlignmentSnapper.h"
#include "PictalCore/Geometry/OverlayPanelLayout.h"
#include "PictalCore/Geometry/PinnedImageWindowLayout.h"
#include "PictalCore/Geometry/SelectionCoordinateMapper.h"
#include "PictalCore/Geometry/SelectionFrameAdjustment.h"

#include <algorithm>
#include <array>
#include <cmath>

/// What always holds of the overlay's geometry; fed by the fuzz target.
namespace pictal::laws {

inline constexpr auto handles = [] {
    using enum SelectionFrameAdjustmentHandle;
    return std::array{move, minX, maxX, minY, maxY, minXMinY, maxXMinY, minXMaxY, maxXMaxY};
}();

inline bool isInside(const CGRect& inner, const CGRect& outer) {
    return inner.minX() >= outer.minX() && inner.maxX() <= outer.maxX() &&
           inner.minY() >= outer.minY() && inner.maxY() <= outer.maxY();
}

/// For whole-number bounds and minimum, and a rectangle inside and not below them; any movement.
inline bool adjustmentStaysInside(const CGRect& rect, CGSize way, const CGRect& bounds,
                                  CGSize minimum) {
    return std::ranges::all_of(handles, [&](SelectionFrameAdjustmentHandle handle) {
        const CGRect result =
            SelectionFrameAdjustment::adjustedRect(rect, handle, way, bounds, minimum);
        return isInside(result, bounds) && result.width() >= minimum.width &&
               result.height() >= minimum.height && result == result.integral();
    });
}

/// For multiples of 1/8: the result holds the rectangle as it was or in the container's middle,
/// within the tolerance, and is less than a point larger at each edge.
inline bool snapsWithinTolerance(const CGRect& rect, const CGRect& container, CGFloat tolerance) {
    const auto [to, guides] = AlignmentSnapper::snap(rect, container, tolerance);
    const auto axis = [&](bool snapped, CGFloat min, CGFloat length, CGFloat centre, CGFloat toMin,
                          CGFloat toMax) {
        const CGFloat exact = snapped ? centre - length * 0.5 : min;
        return std::abs(exact - min) <= std::max(0.0, tolerance) && toMin == std::floor(exact) &&
               toMax == std::ceil(exact + length);
    };
    return axis(guides.contains(AlignmentSnapGuides::verticalCenter), rect.minX(), rect.width(),
                container.midX(), to.minX(), to.maxX()) &&
           axis(guides.contains(AlignmentSnapGuides::horizontalCenter), rect.minY(), rect.height(),
                container.midY(), to.minY(), to.maxY());
}

/// For whole numbers, the rectangle inside the container and with area.
inline bool mappingIsInverse(const CGRect& rect, const CGRect& container) {
    const auto local = SelectionCoordinateMapper::localRect(rect, container);
    return local && SelectionCoordinateMapper::globalRect(*local, container) == rect;
}

/// For any numbers: a panel that fits leaves the margins free.
inline bool panelStaysInside(CGPoint center, CGSize panel, const CGRect& container,
                             CGFloat margin) {
    const CGPoint to = OverlayPanelLayout::clampedCenter(center, panel, container, margin);
    const auto axis = [&](CGFloat at, CGFloat length, CGFloat min, CGFloat max) {
        const CGFloat lowest = min + margin + length * 0.5;
        const CGFloat highest = max - margin - length * 0.5;
        return !(lowest <= highest) || (lowest <= at && at <= highest);
    };
    return axis(to.x, panel.width, container.minX(), container.maxX()) &&
           axis(to.y, panel.height, container.minY(), container.maxY());
}

/// For whole numbers and a visible frame at least that long; any offset.
inline bool pinnedFrameStaysVisible(const CGRect& frame, CGSize offset, const CGRect& visible,
                                    CGFloat length) {
    const CGRect to = PinnedImageWindowLayout::movedFrame(frame, offset, visible, length);
    const CGFloat x = std::min(length, frame.width()), y = std::min(length, frame.height());
    return to.size == frame.size && to.minX() <= visible.maxX() - x &&
           to.maxX() >= visible.minX() + x && to.minY() <= visible.maxY() - y &&
           to.maxY() >= visible.minY() + y;
}

/// For whole numbers: it does not matter which corner a rectangle is given from.
inline bool cornersDoNotMatter(const CGRect& rect, const CGRect& container, CGPoint point) {
    const auto flipped = [](const CGRect& r) {
        return CGRect{r.maxX(), r.maxY(), -r.width(), -r.height()};
    };
    const auto same = [&](const auto& call) {
        return call(rect, container) == call(flipped(rect), flipped(container));
    };
    const auto adjusted = [&](SelectionFrameAdjustmentHandle handle) {
        return same([&](const CGRect& r, const CGRect& bounds) {
            return SelectionFrameAdjustment::adjustedRect(r, handle, {point.x, point.y}, bounds);
        });
    };
    using Rect = const CGRect&;
    return std::ranges::all_of(handles, adjusted) &&
           same([](Rect r, Rect c) { return AlignmentSnapper::snap(r, c); }) &&
           same([&](Rect, Rect c) { return AlignmentSnapper::snap(point, c); }) &&
           same([&](Rect r, Rect) { return SelectionFrameAdjustment::hitHandle(point, r); }) &&
           same([](Rect r, Rect c) { return SelectionCoordinateMapper::localRect(r, c); }) &&
           same([](Rect r, Rect c) { return SelectionCoordinateMapper::globalRect(r, c); });
}

}  // namespace pictal::laws
