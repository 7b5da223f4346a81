#include "PictalCore/Styling/ScreenshotStyle.h"
#include "Tests/Support/JSONChecks.h"

#include <cmath>

namespace pictal {
namespace {

using Effect = ScreenshotCardEffect;
using enum DecodingError::Kind;

constexpr auto noShadow = ShadowStyle::none;
constexpr auto cardShadow = ShadowStyle::presentationCard;
constexpr auto card = ScreenshotStyle::presentationCard;

constexpr ScreenshotStyle style(CGFloat radius, const ShadowStyle& shadow, Effect effect) {
    return {radius, shadow, BackgroundStyle::transparent, effect};
}

TEST(ScreenshotStyle, SwitchingTheCard) {
    const auto check = [](const char* name, ScreenshotStyle before, bool enabled,
                          const ScreenshotStyle& after) {
        before.setPresentationCardEnabled(enabled);
        EXPECT_EQ(before, after) << name;
        EXPECT_EQ(before.presentationCardEnabled(), enabled) << name;
    };
    constexpr ShadowStyle blueNothing(0, 0, 0, 0, RGBAColor(0, 0, 0.5, 1));
    check("unmodified", ScreenshotStyle::unmodified, true, card);
    check("corners of its own", style(8, noShadow, Effect::none), true,
          style(8, noShadow, Effect::presentation));
    check("a shadow that differs in its colour only", style(0, blueNothing, Effect::none), true,
          style(0, blueNothing, Effect::presentation));
    check("off", card, false, style(22, cardShadow, Effect::none));
}

TEST(ScreenshotStyle, DecodesPartialStyles) {
    const auto check = [](const char* text, const ScreenshotStyle& want) {
        EXPECT_EQ(decodeJSON<ScreenshotStyle>(text), want) << text;
    };
    check("{}", card);
    check(R"({"shadow": null, "cornerRadius": null, "background": null, "cardEffect": null})",
          card);
    check(R"({"shadow": {"blur": 0, "offsetX": 0, "offsetY": 0, "opacity": 0,
              "color": {"red": 0, "green": 0, "blue": 0, "alpha": 1}}})",
          style(22, noShadow, Effect::none));
    check(R"({"cornerRadius": -3})", style(0, cardShadow, Effect::presentation));
    check(R"({"cardEffect": "none"})", style(22, cardShadow, Effect::none));
    const auto samples = samplesOfGuide("styles.md");
    ASSERT_EQ(samples.size(), 2u);
    EXPECT_EQ(decodeJSON<ScreenshotStyle>(samples[0]), card);
    EXPECT_EQ(decodeJSON<ScreenshotStyle>(samples[1]), style(8, cardShadow, Effect::presentation));
}

TEST(ScreenshotStyle, RefusesWhatIsNoStyle) {
    expectDecodingErrors<ScreenshotStyle>({
        {R"({"background": "Transparent"})", dataCorrupted,
         R"(background: Unknown value "Transparent".)"},
        {R"({"cornerRadius": "22", "shadow": {"blur": 1, "offsetX": 0, "offsetY": 0, "opacity": 1,
             "color": {}}})",
         keyNotFound, R"(shadow.color: The key "red" is missing.)"},
    });
}

TEST(ScreenshotStyle, RoundTripsAndClampsTheRadius) {
    constexpr ShadowStyle odd(1.0 / 3, -0.1, 1e300, 0.7, RGBAColor(0.1, 0.2, 0.3, 0.4));
    for (const ScreenshotStyle& value :
         {card, ScreenshotStyle::unmodified, style(5e-324, odd, Effect::none),
          style(9, noShadow, Effect::presentation)})
        expectRoundTrip(value);
    EXPECT_EQ(style(-3, noShadow, Effect::none), ScreenshotStyle::unmodified);
    EXPECT_EQ(style(NAN, noShadow, Effect::none), ScreenshotStyle::unmodified);
}

}  // namespace
}  // namespace pictal
