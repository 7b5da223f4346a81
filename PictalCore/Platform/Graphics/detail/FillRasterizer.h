#pragma once

#include "PictalCore/Platform/Graphics/detail/CoverageRow.h"
#include "PictalCore/Platform/Graphics/detail/CoverageSink.h"
#include "PictalCore/Platform/Graphics/detail/FlatPath.h"
#include "PictalCore/Platform/Graphics/detail/PixelRect.h"

namespace pictal::detail {

/// Reports the area of each pixel of `clip` that the path covers, within one level of 255. Every
/// contour counts as closed. The clip only crops: a pixel's coverage does not depend on it.
void rasterizeFill(const FlatPath& path, FillRule rule, const PixelRect& clip, CoverageSink& sink);

}  // namespace pictal::detail
