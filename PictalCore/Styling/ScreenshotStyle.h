#pragma once

#include "PictalCore/Styling/BackgroundStyle.h"
#include "PictalCore/Styling/ScreenshotCardEffect.h"
#include "PictalCore/Styling/ShadowStyle.h"

namespace pictal {

/// How an exported screenshot is dressed. Lengths are pixels of the exported picture.
///
/// The initialiser and decoding make the corner radius at least 0 (NaN becomes 0). Decoding takes
/// partial styles: what is absent or null is as in `presentationCard`, except that a style without
/// a card effect is a card exactly when its shadow shows.
struct PICTAL_API ScreenshotStyle {
    CGFloat cornerRadius = 0;
    ShadowStyle shadow;
    BackgroundStyle background = BackgroundStyle::transparent;
    ScreenshotCardEffect cardEffect = ScreenshotCardEffect::none;

    /// The picture as it is.
    constexpr ScreenshotStyle() = default;
    constexpr ScreenshotStyle(CGFloat cornerRadius, ShadowStyle shadow, BackgroundStyle background,
                              ScreenshotCardEffect cardEffect);

    [[nodiscard]] constexpr bool presentationCardEnabled() const {
        return cardEffect == ScreenshotCardEffect::presentation;
    }
    /// Switching on gives a style with neither corners nor shadow those of `presentationCard`; any
    /// other style keeps its own. Switching off keeps both.
    void setPresentationCardEnabled(bool enabled);

    friend constexpr bool operator==(const ScreenshotStyle&, const ScreenshotStyle&) = default;

    static const ScreenshotStyle presentationCard, unmodified;
};

constexpr ScreenshotStyle::ScreenshotStyle(CGFloat radius, ShadowStyle drop, BackgroundStyle behind,
                                           ScreenshotCardEffect effect)
    : cornerRadius(clampedToNonNegative(radius)),
      shadow(drop),
      background(behind),
      cardEffect(effect) {}

inline constexpr ScreenshotStyle ScreenshotStyle::presentationCard{
    22, ShadowStyle::presentationCard, BackgroundStyle::transparent,
    ScreenshotCardEffect::presentation};
inline constexpr ScreenshotStyle ScreenshotStyle::unmodified{
    0, ShadowStyle::none, BackgroundStyle::transparent, ScreenshotCardEffect::none};

PICTAL_JSON_CODED(ScreenshotStyle);

}  // namespace pictal
