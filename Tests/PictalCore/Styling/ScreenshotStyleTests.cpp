#include "PictalCore/Styling/ScreenshotStyle.h"
#include "Tests/Support/JSONChecks.h"

#include <cmath>

namespace pictal {
namespace {

using Effect = ScreenshotCardEffect;
using Kind = DecodingError::Kind;

constexpr auto noShadow = ShadowStyle::none;
constexpr auto cardShadow = ShadowStyle::presentationCard;
constexpr auto card = ScreenshotStyle::presentationCard;

constexpr ScreenshotStyle style(CGFloat radius, const ShadowStyle& shadow, Effect effect) {
    return {radius, shadow, BackgroundStyle::transparent, effect};
}

TEST(ScreenshotStyle, SwitchingTheCard) {
    constexpr ShadowStyle blueNothing(0, 0, 0, 0, RGBAColor(0, 0, 0.5, 1));
    struct Case {
        const char* name;
        ScreenshotStyle before;
        bool enabled;
        ScreenshotStyle after;
    };
    for (auto [name, before, enabled, after] : {
             Case{"unmodified", ScreenshotStyle::unmodified, true, card},
             Case{"corners of its own", style(8, noShadow, Effect::none), true,
                  style(8, noShadow, Effect::presentation)},
             Case{"a shadow that differs in its colour only", style(0, blueNothing, Effect::none),
                  true, style(0, blueNothing, Effect::presentation)},
             Case{"off", card, false, style(22, cardShadow, Effect::none)},
         }) {
        before.setPresentationCardEnabled(enabled);
        EXPECT_EQ(before, after) << name;
        EXPECT_EQ(before.presentationCardEnabled(), enabled) << name;
    }
}

TEST(ScreenshotStyle, DecodesPartialStyles) {
    struct Case {
        const char* text;
        ScreenshotStyle want;
    };
    for (const auto& [text, want] : {
             Case{"{}", card},
             Case{R"({"shadow": null, "cornerRadius": null, "background": null,
                      "cardEffect": null})",
                  card},
             Case{R"({"shadow": {"blur": 0, "offsetX": 0, "offsetY": 0, "opacity": 0,
                      "color": {"red": 0, "green": 0, "blue": 0, "alpha": 1}}})",
                  style(22, noShadow, Effect::none)},
             Case{R"({"cornerRadius": -3})", style(0, cardShadow, Effect::presentation)},
             Case{R"({"cardEffect": "none"})", style(22, cardShadow, Effect::none)},
         })
        EXPECT_EQ(decodeJSON<ScreenshotStyle>(text), want) << text;
    const auto samples = samplesOfGuide("styles.md");
    ASSERT_EQ(samples.size(), 2u);
    EXPECT_EQ(decodeJSON<ScreenshotStyle>(samples[0]), card);
    EXPECT_EQ(decodeJSON<ScreenshotStyle>(samples[1]), style(8, cardShadow, Effect::presentation));
}

TEST(ScreenshotStyle, RefusesWhatIsNoStyle) {
    expectDecodingErrors<ScreenshotStyle>({
        {R"({"background": "Transparent"})", Kind::dataCorrupted,
         R"(background: Unknown value "Transparent".)"},
        {R"({"cardEffect": ""})", Kind::dataCorrupted, R"(cardEffect: Unknown value "".)"},
        {R"({"shadow": {"blur": 1, "offsetX": 0, "offsetY": 0, "opacity": 1}})", Kind::keyNotFound,
         R"(shadow: The key "color" is missing.)"},
        {R"({"cornerRadius": "22", "shadow": {"blur": 1, "offsetX": 0, "offsetY": 0, "opacity": 1,
             "color": {}}})",
         Kind::keyNotFound, R"(shadow.color: The key "red" is missing.)"},
        {R"({"shadow": {"blur": 1e999}})", Kind::dataCorrupted,
         "A number is out of range at byte 25."},
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
