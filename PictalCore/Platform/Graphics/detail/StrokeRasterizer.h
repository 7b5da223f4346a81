#pragma once

#include "PictalCore/Platform/Graphics/detail/CoverageSink.h"
#include "PictalCore/Platform/Graphics/detail/FlatPath.h"
#include "PictalCore/Platform/Graphics/detail/PixelRect.h"

namespace pictal::detail {

/// Reports the area of each pixel of `clip` that lies within half of `width` of the path: round
/// caps and joins, and where the stroke meets itself it is one area. A closed contour has no caps;
/// a contour of one point is a dot. A width that is not above 0 or not finite draws nothing. The
/// clip only crops: a pixel's coverage does not depend on it.
void rasterizeStroke(const FlatPath& path, CGFloat width, const PixelRect& clip,
                     CoverageSink& sink);

}  // namespace pictal::detail
