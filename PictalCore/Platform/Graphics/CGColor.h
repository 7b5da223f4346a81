#pragma once

#include "PictalCore/Platform/Foundation/CGGeometry.h"

namespace pictal {

/// A colour as drawing takes it: sRGB components and alpha, not premultiplied. Values outside 0…1
/// are drawn as the nearest end, NaN as 0.
struct CGColor {
    CGFloat red = 0;
    CGFloat green = 0;
    CGFloat blue = 0;
    CGFloat alpha = 1;

    [[nodiscard]] constexpr CGColor withAlpha(CGFloat newAlpha) const {
        return {red, green, blue, newAlpha};
    }

    friend constexpr bool operator==(const CGColor&, const CGColor&) = default;
};

}  // namespace pictal
