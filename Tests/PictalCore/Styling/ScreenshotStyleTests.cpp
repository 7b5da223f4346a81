#include "PictalCore/Styling/ScreenshotStyle.h"
#include "Tests/Support/JSONChecks.h"

#include <cmath>
#include <limits>

namespace pictal {
namespace {

using Effect = ScreenshotCardEffect;
using Kind = DecodingError::Kind;

constexpr CGFloat nan = std::numeric_limits<CGFloat>::quiet_NaN();
constexpr auto transparent = BackgroundStyle::transparent;

TEST(ShadowStyle, InitialiserClamps) {
    const RGBAColor red(1, 0, 0, 1);
    const ShadowStyle shadow(-4, 3, -5, 1.7, red);
    EXPECT_EQ(shadow.blur, 0);
    EXPECT_EQ(shadow.offsetX, 3);
    EXPECT_EQ(shadow.offsetY, -5);
    EXPECT_EQ(shadow.opacity, 1);
    EXPECT_EQ(shadow.color, red);
    EXPECT_EQ(ShadowStyle(nan, 0, 0, -1, red).blur, 0);
    EXPECT_EQ(ShadowStyle(nan, 0, 0, -1, red).opacity, 0);
    EXPECT_TRUE(std::isnan(ShadowStyle(0, 0, 0, nan, red).opacity));
}

TEST(ShadowStyle, DecodingStoresWhatItReads) {
    const auto shadow = decodeJSON<ShadowStyle>(
        R"({"blur": -4, "offsetX": 3, "offsetY": -5, "opacity": 1.7,
            "color": {"red": 2, "green": 0, "blue": 0, "alpha": 1}})");
    ASSERT_TRUE(shadow);
    EXPECT_EQ(shadow->blur, -4);
    EXPECT_EQ(shadow->opacity, 1.7);
    EXPECT_EQ(shadow->color.red, 2);
    expectRoundTrip(*shadow, "out of range");
}

TEST(ScreenshotStyle, InitialiserClampsTheRadius) {
    EXPECT_EQ(ScreenshotStyle(-3, ShadowStyle::none, transparent, Effect::none).cornerRadius, 0);
    EXPECT_EQ(ScreenshotStyle(nan, ShadowStyle::none, transparent, Effect::none).cornerRadius, 0);
    EXPECT_EQ(ScreenshotStyle(), ScreenshotStyle::unmodified);
}

TEST(ScreenshotStyle, SwitchingTheCard) {
    constexpr ShadowStyle faint(0, 0, 0, 0, RGBAColor(0, 0, 0.5, 1));
    constexpr ScreenshotStyle rounded(8, ShadowStyle::none, transparent, Effect::none);
    struct Case {
        const char* name;
        ScreenshotStyle before;
        bool enabled;
        ScreenshotStyle after;
    };
    static constexpr Case cases[] = {
        {"on, unmodified", ScreenshotStyle::unmodified, true, ScreenshotStyle::presentationCard},
        {"on, corners of its own",
         rounded,
         true,
         {8, ShadowStyle::none, transparent, Effect::presentation}},
        {"on, a shadow that differs in its colour only",
         {0, faint, transparent, Effect::none},
         true,
         {0, faint, transparent, Effect::presentation}},
        {"off",
         ScreenshotStyle::presentationCard,
         false,
         {22, ShadowStyle::presentationCard, transparent, Effect::none}},
        {"off, already off", rounded, false, rounded},
    };
    for (const Case& c : cases) {
        ScreenshotStyle style = c.before;
        style.setPresentationCardEnabled(c.enabled);
        EXPECT_EQ(style, c.after) << c.name;
        EXPECT_EQ(style.presentationCardEnabled(), c.enabled) << c.name;
    }
}

TEST(ScreenshotStyle, DecodesPartialStyles) {
    struct Case {
        const char* name;
        const char* text;
        ScreenshotStyle want;
    };
    static constexpr auto card = ShadowStyle::presentationCard;
    static constexpr Case cases[] = {
        {"empty", "{}", ScreenshotStyle::presentationCard},
        {"all null",
         R"({"shadow": null, "cornerRadius": null, "background": null, "cardEffect": null})",
         ScreenshotStyle::presentationCard},
        {"invisible shadow implies no card",
         R"({"shadow": {"blur": 0, "offsetX": 0, "offsetY": 0, "opacity": 0,
                        "color": {"red": 0, "green": 0, "blue": 0, "alpha": 1}}})",
         {22, ShadowStyle::none, transparent, Effect::none}},
        {"negative radius",
         R"({"cornerRadius": -3})",
         {0, card, transparent, Effect::presentation}},
        {"no card", R"({"cardEffect": "none"})", {22, card, transparent, Effect::none}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(decodeJSON<ScreenshotStyle>(c.text), c.want) << c.name;
}

TEST(ScreenshotStyle, RefusesWhatIsNoStyle) {
    struct Case {
        const char* name;
        const char* text;
        Kind kind;
        const char* message;
    };
    static constexpr Case cases[] = {
        {"list", "[]", Kind::typeMismatch, "Expected an object but found an array."},
        {"background", R"({"background": "Transparent"})", Kind::dataCorrupted,
         "background: Unknown value \"Transparent\"."},
        {"card effect", R"({"cardEffect": ""})", Kind::dataCorrupted,
         "cardEffect: Unknown value \"\"."},
        {"radius", R"({"cornerRadius": "22"})", Kind::typeMismatch,
         "cornerRadius: Expected a number but found a string."},
        {"partial shadow", R"({"shadow": {"blur": 1, "offsetX": 0, "offsetY": 0, "opacity": 1}})",
         Kind::keyNotFound, "shadow: The key \"color\" is missing."},
        {"partial colour of the shadow; the first error counts",
         R"({"shadow": {"blur": 1, "offsetX": 0, "offsetY": 0, "opacity": 1, "color": {}},
             "cornerRadius": "22"})",
         Kind::keyNotFound, "shadow.color: The key \"red\" is missing."},
        {"infinite blur", R"({"shadow": {"blur": 1e999}})", Kind::dataCorrupted,
         "A number is out of range at byte 25."},
    };
    for (const Case& c : cases)
        expectDecodingError<ScreenshotStyle>(c.text, c.kind, c.message, c.name);
}

TEST(ScreenshotStyle, RoundTrips) {
    expectRoundTrip(ScreenshotStyle::presentationCard, "card");
    expectRoundTrip(ScreenshotStyle::unmodified, "unmodified");
    const ShadowStyle shadow(1.0 / 3, -0.1, 1e300, 0.7, RGBAColor(0.1, 0.2, 0.3, 0.4));
    expectRoundTrip(ScreenshotStyle(5e-324, shadow, transparent, Effect::none), "odd numbers");
    expectRoundTrip(ScreenshotStyle(9, ShadowStyle::none, transparent, Effect::presentation),
                    "a card without a shadow");
}

TEST(ScreenshotStyle, GuideShowsTheCard) {
    const auto samples = samplesOfGuide("styles.md");
    ASSERT_EQ(samples.size(), 2u);
    EXPECT_EQ(decodeJSON<ScreenshotStyle>(samples[0]), ScreenshotStyle::presentationCard);
    EXPECT_EQ(decodeJSON<ScreenshotStyle>(samples[1]),
              ScreenshotStyle(8, ShadowStyle::presentationCard, transparent, Effect::presentation));
}

}  // namespace
}  // namespace pictal
