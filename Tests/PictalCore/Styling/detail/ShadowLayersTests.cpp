#include "PictalCore/Styling/detail/ShadowLayers.h"

#include <cmath>

#include <gtest/gtest.h>

namespace pictal::detail {
namespace {

TEST(ShadowLayers, ScaleOffsetAndBlur) {
    const auto layers = shadowLayers({40, 3, 20, 0.3, RGBAColor()});
    EXPECT_EQ(layers[0], (ShadowLayerMetrics{3, 20 * 0.32, 40 * 0.45}));
    EXPECT_EQ(layers[1], (ShadowLayerMetrics{3, 20, 40}));
    EXPECT_EQ(layers[2], (ShadowLayerMetrics{3, 20 * 1.55, 40 * 1.45}));
}

TEST(ShadowLayers, PaddingIsTheLargestLayerAndSix) {
    const auto check = [](const char* name, CGFloat blur, CGFloat x, CGFloat y, CGFloat opacity,
                          CGFloat want) {
        ShadowStyle shadow(0, x, y, 0, RGBAColor());
        shadow.blur = blur;
        shadow.opacity = opacity;
        EXPECT_EQ(shadowPadding(shadow), want) << name;
    };
    check("presentation: 52.2 + 34.1", 36, 0, 22, 0.3, 93);
    check("upward is as far", 36, 0, -22, 0.3, 93);
    check("across is not scaled: 14.5 + 50", 10, -50, 20, 1, 71);
    check("whole: 29 is not rounded", 20, 0, 0, 1, 35);
    check("hair of a blur", 1e-9, 0, 0, 1, 7);
    check("no blur", 0, 30, 30, 1, 0);
    check("NaN blur", NAN, 30, 30, 1, 0);
    check("no opacity", 36, 0, 22, 0, 0);
    check("NaN opacity", 36, 0, 22, NAN, 0);
    check("NaN offsets", 20, NAN, NAN, 1, 35);
    check("infinite blur", HUGE_VAL, 0, 0, 1, HUGE_VAL);
    check("infinite offset", 1, 0, -HUGE_VAL, 1, HUGE_VAL);
}

}  // namespace
}  // namespace pictal::detail
