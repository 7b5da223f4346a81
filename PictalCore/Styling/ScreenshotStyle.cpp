#include "PictalCore/Styling/ScreenshotStyle.h"

#include "PictalCore/Styling/Coding/StyleCoding.h"

namespace pictal {

void ScreenshotStyle::setPresentationCardEnabled(bool enabled) {
    cardEffect = enabled ? ScreenshotCardEffect::presentation : ScreenshotCardEffect::none;
    if (enabled && cornerRadius == 0 && shadow == ShadowStyle::none) {
        cornerRadius = presentationCard.cornerRadius;
        shadow = presentationCard.shadow;
    }
}

namespace detail {

template <>
struct JSONCodec<ScreenshotStyle> {
    static JSONValue encode(const ScreenshotStyle& style) {
        return JSONObject()
            .set("cornerRadius", style.cornerRadius)
            .set("shadow", style.shadow)
            .set("background", style.background)
            .set("cardEffect", style.cardEffect);
    }

    static ScreenshotStyle decode(const JSONDecoder& decoder) {
        ScreenshotStyle style = ScreenshotStyle::presentationCard;
        style.shadow = decoder.optional<ShadowStyle>("shadow").value_or(style.shadow);
        style.cornerRadius = clampedToNonNegative(
            decoder.optional<CGFloat>("cornerRadius").value_or(style.cornerRadius));
        style.background =
            decoder.optional<BackgroundStyle>("background").value_or(style.background);
        // Styles stored before there was a card effect.
        const auto implied = style.shadow.opacity > 0 ? ScreenshotCardEffect::presentation
                                                      : ScreenshotCardEffect::none;
        style.cardEffect = decoder.optional<ScreenshotCardEffect>("cardEffect").value_or(implied);
        return style;
    }
};

}  // namespace detail

PICTAL_DEFINE_JSON(ScreenshotStyle)

}  // namespace pictal
