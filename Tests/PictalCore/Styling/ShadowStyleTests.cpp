#include "PictalCore/Styling/ShadowStyle.h"
#include "Tests/Support/JSONChecks.h"

#include <cmath>

namespace pictal {
namespace {

TEST(ShadowStyle, InitialiserClampsAndDecodingDoesNot) {
    constexpr RGBAColor red(1, 0, 0, 1);
    EXPECT_EQ(ShadowStyle(-4, 3, -5, 1.7, red), ShadowStyle(0, 3, -5, 1, red));
    EXPECT_EQ(ShadowStyle(NAN, 0, 0, -1, red), ShadowStyle(0, 0, 0, 0, red));
    EXPECT_TRUE(std::isnan(ShadowStyle(0, 0, 0, NAN, red).opacity));
    const auto shadow = decodeJSON<ShadowStyle>(
        R"({"blur": -4, "offsetX": 3, "offsetY": -5, "opacity": 1.7,
            "color": {"red": 2, "green": 0, "blue": 0, "alpha": 1}})");
    ASSERT_TRUE(shadow);
    EXPECT_EQ(shadow->blur, -4);
    EXPECT_EQ(shadow->opacity, 1.7);
    EXPECT_EQ(shadow->color.red, 2);
    expectRoundTrip(*shadow);
}

}  // namespace
}  // namespace pictal
