#pragma once

#include "PictalCore/Platform/Foundation/Clamping.h"
#include "PictalCore/Platform/Foundation/JSON.h"
#include "PictalCore/Platform/Graphics/CGColor.h"

namespace pictal {

/// The colour of annotations, shadows and styles: sRGB components and alpha, not premultiplied.
/// The initialiser clamps into 0…1 and keeps NaN; decoding and assignment store what they are
/// given.
struct RGBAColor {
    CGFloat red = 0;
    CGFloat green = 0;
    CGFloat blue = 0;
    CGFloat alpha = 1;

    /// Opaque black.
    constexpr RGBAColor() = default;
    constexpr RGBAColor(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha);

    [[nodiscard]] constexpr CGColor cgColor() const { return {red, green, blue, alpha}; }

    friend constexpr bool operator==(const RGBAColor&, const RGBAColor&) = default;

    /// Opaque black, and black that does not show.
    static const RGBAColor annotationInk, annotationTransparent;
};

constexpr RGBAColor::RGBAColor(CGFloat r, CGFloat g, CGFloat b, CGFloat a)
    : red(clampedToUnit(r)),
      green(clampedToUnit(g)),
      blue(clampedToUnit(b)),
      alpha(clampedToUnit(a)) {}

inline constexpr RGBAColor RGBAColor::annotationInk{0, 0, 0, 1};
inline constexpr RGBAColor RGBAColor::annotationTransparent{0, 0, 0, 0};

PICTAL_JSON_CODED(RGBAColor);

}  // namespace pictal
