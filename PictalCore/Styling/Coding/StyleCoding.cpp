#include "PictalCore/Styling/Coding/StyleCoding.h"

#include "PictalCore/Styling/ScreenshotStyle.h"

namespace pictal {

namespace detail {

template <>
struct JSONFields<ShadowStyle> {
    static constexpr std::tuple list{
        field("blur", &ShadowStyle::blur), field("offsetX", &ShadowStyle::offsetX),
        field("offsetY", &ShadowStyle::offsetY), field("opacity", &ShadowStyle::opacity),
        field("color", &ShadowStyle::color)};
};

template <>
struct JSONFields<ScreenshotStyle> {
    static constexpr const ScreenshotStyle& initial = ScreenshotStyle::presentationCard;

    /// Styles stored before there was a card effect.
    static constexpr ScreenshotCardEffect impliedEffect(const ScreenshotStyle& style) {
        return style.shadow.opacity > 0 ? ScreenshotCardEffect::presentation
                                        : ScreenshotCardEffect::none;
    }
    static constexpr std::tuple list{
        field("shadow", &ScreenshotStyle::shadow, unchanged),
        field("cornerRadius", &ScreenshotStyle::cornerRadius, unchanged),
        field("background", &ScreenshotStyle::background, unchanged),
        field("cardEffect", &ScreenshotStyle::cardEffect, &impliedEffect)};

    static constexpr ScreenshotStyle adjusted(const ScreenshotStyle& style) {
        return {style.cornerRadius, style.shadow, style.background, style.cardEffect};
    }
};

}  // namespace detail

PICTAL_DEFINE_JSON(BackgroundStyle)
PICTAL_DEFINE_JSON(RGBAColor)
PICTAL_DEFINE_JSON(ScreenshotCardEffect)
PICTAL_DEFINE_JSON(ScreenshotStyle)
PICTAL_DEFINE_JSON(ShadowStyle)

}  // namespace pictal
