#include "PictalCore/Platform/Graphics/BitmapContext.h"
#include "Tests/Support/PictureProbe.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <utility>

namespace pictal {
namespace {

using kernels::pixelOf;

BitmapContext interpolating(std::int64_t width, std::int64_t height) {
    BitmapContext context = BitmapContext::make(width, height, CGColorSpace::sRGB()).value();
    context.setInterpolationQuality(InterpolationQuality::high);
    return context;
}

PictureProbe drawn(const CGImage& image, std::int64_t width, std::int64_t height,
                   const CGRect& rect) {
    BitmapContext context = interpolating(width, height);
    context.draw(image, rect);
    return PictureProbe(std::move(context).makeImage());
}

CGImage noise(std::int64_t width, std::int64_t height) {
    std::mt19937 random{20};
    return pictureOf(width, height, [&](std::uint32_t, std::uint32_t) {
        return kernels::premultiplied(static_cast<std::uint32_t>(random()));
    });
}

TEST(Interpolation, ShrinkingTakesTheExactMean) {
    // 3 × 2 source pixels a canvas pixel, so that every mean is a sum of whole pixels.
    const CGImage image = noise(12, 8);
    const PictureProbe probe = drawn(image, 4, 4, CGRect(0, 0, 4, 4));
    for (std::int64_t y = 0; y < 4; ++y)
        for (std::int64_t x = 0; x < 4; ++x) {
            std::array<double, 4> sum{};
            for (std::int64_t j = 0; j < 2; ++j)
                for (std::int64_t i = 0; i < 3; ++i)
                    for (std::size_t c = 0; c < 4; ++c)
                        sum[c] +=
                            (image.row(2 * y + j)[static_cast<std::size_t>(3 * x + i)] >> (8 * c)) &
                            255;
            for (std::size_t c = 0; c < 4; ++c)
                EXPECT_NEAR((probe.pixel(x, y) >> (8 * c)) & 255, sum[c] / 6, 0.5001)
                    << x << ' ' << y << ' ' << c;
        }
}

TEST(Interpolation, AFractionOfAPixelCountsByItsArea) {
    // Five columns in two: 100 + 50 + half of 20, and half of 20 + 80 + 10, each over 2.5.
    const auto grey = [](std::uint32_t v) { return pixelOf(v, v, v, 255); };
    const CGImage image = pictureOf({grey(100), grey(50), grey(20), grey(80), grey(10)}, 5);
    const PictureProbe probe = drawn(image, 2, 1, CGRect(0, 0, 2, 1));
    EXPECT_EQ(probe.red(0, 0), 64);
    EXPECT_EQ(probe.red(1, 0), 40);
}

TEST(Interpolation, GrowingPassesThroughItsPixelsAndKeepsEdgesSharp) {
    // Five times as wide: the middle of each five is the source's pixel itself.
    const CGImage image = pictureOf(
        6, 1, [](std::uint32_t x, std::uint32_t) { return pixelOf(x < 3 ? 50 : 200, 0, 0, 255); });
    const PictureProbe probe = drawn(image, 30, 3, CGRect(0, 0, 30, 3));
    for (std::int64_t x = 0; x < 6; ++x)
        EXPECT_EQ(probe.red(5 * x + 2, 1), x < 3 ? 50 : 200) << x;
    // By hand: at 0.2 and 0.4 of the way up a step of 150 the two pixels on its upper side weigh
    // 0.168 - 0.016 and 0.424 - 0.048.
    EXPECT_EQ(probe.red(13, 1), 73);
    EXPECT_EQ(probe.red(14, 1), 106);
    EXPECT_LT(probe.red(11, 1), 50);  // it undershoots before the edge
}

TEST(Interpolation, EdgesBetweenPixelsAreSoftAndPlacesAreFractional) {
    const CGImage white = pictureOf({~0U}, 1);
    const PictureProbe probe = drawn(white, 8, 8, CGRect(1.25, 2.5, 4.5, 3));
    EXPECT_NEAR(probe.coverage(), 4.5 * 3, 0.05);
    EXPECT_EQ(probe.alpha(3, 4), 255);
    EXPECT_NEAR(probe.alpha(1, 4), 0.75 * 255, 1);
    // A ramp that is moved by half a pixel has the means of its neighbours.
    const CGImage ramp = pictureOf(
        8, 1, [](std::uint32_t x, std::uint32_t) { return pixelOf(20 * x, 20 * x, 20 * x, 255); });
    const PictureProbe moved = drawn(ramp, 10, 1, CGRect(0.5, 0, 8, 1));
    for (std::int64_t x = 2; x < 7; ++x)
        EXPECT_EQ(moved.red(x, 0), 20 * x - 10) << x;
}

TEST(Interpolation, EveryScaleStaysPremultipliedAndOpaqueStaysOpaque) {
    for (const auto& [width, height] :
         {std::pair{3.7, 40.0}, {40.0, 3.7}, {40.0, 40.0}, {3.0, 2.0}, {0.01, 39.0}}) {
        const PictureProbe probe = drawn(noise(17, 13), 41, 41, CGRect(0.3, 0.2, width, height));
        for (std::int64_t y = 0; y < 41; ++y)
            for (std::int64_t x = 0; x < 41; ++x)
                ASSERT_LE(std::max({probe.red(x, y), probe.green(x, y), probe.blue(x, y)}),
                          probe.alpha(x, y))
                    << width << ' ' << height;
        const CGImage opaque = pictureOf(5, 5, [](std::uint32_t x, std::uint32_t y) {
            return pixelOf(x % 2 * 255, y % 2 * 255, 0, 255);
        });
        const PictureProbe whole = drawn(opaque, 41, 41, CGRect(0, 0, 41, 41));
        EXPECT_EQ(whole.coverage(), 41 * 41);
    }
}

TEST(Interpolation, MirrorsAndBelongsToTheState) {
    const CGImage image = noise(12, 9);
    const PictureProbe upright = drawn(image, 5, 4, CGRect(0, 0, 5, 4));
    BitmapContext context = interpolating(5, 4);
    context.saveGState();
    context.setInterpolationQuality(InterpolationQuality::none);
    context.restoreGState();
    context.concatenate({-1, 0, 0, -1, 5, 4});
    context.draw(image, CGRect(0, 0, 5, 4));
    const PictureProbe mirrored(std::move(context).makeImage());
    for (std::int64_t y = 0; y < 4; ++y)
        for (std::int64_t x = 0; x < 5; ++x)
            EXPECT_EQ(pixelText(mirrored.pixel(4 - x, 3 - y)), pixelText(upright.pixel(x, y)));
}

TEST(Interpolation, ShadowsFallFromTheInterpolatedPicture) {
    // Columns that are there and not, halved: the shadow of each pixel is half as dark.
    const CGImage stripes =
        pictureOf(8, 2, [](std::uint32_t x, std::uint32_t) { return x % 2 == 0 ? ~0U : 0U; });
    BitmapContext context = interpolating(8, 1);
    context.setShadow({4, 0}, 0, {0, 0, 0, 1});
    context.draw(stripes, CGRect(0, 0, 4, 1));
    const PictureProbe probe(std::move(context).makeImage());
    for (std::int64_t x = 0; x < 8; ++x)
        EXPECT_NEAR(probe.alpha(x, 0), 128, 1) << x;
    EXPECT_EQ(probe.red(6, 0), 0);
}

TEST(Interpolation, AClipShowsAPartOfTheSamePicture) {
    const CGImage image = noise(90, 70);
    const CGRect rect(-20.5, -31.25, 75, 90);
    const PictureProbe whole = drawn(image, 40, 40, rect);
    BitmapContext context = interpolating(40, 40);
    context.clip(CGRect(7, 9, 11, 13));
    context.draw(image, rect);
    const PictureProbe part(std::move(context).makeImage());
    for (std::int64_t y = 18; y < 31; ++y)
        for (std::int64_t x = 7; x < 18; ++x)
            ASSERT_EQ(pixelText(part.pixel(x, y)), pixelText(whole.pixel(x, y))) << x << ' ' << y;
}

TEST(Interpolation, ExtremeScalesTakeTimeInProportion) {
    // A row of a million pixels as a column, and a pixel as nothing to speak of.
    const CGImage wide = pictureOf(1'000'000, 1, [](std::uint32_t, std::uint32_t) { return ~0U; });
    EXPECT_EQ(drawn(wide, 1, 4'000, CGRect(0, 0, 1, 4'000)).coverage(), 4'000);
    EXPECT_EQ(drawn(noise(9, 9), 3, 3, CGRect(1, 1, 1e-9, 1)).coverage(), 0);
    EXPECT_EQ(drawn(pictureOf({~0U}, 1), 3, 3, CGRect(-1e9, -1e9, 2e9, 2e9)).coverage(), 9);
}

}  // namespace
}  // namespace pictal
