#pragma once

#include "PictalCore/Platform/Foundation/CGGeometry.h"
#include "PictalCore/Platform/Foundation/OptionSet.h"

/// Pulls a dragged point or rectangle onto the centre lines of its container, and tells which guide
/// lines to show. Edges and other objects do not attract.
///
/// Points throughout, in any coordinate space that both arguments share. The axes are decided
/// independently of each other. NaN never snaps.
namespace pictal {

struct AlignmentSnapGuides : OptionSet<AlignmentSnapGuides> {
    using OptionSet::OptionSet;
    /// x was pulled onto the container's mid x: show a vertical line there.
    static const AlignmentSnapGuides verticalCenter;
    /// y was pulled onto the container's mid y: show a horizontal line there.
    static const AlignmentSnapGuides horizontalCenter;
};
inline constexpr AlignmentSnapGuides AlignmentSnapGuides::verticalCenter{1};
inline constexpr AlignmentSnapGuides AlignmentSnapGuides::horizontalCenter{2};

struct AlignmentPointSnapResult {
    CGPoint point;
    AlignmentSnapGuides guides;

    friend constexpr bool operator==(const AlignmentPointSnapResult&,
                                     const AlignmentPointSnapResult&) = default;
};

struct AlignmentRectSnapResult {
    CGRect rect;
    AlignmentSnapGuides guides;

    friend constexpr bool operator==(const AlignmentRectSnapResult&,
                                     const AlignmentRectSnapResult&) = default;
};

namespace AlignmentSnapper {

inline constexpr CGFloat defaultTolerance = 8;

/// @param tolerance  greatest distance that still snaps, inclusive; a negative one counts as 0
/// @return the point, moved where it snapped; unchanged in a container without area
[[nodiscard]] PICTAL_API AlignmentPointSnapResult snap(CGPoint center, const CGRect& container,
                                                       CGFloat tolerance = defaultTolerance);

/// Snaps the rectangle by its centre, rebuilds it around that and rounds it outward to whole
/// numbers, also when nothing snapped. A rectangle without area, or wider or taller than the
/// container, is only standardised.
[[nodiscard]] PICTAL_API AlignmentRectSnapResult snap(const CGRect& rect, const CGRect& container,
                                                      CGFloat tolerance = defaultTolerance);

}  // namespace AlignmentSnapper
}  // namespace pictal
