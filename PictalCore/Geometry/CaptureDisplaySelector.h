#pragma once

#include "PictalCore/Platform/Foundation/CGGeometry.h"

#include <cstdint>
#include <optional>
#include <span>

/// Which display a selection belongs to, and where it lies there. Points, in one global coordinate
/// space of the caller's.
namespace pictal::CaptureDisplaySelector {

/// @return the index of the display that the rectangle covers most of, the earliest on a tie;
///         nothing when it touches none, or has no area
[[nodiscard]] PICTAL_API std::optional<std::int64_t> bestDisplayIndex(
    const CGRect& rect, std::span<const CGRect> displays);

/// The part on the display, counted from the display's smaller edges; y is not flipped. Null when
/// they do not meet.
[[nodiscard]] PICTAL_API CGRect localRect(const CGRect& rect, const CGRect& display);

}  // namespace pictal::CaptureDisplaySelector
