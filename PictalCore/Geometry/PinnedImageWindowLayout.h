#pragma once

#include "PictalCore/Platform/Foundation/CGGeometry.h"

#include <optional>
#include <span>

/// Sizes the floating panel of a pinned image and keeps it within reach while it is dragged.
/// Points.
namespace pictal::PinnedImageWindowLayout {

inline constexpr CGSize defaultMaxSize{760, 540};
inline constexpr CGSize defaultMinSize{120, 80};
inline constexpr CGFloat defaultMinimumVisibleLength = 80;

/// The image's own size, or shrunk to fit; never enlarged. The minimum holds on each axis by
/// itself, so that a long, thin image gets a panel of another shape.
/// @return the minimum when the image has no area
[[nodiscard]] PICTAL_API CGSize fittedPanelSize(CGSize imageSize, CGSize maxSize = defaultMaxSize,
                                                CGSize minSize = defaultMinSize);

/// The frame after a drag, clamped.
[[nodiscard]] PICTAL_API CGRect
movedFrame(const CGRect& frame, CGSize screenOffset, const CGRect& visibleFrame,
           CGFloat minimumVisibleLength = defaultMinimumVisibleLength);

/// Moves the frame so that on each axis at least the given length, or the whole side where it is
/// shorter, lies inside the visible frame. Where the visible frame is too short for that, its
/// greater edge decides.
/// @return the frame unchanged when it or the visible frame has no area
[[nodiscard]] PICTAL_API CGRect
clampedFrame(const CGRect& frame, const CGRect& visibleFrame,
             CGFloat minimumVisibleLength = defaultMinimumVisibleLength);

/// @return the smallest rectangle around all frames whose stored width and height are positive;
///         nothing when there are none
[[nodiscard]] PICTAL_API std::optional<CGRect> unionOf(std::span<const CGRect> frames);

}  // namespace pictal::PinnedImageWindowLayout
