#pragma once

#include "PictalCore/Platform/Graphics/Path.h"

#include <optional>

namespace pictal::detail {

/// The area within half of `width` of the ellipse in the rectangle, between its two parallel
/// curves, to be filled by the non-zero rule: exact, and cheaper than a stroke.
/// @param tolerance  how far the polygons may be from the curves
/// @return nothing where the inner curve would cross itself, and for sizes that are not finite
[[nodiscard]] std::optional<Path> ellipseOutline(const CGRect& rect, CGFloat width,
                                                 CGFloat tolerance);

}  // namespace pictal::detail
