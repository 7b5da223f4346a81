#include "PictalCore/Styling/TransparentImageRenderer.h"
#include "Tests/Support/LibPNGDecoder.h"
#include "Tests/Support/PictureProbe.h"
#include "Tests/Support/Reference/CardReference.h"

#include <array>
#include <cmath>
#include <limits>
#include <random>

#include <gtest/gtest.h>
#include <lcms2.h>

namespace pictal {
namespace {

constexpr CGFloat infinity = std::numeric_limits<CGFloat>::infinity();
constexpr CGFloat nan = std::numeric_limits<CGFloat>::quiet_NaN();

/// Opaque noise, so that a pixel in the wrong place is seen.
CGImage noise(std::int64_t width, std::int64_t height, std::uint32_t alpha = 255) {
    std::mt19937 random(11);
    return pictureOf(width, height, [&](auto, auto) {
        return kernels::premultiplied((random() & 0x00FFFFFF) | alpha << 24);
    });
}

ScreenshotStyle card(CGFloat radius, const ShadowStyle& shadow) {
    return {radius, shadow, BackgroundStyle::transparent, ScreenshotCardEffect::presentation};
}

CGImage render(const CGImage& image, const ScreenshotStyle& style) {
    return TransparentImageRenderer().render(image, style).value();
}

TEST(TransparentImageRenderer, AgreesWithTheTrueGaussianToALevel) {
    const RGBAColor black, tint{0.9, 0.4, 0.1, 0.8};
    struct Case {
        const char* name;
        std::int64_t width, height;
        CGFloat radius;
        ShadowStyle shadow;
    };
    for (const Case& c : {
             Case{"presentation", 80, 60, 22, ShadowStyle::presentationCard},
             Case{"square corners", 40, 30, 0, {12, 0, 6, 1, black}},
             Case{"round corners", 60, 44, 9.5, {10, 0, 5, 1, black}},
             Case{"pill", 50, 21, 1000, {9, 0, 4, 1, black}},
             Case{"tall pill", 20, 51, 10, {9, 0, 4, 1, black}},
             Case{"circle of an odd side", 31, 31, infinity, {11, 0, 3, 1, black}},
             Case{"narrower than the blur", 7, 60, 2, {30, 0, 4, 1, black}},
             Case{"pill under a wide blur", 70, 41, 1000, {60, 0, 8, 1, black}},
             Case{"smaller than the blur", 5, 4, 2, {24, 0, 3, 1, black}},
             Case{"one pixel", 1, 1, 5, {8, 0, 2, 1, black}},
             Case{"one column", 1, 40, 5, {8, 0, 2, 1, black}},
             Case{"one row", 40, 1, 0, {8, 0, 2, 1, black}},
             Case{"offset sideways", 40, 30, 8, {10, 7, 3, 1, black}},
             Case{"offset up to the left", 40, 30, 8, {10, -6.5, -8.25, 1, black}},
             Case{"offset beyond the picture", 20, 16, 6, {6, 40, 30, 1, black}},
             Case{"colour", 40, 30, 8, {10, 2, 5, 0.7, tint}},
             Case{"no blur, cut off at the edge", 60, 44, 14, {0, 6, 10, 1, black}},
             Case{"no blur, fractional offset", 60, 44, 14.3, {0, -5.3, 7.7, 1, tint}},
             Case{"hair of a blur", 36, 30, 12, {0.4, 9, 4, 1, black}},
             Case{"one pixel of blur", 36, 30, 13.7, {1, 4.5, 9, 1, black}},
             Case{"two pixels of blur", 30, 30, 15, {2, 3, 7, 1, black}},
             Case{"four pixels of blur", 34, 32, 15, {4, 0, 8, 1, black}},
         }) {
        const CGImage picture = noise(c.width, c.height);
        const CGImage have = render(picture, card(c.radius, c.shadow));
        const std::int64_t padding = (have.width() - c.width) / 2;
        const CardReference want(c.width, c.height, padding, card(c.radius, c.shadow));
        ASSERT_EQ(have.width(), want.canvasWidth()) << c.name;
        ASSERT_EQ(have.height(), want.canvasHeight()) << c.name;
        const PictureProbe probe(have), source(picture);
        const RGBAColor& color = c.shadow.color;
        double most = 0;
        std::string where;
        for (std::int64_t y = 0; y < have.height(); ++y)
            for (std::int64_t x = 0; x < have.width(); ++x) {
                const double shadow = 255 * want.shadow(x, y), covered = want.outline(x, y);
                const std::uint32_t own = covered > 0 ? source.pixel(x - padding, y - padding) : 0;
                const std::array<double, 4> tints{color.red, color.green, color.blue, 1};
                for (int i = 0; i < 4; ++i) {
                    const double expected = shadow * tints[static_cast<std::size_t>(i)] +
                                            covered * static_cast<double>((own >> 8 * i) & 255);
                    const double level = static_cast<double>((probe.pixel(x, y) >> 8 * i) & 255);
                    if (std::abs(level - expected) <= most) continue;
                    most = std::abs(level - expected);
                    where = "(" + std::to_string(x) + ", " + std::to_string(y) + ") have " +
                            pixelText(probe.pixel(x, y)) + ", component " + std::to_string(i) +
                            " want " + std::to_string(expected);
                }
            }
        // Half a level is rounding; the rest is what a blur in cells misses along small arcs.
        EXPECT_LE(most, 0.7) << c.name << ": " << where;
    }
}

TEST(TransparentImageRenderer, PlacesThePictureUntouched) {
    const CGImage picture = noise(400, 300);
    const CGImage have = render(picture, ScreenshotStyle::presentationCard);
    EXPECT_EQ(have.colorSpace(), CGColorSpace::sRGB());
    EXPECT_FALSE(have.isOpaque());
    ASSERT_EQ(have.width(), 586);
    ASSERT_EQ(have.height(), 486);
    const CGImage middle = have.cropping({93, 115, 400, 256}).value();
    EXPECT_TRUE(picturesAgree(middle, picture.cropping({0, 22, 400, 256}).value()));
    const CGImage top = have.cropping({115, 93, 356, 300}).value();
    EXPECT_TRUE(picturesAgree(top, picture.cropping({22, 0, 356, 300}).value()));
    // Between the picture and its shadow lies the ring, with nothing in it.
    const PictureProbe probe(have);
    for (std::int64_t x = 115; x < 471; ++x)
        for (const std::int64_t y : {91, 92, 393, 394})
            ASSERT_EQ(probe.pixel(x, y), 0U) << x << ", " << y;
    EXPECT_GT(probe.alpha(90, 243), 0);
    EXPECT_GT(probe.alpha(293, 395), probe.alpha(293, 90));
}

TEST(TransparentImageRenderer, CardsMirrorThemselves) {
    const auto plain = [](std::int64_t width, std::int64_t height) {
        return pictureOf(width, height, [](auto, auto) { return 0xFF808080; });
    };
    const auto flipped = [](const CGImage& image, bool across, bool down, bool transposed) {
        const std::int64_t width = image.width(), height = image.height();
        return pictureOf(transposed ? height : width, transposed ? width : height,
                         [&](std::int64_t x, std::int64_t y) {
                             if (transposed) std::swap(x, y);
                             return PictureProbe(image).pixel(across ? width - 1 - x : x,
                                                              down ? height - 1 - y : y);
                         });
    };
    const auto shadow = [](CGFloat x, CGFloat y) {
        return ShadowStyle{9, x, y, 0.9, {0.2, 0.5, 0, 1}};
    };
    for (const auto [width, height] : {std::array{40, 31}, std::array{9, 9}, std::array{7, 30}})
        for (const CGFloat radius : {0.0, 3.5, 100.0}) {
            const CGImage picture = plain(width, height);
            const CGImage have = render(picture, card(radius, shadow(5, 2.5)));
            EXPECT_TRUE(picturesAgree(flipped(have, true, false, false),
                                      render(picture, card(radius, shadow(-5, 2.5))), 1))
                << width << " × " << height << ", radius " << radius;
            // Only the horizontal offset is the same in all three layers.
            const CGImage straight = render(picture, card(radius, shadow(0, 0)));
            EXPECT_TRUE(picturesAgree(flipped(straight, true, true, false), straight, 1));
            EXPECT_TRUE(picturesAgree(flipped(straight, false, false, true),
                                      render(plain(height, width), card(radius, shadow(0, 0))), 1));
        }
}

TEST(TransparentImageRenderer, ReplacesTheCanvasByTranslucentPixels) {
    for (const std::uint32_t alpha : {0U, 1U, 128U}) {
        const CGImage picture = noise(40, 30, alpha);
        const CGImage have = render(picture, card(6, {10, 0, 40, 1, RGBAColor()}));
        const auto margin = static_cast<CGFloat>((have.width() - 40) / 2);
        EXPECT_TRUE(picturesAgree(have.cropping({margin, margin + 6, 40, 18}).value(),
                                  picture.cropping({0, 6, 40, 18}).value()))
            << alpha;
    }
}

TEST(TransparentImageRenderer, ConvertsOtherColorSpaces) {
    const cmsCIExyY white{0.3127, 0.3290, 1};
    const cmsCIExyYTRIPLE primaries{{0.64, 0.33, 1}, {0.30, 0.60, 1}, {0.15, 0.06, 1}};
    cmsToneCurve* const linear = cmsBuildGamma(nullptr, 1);
    cmsToneCurve* const curves[]{linear, linear, linear};
    const cmsHPROFILE profile = cmsCreateRGBProfile(&white, &primaries, curves);
    cmsUInt32Number size = 0;
    cmsSaveProfileToMem(profile, nullptr, &size);
    std::vector<std::byte> bytes(size);
    cmsSaveProfileToMem(profile, bytes.data(), &size);
    cmsCloseProfile(profile);
    cmsFreeToneCurve(linear);

    // The primaries are those of sRGB and only the curve differs: 1.055 × (64 / 255)^(1 / 2.4) −
    // 0.055 is 137 / 255, and likewise 188 for 128.
    const CGImage picture = pictureOf(
        30, 20, [](auto, auto) { return kernels::pixelOf(64, 128, 255, 255); },
        CGColorSpace::fromICCProfile(bytes).value());
    const CGImage have = render(picture, card(4, ShadowStyle::none));
    EXPECT_EQ(have.colorSpace(), CGColorSpace::sRGB());
    EXPECT_LE(levelsBetween(PictureProbe(have).pixel(15, 10), kernels::pixelOf(137, 188, 255, 255)),
              1);
    EXPECT_EQ(PictureProbe(have).pixel(0, 0), 0U);
    EXPECT_TRUE(render(picture, ScreenshotStyle::unmodified).isSameImage(picture));
}

TEST(TransparentImageRenderer, WithoutVisibleShadowOnlyRoundsTheCorners) {
    const CGImage picture = noise(50, 40);
    const CGImage plain = render(picture, card(8, ShadowStyle::none));
    EXPECT_EQ(plain.width(), 50);
    EXPECT_EQ(plain.height(), 40);
    EXPECT_NEAR(PictureProbe(plain).coverage(), 50 * 40 - (4 - std::acos(-1.0)) * 64, 0.1);
    EXPECT_TRUE(picturesAgree(render(picture, card(0, ShadowStyle::none)), picture));

    const auto with = [](auto change) {
        ShadowStyle shadow{4, 3, 5, 1, RGBAColor()};
        change(shadow);
        return card(8, shadow);
    };
    struct Case {
        const char* name;
        ScreenshotStyle style;
    };
    for (const Case& c : {
             Case{"NaN opacity", with([](ShadowStyle& s) { s.opacity = nan; })},
             Case{"negative opacity", with([](ShadowStyle& s) { s.opacity = -1; })},
             Case{"negative blur", with([](ShadowStyle& s) { s.blur = -1; })},
             Case{"huge blur that does not show", with([](ShadowStyle& s) {
                      s.blur = infinity;
                      s.opacity = 0;
                  })},
             Case{"no blur, infinite offset", with([](ShadowStyle& s) {
                      s.blur = 0;
                      s.offsetX = -infinity;
                  })},
             Case{"no blur, huge offset", with([](ShadowStyle& s) {
                      s.blur = 0;
                      s.offsetY = 1e300;
                  })},
         })
        EXPECT_TRUE(picturesAgree(render(picture, c.style), plain)) << c.name;

    // The margin is a matter of the shadow's size, not of its colour.
    for (const CGFloat alpha : {0.0, -1.0, nan}) {
        const CGImage have = render(picture, with([=](ShadowStyle& s) { s.color.alpha = alpha; }));
        EXPECT_EQ(PictureProbe(have).coverage(), PictureProbe(plain).coverage()) << alpha;
        EXPECT_GT(have.width(), 50) << alpha;
    }
}

TEST(TransparentImageRenderer, DefinesWhatIsNoNumber) {
    const CGImage picture = noise(30, 20);
    struct Case {
        const char* name;
        ScreenshotStyle have, want;
    };
    const RGBAColor color{0.5, 0, 0, 1};
    RGBAColor withNaN = color, tooLarge = color;
    withNaN.green = nan;
    tooLarge.green = -3;
    ShadowStyle nanBlur{0, 3, 3, 1, color}, overOpaque{5, 3, 3, 1, color};
    nanBlur.blur = nan;
    overOpaque.color.alpha = 7;
    ScreenshotStyle nanRadius = card(0, {5, 3, 3, 1, color});
    nanRadius.cornerRadius = nan;
    for (const Case& c : {
             Case{"NaN blur", card(4, nanBlur), card(4, {0, 3, 3, 1, color})},
             Case{"NaN offset across", card(4, {5, nan, 3, 1, color}),
                  card(4, {5, 0, 3, 1, color})},
             Case{"NaN offset down", card(4, {5, 3, nan, 1, color}), card(4, {5, 3, 0, 1, color})},
             Case{"NaN colour", card(4, {5, 3, 3, 1, withNaN}), card(4, {5, 3, 3, 1, color})},
             Case{"colour below 0", card(4, {5, 3, 3, 1, tooLarge}), card(4, {5, 3, 3, 1, color})},
             Case{"NaN radius", nanRadius, card(0, {5, 3, 3, 1, color})},
             Case{"infinite radius", card(infinity, {5, 3, 3, 1, color}),
                  card(10, {5, 3, 3, 1, color})},
         })
        EXPECT_TRUE(picturesAgree(render(picture, c.have), render(picture, c.want))) << c.name;
}

TEST(TransparentImageRenderer, ReportsWhatHasNoCanvas) {
    using enum TransparentImageRendererError;
    const CGImage picture = noise(8, 8);
    struct Case {
        const char* name;
        CGImage image;
        ShadowStyle shadow;
    };
    for (const Case& c : {
             Case{"empty image", CGImage(), ShadowStyle::presentationCard},
             Case{"infinite blur", picture, {infinity, 0, 0, 1, RGBAColor()}},
             Case{"infinite offset", picture, {1, -infinity, 0, 1, RGBAColor()}},
             Case{"offset beyond whole numbers", picture, {1, 0, 1e300, 1, RGBAColor()}},
             Case{"blur beyond the largest side", picture, {1e7, 0, 0, 1, RGBAColor()}},
             Case{"canvas beyond memory", picture, {1e6, 0, 0, 1, RGBAColor()}},
         })
        EXPECT_EQ(TransparentImageRenderer().render(c.image, card(4, c.shadow)),
                  std::unexpected(cannotCreateContext))
            << c.name;
    EXPECT_EQ(TransparentImageRenderer().pngData(CGImage()), std::unexpected(cannotEncodePNG));
}

TEST(TransparentImageRenderer, IsTheImageItselfWithoutCardEffect) {
    const CGImage picture = noise(8, 8);
    ScreenshotStyle style = ScreenshotStyle::presentationCard;
    style.cardEffect = ScreenshotCardEffect::none;
    EXPECT_TRUE(render(picture, style).isSameImage(picture));
    EXPECT_TRUE(render(CGImage(), style).isSameImage(CGImage()));
}

TEST(TransparentImageRenderer, PNGHoldsTheSamePixels) {
    const CGImage have = render(noise(60, 40), ScreenshotStyle::presentationCard);
    const auto bytes = TransparentImageRenderer().pngData(have).value();
    EXPECT_TRUE(picturesAgree(decodedByLibPNG(bytes).value(), have));
}

}  // namespace
}  // namespace pictal
