#include "PictalCore/Color/ColorSampler.h"
#include "Tests/Support/JSONChecks.h"

#include <cmath>

namespace pictal {
namespace {

using enum DecodingError::Kind;

TEST(RGBColor, ClampsWhatIsBuiltAndKeepsWhatIsDecoded) {
    const RGBColor built(1.2, -0.1, 0.5, 3);
    EXPECT_EQ(std::tie(built.red, built.green, built.blue, built.alpha), std::tuple(1, 0, 0.5, 1));
    EXPECT_TRUE(std::isnan(RGBColor(NAN, 0, 0, 0).red));
    const auto decoded =
        decodeJSON<RGBColor>(R"({"red": 1.2, "green": -0.1, "blue": 0.5, "alpha": 3})");
    ASSERT_TRUE(decoded);
    EXPECT_EQ(std::tie(decoded->red, decoded->green, decoded->alpha), std::tuple(1.2, -0.1, 3));
    expectRoundTrip(*decoded);
}

TEST(RGBColor, IsWrittenInHexadecimalAndDecimal) {
    RGBColor outside;
    outside.red = 300;
    outside.green = -HUGE_VAL;
    outside.blue = NAN;
    for (const auto& [color, hex, rgb] : {
             std::tuple(RGBColor(0, 0, 0, 1), "#000000", "RGB(0, 0, 0)"),
             {RGBColor(1, 0.5, 0, 1), "#FF8000", "RGB(255, 128, 0)"},
             {RGBColor(0.2, 0.5, 0.5, 0.2), "#338080", "RGB(51, 128, 128)"},
             {RGBColor(1 / 255.0, 10 / 255.0, 171 / 255.0, 0), "#010AAB", "RGB(1, 10, 171)"},
             {outside, "#FF0000", "RGB(255, 0, 0)"},
         }) {
        EXPECT_EQ(color.hexString(), hex);
        EXPECT_EQ(color.rgbString(), rgb);
    }
}

TEST(ColorSampler, NamesTheNearestAndOfEqualsTheFirst) {
    const auto& names = ColorSampler::defaultNames();
    RGBColor noNumber;
    noNumber.green = NAN;
    for (const auto& [color, name] : {
             std::pair(RGBColor(1, 0.4, 0.1, 1), "Orange"),  // 0.02; Red is at 0.17
             {RGBColor(0.25, 0.25, 0.25, 1), "Black"},       // 0.1875, as Gray
             {RGBColor(0.5, 0.5, 0.5, 0), "Gray"},           // alpha does not count
             {RGBColor(0, 0.4, 1, 1), "Blue"},               // 0.0225; Cyan is at 0.122
             {RGBColor(0.6, 0.28, 0.9, 1), "Purple"},
             {noNumber, "Black"},
         })
        EXPECT_EQ(ColorSampler::nearestName(color, names), name) << color.hexString();
    EXPECT_EQ(ColorSampler::nearestName({}, {}), "Unknown");
    const std::vector<NamedColor> twins{{"A", {0, 0, 0, 1}}, {"B", {0, 0, 0, 0}}};
    EXPECT_EQ(ColorSampler::nearestName({}, twins), "A");
    EXPECT_EQ(names.size(), 11U);
    for (const NamedColor& named : names)
        EXPECT_EQ(ColorSampler::nearestName(named.color, names), named.name);
}

TEST(ColorSample, KeepsWhatItIsGiven) {
    RGBColor bright;
    bright.red = 2;
    const auto sample =
        ColorSampler::sample(bright, ColorEncoding::displayP3, ColorSampler::defaultNames());
    EXPECT_EQ(sample, (ColorSample{bright, ColorEncoding::displayP3, "Red"}));
    expectRoundTrip(ColorSample{bright, ColorEncoding::native, "Blue"});
    const std::string good = encodeJSON(sample).value();
    expectDecodingErrors<ColorSample>({
        {patched(good, "nearestName", "name"), keyNotFound, R"(The key "nearestName" is missing.)"},
        {patched(good, "displayP3", "SRGB"), dataCorrupted, R"(encoding: Unknown value "SRGB".)"},
        {patched(good, "alpha", "opacity"), keyNotFound, R"(color: The key "alpha" is missing.)"},
    });
}

}  // namespace
}  // namespace pictal
