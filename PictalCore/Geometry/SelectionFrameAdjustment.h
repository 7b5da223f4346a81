#pragma once

#include "PictalCore/Platform/Foundation/CGGeometry.h"

#include <optional>

/// Which part of a selection the pointer grabs, and the selection after a drag of that part.
///
/// Points throughout, in any coordinate space that all arguments share; minX and minY are only the
/// smaller edges. The result of a drag depends on nothing but the arguments: give the rectangle as
/// it was when the drag began, and the whole way since then.
namespace pictal {

/// Named after the edges that a drag moves; `move` translates the whole rectangle.
enum class SelectionFrameAdjustmentHandle {
    move,
    minX,
    maxX,
    minY,
    maxY,
    minXMinY,
    maxXMinY,
    minXMaxY,
    maxXMaxY,
};

namespace SelectionFrameAdjustment {

inline constexpr CGFloat defaultEdgeTolerance = 14;
inline constexpr CGFloat defaultCornerTolerance = 20;
inline constexpr CGSize defaultMinimumSize{80, 60};

/// Corners win over edges, edges of x over edges of y, and the smaller edge over the greater.
/// @param edgeTolerance    greatest distance from an edge that still grabs it, inclusive
/// @param cornerTolerance  half the side of the square around a corner, which is half-open
/// @return nothing outside the selection grown by the edge tolerance, which is half-open too, or
///         when the selection has no area
[[nodiscard]] PICTAL_API std::optional<SelectionFrameAdjustmentHandle> hitHandle(
    CGPoint point, const CGRect& rect, CGFloat edgeTolerance = defaultEdgeTolerance,
    CGFloat cornerTolerance = defaultCornerTolerance);

/// Whole numbers come out. A rectangle that starts inside whole-number bounds with at least a
/// whole-number minimum size stays so. Elsewhere the minimum size wins at the smaller edges, the
/// bounds win at the greater ones and over the place of a moved rectangle.
/// @param minimumSize  at least 1 and at most the size of the bounds is taken, on each axis
/// @return the rectangle only standardised when it or the bounds have no area
[[nodiscard]] PICTAL_API CGRect adjustedRect(const CGRect& rect,
                                             SelectionFrameAdjustmentHandle handle,
                                             CGSize translation, const CGRect& bounds,
                                             CGSize minimumSize = defaultMinimumSize);

}  // namespace SelectionFrameAdjustment
}  // namespace pictal
