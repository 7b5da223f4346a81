#include "PictalCore/Color/CGImageColorSampler.h"
#include "Tests/Support/PictureProbe.h"

#include <cmath>

namespace pictal {
namespace {

using namespace kernels;
using enum ColorEncoding;

CGImage onePixel(std::uint32_t pixel, const CGColorSpace& space) {
    return pictureOf(1, 1, [=](auto, auto) { return pixel; }, space);
}

/// The sampled levels as the word that would store them.
std::uint32_t read(const CGImage& image, CGPoint point, ColorEncoding encoding = sRGB) {
    const RGBColor color = CGImageColorSampler::rgbColor(image, point, encoding).value();
    const auto level = [](double component) {
        EXPECT_EQ(component * 255, std::round(component * 255)) << "a whole level";
        return static_cast<std::uint32_t>(std::lround(component * 255));
    };
    return pixelOf(level(color.red), level(color.green), level(color.blue), level(color.alpha));
}

TEST(CGImageColorSampler, ReadsThePixelThatThePointFallsOn) {
    const CGImage image = pictureOf(
        5, 7,
        [](auto x, auto y) {
            return pixelOf(static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y), 0, 255);
        },
        CGColorSpace::sRGB());
    struct Case {
        CGPoint point;
        std::uint32_t x;
        std::uint32_t y;
    };
    for (const auto& [point, x, y] : {Case{{-5, 3.9}, 0, 3},
                                      {{0.999, 1}, 0, 1},
                                      {{15, 0}, 4, 0},
                                      {{4.99, 6.99}, 4, 6},
                                      {{NAN, HUGE_VAL}, 0, 6},
                                      {{-HUGE_VAL, NAN}, 0, 0},
                                      {{1e300, -1e300}, 4, 0}})
        EXPECT_EQ(read(image, point), pixelOf(x, y, 0, 255)) << point.x << ", " << point.y;
    EXPECT_EQ(CGImageColorSampler::rgbColor(CGImage(), {}).error(),
              CGImageColorSamplerError::cannotCreateContext);
}

TEST(CGImageColorSampler, ReadsInTheSpaceThatIsAskedFor) {
    // By a calculation apart from the published primaries and curves.
    const std::uint32_t muted = pixelOf(200, 100, 50, 255);
    struct Case {
        const char* name;
        CGColorSpace space;
        std::uint32_t pixel;
        ColorEncoding encoding;
        std::uint32_t want;
    };
    const CGColorSpace untagged, p3 = CGColorSpace::displayP3();
    for (const auto& [name, space, pixel, encoding, want] : {
             Case{"as stored", CGColorSpace::sRGB(), muted, sRGB, muted},
             {"as stored, its own", p3, muted, native, muted},
             {"as stored, the same space", p3, muted, displayP3, muted},
             {"untagged is sRGB", untagged, muted, sRGB, muted},
             {"untagged, its own", untagged, muted, native, muted},
             {"P3 to sRGB", p3, muted, sRGB, pixelOf(215, 93, 31, 255)},
             {"P3's sRGB numbers", p3, muted, genericRGB, pixelOf(215, 93, 31, 255)},
             {"P3's red is cut", p3, pixelOf(255, 0, 0, 255), sRGB, pixelOf(255, 0, 0, 255)},
             {"sRGB's red in P3", untagged, pixelOf(255, 0, 0, 255), displayP3,
              pixelOf(234, 51, 35, 255)},
             {"sRGB's green in Adobe RGB", untagged, pixelOf(0, 255, 0, 255), adobeRGB1998,
              pixelOf(144, 255, 60, 255)},
             {"P3 in Adobe RGB", p3, pixelOf(100, 150, 200, 255), adobeRGB1998,
              pixelOf(108, 150, 201, 255)},
             {"half transparent red", untagged, pixelOf(128, 0, 0, 128), sRGB,
              pixelOf(128, 0, 0, 128)},
             {"half of it in P3", untagged, pixelOf(128, 0, 0, 128), displayP3,
              pixelOf(117, 26, 18, 128)},  // 233.959 * 128 / 255 and so on
             {"transparent", p3, pixelOf(0, 0, 0, 0), adobeRGB1998, 0},
         })
        EXPECT_EQ(pixelText(read(onePixel(pixel, space), {}, encoding)), pixelText(want)) << name;
}

TEST(CGImageColorSampler, NamesWhatItReads) {
    const auto sample =
        CGImageColorSampler::sample(onePixel(0xFF0000FF, CGColorSpace::sRGB()), {}, native);
    EXPECT_EQ(sample, (ColorSample{{1, 0, 0, 1}, native, "Red"}));
    EXPECT_FALSE(CGImageColorSampler::sample(CGImage(), {}, sRGB));
}

}  // namespace
}  // namespace pictal
