#pragma once

#include "PictalCore/Styling/RGBAColor.h"

namespace pictal {

/// A drop shadow. Lengths are pixels of the exported picture; a positive `offsetY` moves the shadow
/// down, a positive `offsetX` to the right. A blur of B is a Gaussian of standard deviation B/2.
///
/// The initialiser makes the blur at least 0 (NaN becomes 0) and brings the opacity into 0…1 (NaN
/// stays); decoding and assignment store what they are given.
struct ShadowStyle {
    CGFloat blur = 0;
    CGFloat offsetX = 0;
    CGFloat offsetY = 0;
    CGFloat opacity = 0;
    RGBAColor color;

    /// No shadow.
    constexpr ShadowStyle() = default;
    constexpr ShadowStyle(CGFloat blur, CGFloat offsetX, CGFloat offsetY, CGFloat opacity,
                          RGBAColor color);

    friend constexpr bool operator==(const ShadowStyle&, const ShadowStyle&) = default;

    static const ShadowStyle none, presentationCard, defaultTransparentExport;
};

constexpr ShadowStyle::ShadowStyle(CGFloat radius, CGFloat dx, CGFloat dy, CGFloat strength,
                                   RGBAColor tint)
    : blur(clampedToNonNegative(radius)),
      offsetX(dx),
      offsetY(dy),
      opacity(clampedToUnit(strength)),
      color(tint) {}

inline constexpr ShadowStyle ShadowStyle::none{0, 0, 0, 0, RGBAColor(0, 0, 0, 1)};
inline constexpr ShadowStyle ShadowStyle::presentationCard{36, 0, 22, 0.3, RGBAColor(0, 0, 0, 1)};
inline constexpr ShadowStyle ShadowStyle::defaultTransparentExport = presentationCard;

PICTAL_JSON_CODED(ShadowStyle);

}  // namespace pictal
