#pragma once

#include "PictalCore/Platform/Graphics/AffineTransform.h"
#include "PictalCore/Platform/Graphics/Path.h"
#include "PictalCore/Platform/Graphics/detail/FlatPath.h"
#include "PictalCore/Platform/Graphics/detail/PixelRect.h"

namespace pictal::detail {

/// The path as polylines that fill like it on the pixels of `visible`: within 0.001 px there.
/// Curves that lie beside `visible` become chords beside it. A path with a coordinate that is not
/// finite, before or after the transform, becomes nothing: half of a shape would be worse.
[[nodiscard]] FlatPath flattenedForFill(const Path& path, const AffineTransform& transform,
                                        const PixelRect& visible);

/// The same for a stroke of `width` pixels, within 0.01 px (for widths up to 1e7). Points of lines
/// that make no difference are left out.
[[nodiscard]] FlatPath flattenedForStroke(const Path& path, const AffineTransform& transform,
                                          CGFloat width, const PixelRect& visible);

}  // namespace pictal::detail
