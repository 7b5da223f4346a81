#include "PictalCore/Platform/Graphics/Kernels/Alpha.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include <gtest/gtest.h>

namespace pictal::kernels {
namespace {

TEST(Alpha, GoesOutAndInExactlyRoundedForEveryPairAndTarget) {
    std::vector<std::uint32_t> pixels;
    for (std::uint32_t i = 0; i < 65536; ++i)
        pixels.push_back(pixelOf(i & 255, 255 - (i & 255), (i & 255) / 2, i >> 8));
    for (const Target target : allTargets) {
        if (!isAvailable(target)) continue;
        std::vector<std::uint32_t> straight(pixels.size()), back(pixels.size());
        alphaKernels(target).unpremultiply(pixels, straight);
        alphaKernels(target).premultiply(pixels, back);
        for (std::size_t i = 0; i < pixels.size(); ++i) {
            const double alpha = alphaOf(pixels[i]);
            const auto want = [&](bool out) {
                const auto component = [&](double c) {  // one above its alpha counts as the alpha
                    const double quotient = std::min(c, alpha) * 255 / std::max(alpha, 1.0);
                    return static_cast<std::uint32_t>(std::round(out ? quotient : c * alpha / 255));
                };
                return pixelOf(component(redOf(pixels[i])), component(greenOf(pixels[i])),
                               component(blueOf(pixels[i])), alphaOf(pixels[i]));
            };
            ASSERT_EQ(straight[i], want(true)) << std::hex << pixels[i];
            ASSERT_EQ(unpremultiplied(pixels[i]), want(true)) << std::hex << pixels[i];
            ASSERT_EQ(back[i], want(false)) << std::hex << pixels[i];
        }
    }
}

}  // namespace
}  // namespace pictal::kernels
