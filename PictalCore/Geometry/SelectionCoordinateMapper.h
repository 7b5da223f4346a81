#pragma once

#include "PictalCore/Platform/Foundation/CGGeometry.h"

#include <optional>

/// Carries a selection between the global space of the screens, where y grows upward, and the local
/// space of a container, whose origin is the container's top left corner and where y grows
/// downward. Points; results are rounded outward to whole numbers. On whole numbers inside a
/// whole-number container the two functions are each other's inverse.
namespace pictal::SelectionCoordinateMapper {

/// @param container  the container's frame in global coordinates
/// @return the part inside the container; nothing when there is none, or none with area
[[nodiscard]] PICTAL_API std::optional<CGRect> localRect(const CGRect& globalRect,
                                                         const CGRect& container);

/// The rectangle may lie outside the container; nothing is cut off.
[[nodiscard]] PICTAL_API CGRect globalRect(const CGRect& localRect, const CGRect& container);

}  // namespace pictal::SelectionCoordinateMapper
