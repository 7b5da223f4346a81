#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/Platform/Foundation/CGGeometry.h"

#include <cstdint>

/// Where the colour picker's loupe looks. Pointer and view have y upward; image positions are
/// pixels from the upper left corner, y downward.
namespace pictal::ColorLoupeGeometry {

/// The image's pixel position below the pointer, not rounded; a pointer outside the view counts as
/// the nearest edge, and no position reaches the image's width or height.
/// @param rect  where the image is shown
/// @return (0, 0) where the rectangle or the image has no area; NaN coordinates count as 0
[[nodiscard]] PICTAL_API CGPoint imagePoint(CGPoint point, CGRect rect, CGSize imageSize);

/// The square of pixels around an image position, shifted (not shrunk) to stay in the image; the
/// pixel under the centre is half a side, rounded down, from its left and top.
/// @param sampleSide  pixels a side; below 1 counts as 1, more than the image has as all it has
/// @return whole numbers for an image of whole size; the zero rectangle for one without area
[[nodiscard]] PICTAL_API CGRect cropRect(CGPoint center, CGSize imageSize, std::int64_t sampleSide);

}  // namespace pictal::ColorLoupeGeometry
