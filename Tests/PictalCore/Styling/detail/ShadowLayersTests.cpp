#include "PictalCore/Styling/detail/ShadowLayers.h"

#include <limits>

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
    constexpr CGFloat infinity = std::numeric_limits<CGFloat>::infinity();
    constexpr CGFloat nan = std::numeric_limits<CGFloat>::quiet_NaN();
    struct Case {
        const char* name;
        CGFloat blur, x, y, opacity, want;
    };
    for (const Case& c : {
             Case{"presentation: 52.2 + 34.1", 36, 0, 22, 0.3, 93},
             Case{"upward is as far", 36, 0, -22, 0.3, 93},
             Case{"across is not scaled: 14.5 + 50", 10, -50, 20, 1, 71},
             Case{"whole: 29 is not rounded", 20, 0, 0, 1, 35},
             Case{"hair of a blur", 1e-9, 0, 0, 1, 7},
             Case{"no blur", 0, 30, 30, 1, 0},
             Case{"NaN blur", nan, 30, 30, 1, 0},
             Case{"no opacity", 36, 0, 22, 0, 0},
             Case{"NaN opacity", 36, 0, 22, nan, 0},
             Case{"NaN offsets", 20, nan, nan, 1, 35},
             Case{"infinite blur", infinity, 0, 0, 1, infinity},
             Case{"infinite offset", 1, 0, -infinity, 1, infinity},
         }) {
        ShadowStyle shadow;
        shadow.blur = c.blur;
        shadow.offsetX = c.x;
        shadow.offsetY = c.y;
        shadow.opacity = c.opacity;
        EXPECT_EQ(shadowPadding(shadow), c.want) << c.name;
    }
}

}  // namespace
}  // namespace pictal::detail
