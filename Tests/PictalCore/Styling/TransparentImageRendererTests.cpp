#include "PictalCore/Platform/Graphics/Pixels/ColorProfile.h"
#include "PictalCore/Styling/TransparentImageRenderer.h"
#include "Tests/Support/LibPNGDecoder.h"
#include "Tests/Support/PictureProbe.h"
#include "Tests/Support/Reference/CardReference.h"

#include <array>
#include <cmath>
#include <numbers>
#include <random>

namespace pictal {
namespace {

constexpr CGFloat infinity = HUGE_VAL;
constexpr RGBAColor black;

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

void expectTrueGaussian(const char* name, std::int64_t width, std::int64_t height, CGFloat radius,
                        const ShadowStyle& shadow) {
    const CGImage picture = noise(width, height), have = render(picture, card(radius, shadow));
    const std::int64_t padding = (have.width() - width) / 2;
    ASSERT_EQ(have.height(), height + 2 * padding) << name;
    const CardReference want(width, height, padding, card(radius, shadow));
    const PictureProbe probe(have), source(picture);
    const double tints[]{shadow.color.red, shadow.color.green, shadow.color.blue, 1};
    double most = 0;
    std::string where;
    for (std::int64_t y = 0; y < have.height(); ++y)
        for (std::int64_t x = 0; x < have.width(); ++x) {
            const double shade = 255 * want.shadow(x, y), covered = want.outline(x, y);
            const std::uint32_t own = covered > 0 ? source.pixel(x - padding, y - padding) : 0;
            for (int i = 0; i < 4; ++i) {
                const double expected = shade * tints[i] + covered * ((own >> 8 * i) & 255);
                const double error = std::abs(((probe.pixel(x, y) >> 8 * i) & 255) - expected);
                if (error <= most) continue;
                most = error;
                where = std::to_string(x) + ", " + std::to_string(y) + " have " +
                        pixelText(probe.pixel(x, y)) + ", want " + std::to_string(expected);
            }
        }
    // Half a level is rounding; the rest is what a blur in cells misses along small arcs.
    EXPECT_LE(most, 0.7) << name << ": " << where;
}

TEST(TransparentImageRenderer, AgreesWithTheTrueGaussianToALevel) {
    constexpr RGBAColor tint{0.9, 0.4, 0.1, 0.8};
    const auto check = expectTrueGaussian;
    check("presentation", 80, 60, 22, ShadowStyle::presentationCard);
    check("square corners", 40, 30, 0, {12, 0, 6, 1, black});
    check("round corners", 60, 44, 9.5, {10, 0, 5, 1, black});
    check("tall pill", 20, 51, 10, {9, 0, 4, 1, black});
    check("circle of an odd side", 31, 31, infinity, {11, 0, 3, 1, black});
    check("small circle", 9, 9, 100, {9, 5, 2.5, 0.9, tint});
    check("narrower than the blur", 7, 60, 2, {30, 0, 4, 1, black});
    check("pill under a wide blur", 70, 41, 1000, {60, 0, 8, 1, black});
    check("smaller than the blur", 5, 4, 2, {24, 0, 3, 1, black});
    check("one pixel", 1, 1, 5, {8, 0, 2, 1, black});
    check("one column", 1, 40, 5, {8, 0, 2, 1, black});
    check("one row", 40, 1, 0, {8, 0, 2, 1, black});
    check("offset sideways", 40, 30, 8, {10, 7, 3, 1, black});
    check("offset up to the left", 40, 30, 8, {10, -6.5, -8.25, 1, black});
    check("offset beyond the picture", 20, 16, 6, {6, 40, 30, 1, black});
    check("colour", 40, 30, 8, {10, 2, 5, 0.7, tint});
    check("no blur, cut off at the edge", 60, 44, 14, {0, 6, 10, 1, black});
    check("no blur, fractional offset", 60, 44, 14.3, {0, -5.3, 7.7, 1, tint});
    check("hair of a blur", 36, 30, 12, {0.4, 9, 4, 1, black});
    check("two pixels of blur", 30, 30, 15, {2, 3, 7, 1, black});
    check("four pixels of blur", 34, 32, 15, {4, 0, 8, 1, black});
}

TEST(TransparentImageRenderer, PlacesThePictureUntouched) {
    const CGImage picture = noise(400, 300);
    const CGImage have = render(picture, ScreenshotStyle::presentationCard);
    EXPECT_EQ(have.colorSpace(), CGColorSpace::sRGB());
    EXPECT_FALSE(have.isOpaque());
    ASSERT_TRUE(have.width() == 586 && have.height() == 486);
    for (const CGRect& part : {CGRect(0, 22, 400, 256), CGRect(22, 0, 356, 300)})
        EXPECT_TRUE(picturesAgree(*have.cropping(part.offsetBy(93, 93)), *picture.cropping(part)));
    // Between the picture and its shadow lies the ring, with nothing in it.
    for (const CGRect& ring : {CGRect(115, 91, 356, 2), CGRect(115, 393, 356, 2)})
        EXPECT_EQ(PictureProbe(*have.cropping(ring)).coverage(), 0);
    EXPECT_TRUE(picturesAgree(*decodedByLibPNG(*TransparentImageRenderer().pngData(have)), have));
}

TEST(TransparentImageRenderer, ReplacesTheCanvasByTranslucentPixels) {
    for (const std::uint32_t alpha : {0U, 1U, 128U}) {
        const CGImage picture = noise(40, 30, alpha);
        const CGImage have = render(picture, card(6, {10, 0, 40, 1, black}));
        const auto margin = static_cast<CGFloat>((have.width() - 40) / 2);
        EXPECT_TRUE(picturesAgree(*have.cropping({margin, margin + 6, 40, 18}),
                                  *picture.cropping({0, 6, 40, 18})))
            << alpha;
    }
}

TEST(TransparentImageRenderer, ConvertsOtherColorSpaces) {
    // The primaries are those of sRGB and only the curve differs: 1.055 × (64 / 255)^(1 / 2.4) −
    // 0.055 is 137 / 255, and likewise 188 for 128.
    const auto linear =
        CGColorSpace::fromICCProfile(*detail::makeRGBProfile({}, detail::ToneCurve::power(1)))
            .value();
    const CGImage picture =
        pictureOf(30, 20, [](auto, auto) { return kernels::pixelOf(64, 128, 255, 255); }, linear);
    const CGImage have = render(picture, card(4, ShadowStyle::none));
    EXPECT_EQ(have.colorSpace(), CGColorSpace::sRGB());
    EXPECT_LE(levelsBetween(have.row(10)[15], kernels::pixelOf(137, 188, 255, 255)), 1);
    EXPECT_EQ(have.row(0)[0], 0U);
    EXPECT_TRUE(render(picture, ScreenshotStyle::unmodified).isSameImage(picture));
}

TEST(TransparentImageRenderer, IsTheImageItselfWithoutCardEffect) {
    const CGImage picture = noise(8, 8);
    ScreenshotStyle style = ScreenshotStyle::presentationCard;
    style.cardEffect = ScreenshotCardEffect::none;
    EXPECT_TRUE(render(picture, style).isSameImage(picture));
    EXPECT_TRUE(render(CGImage(), style).isSameImage(CGImage()));
}

/// A card whose style is changed past its clamping.
CGImage changed(const CGImage& picture, ScreenshotStyle style, auto change) {
    change(style, style.shadow);
    return render(picture, style);
}

TEST(TransparentImageRenderer, WithoutVisibleShadowOnlyRoundsTheCorners) {
    const CGImage picture = noise(50, 40), plain = render(picture, card(8, ShadowStyle::none));
    const ScreenshotStyle style = card(8, {4, 3, 5, 1, black});
    EXPECT_NEAR(PictureProbe(plain).coverage(), 50 * 40 - (4 - std::numbers::pi) * 64, 0.1);
    EXPECT_TRUE(picturesAgree(render(picture, card(0, ShadowStyle::none)), picture));
    const auto check = [&](const char* name, auto change) {
        EXPECT_TRUE(picturesAgree(changed(picture, style, change), plain)) << name;
    };
    check("NaN opacity", [](auto&, auto& s) { s.opacity = NAN; });
    check("negative opacity", [](auto&, auto& s) { s.opacity = -1; });
    check("negative blur", [](auto&, auto& s) { s.blur = -1; });
    check("huge blur that does not show", [](auto&, auto& s) { s.blur = infinity, s.opacity = 0; });
    check("no blur, infinite offset", [](auto&, auto& s) { s.blur = 0, s.offsetX = -infinity; });
    check("no blur, huge offset", [](auto&, auto& s) { s.blur = 0, s.offsetY = 1e300; });
    // The margin is a matter of the shadow's size, not of its colour.
    for (const CGFloat alpha : {0.0, -1.0, std::nan("")}) {
        const CGImage have =
            changed(picture, style, [=](auto&, auto& s) { s.color.alpha = alpha; });
        EXPECT_EQ(PictureProbe(have).coverage(), PictureProbe(plain).coverage()) << alpha;
        EXPECT_GT(have.width(), 50) << alpha;
    }
}

TEST(TransparentImageRenderer, DefinesWhatIsNoNumber) {
    const CGImage picture = noise(30, 20);
    constexpr RGBAColor color{0.5, 0, 0, 1};
    const ScreenshotStyle style = card(4, {5, 3, 3, 1, color});
    const auto same = [&](const char* name, const ScreenshotStyle& want, auto change) {
        EXPECT_TRUE(picturesAgree(changed(picture, style, change), render(picture, want))) << name;
    };
    same("NaN blur", card(4, {0, 3, 3, 1, color}), [](auto&, auto& s) { s.blur = NAN; });
    same("NaN across", card(4, {5, 0, 3, 1, color}), [](auto&, auto& s) { s.offsetX = NAN; });
    same("NaN down", card(4, {5, 3, 0, 1, color}), [](auto&, auto& s) { s.offsetY = NAN; });
    same("colour below 0", style, [](auto&, auto& s) { s.color.green = -3; });
    same("NaN radius", card(0, style.shadow), [](auto& s, auto&) { s.cornerRadius = NAN; });
    same("infinite radius", card(10, style.shadow),
         [](auto& s, auto&) { s.cornerRadius = infinity; });
}

TEST(TransparentImageRenderer, ReportsWhatHasNoCanvas) {
    using enum TransparentImageRendererError;
    const auto check = [](const char* name, const CGImage& image, const ShadowStyle& shadow) {
        EXPECT_EQ(TransparentImageRenderer().render(image, card(4, shadow)),
                  std::unexpected(cannotCreateContext))
            << name;
    };
    check("empty image", CGImage(), ShadowStyle::presentationCard);
    check("infinite blur", noise(8, 8), {infinity, 0, 0, 1, black});
    check("infinite offset", noise(8, 8), {1, -infinity, 0, 1, black});
    check("offset beyond whole numbers", noise(8, 8), {1, 0, 1e300, 1, black});
    check("blur beyond the largest side", noise(8, 8), {1e7, 0, 0, 1, black});
    check("canvas beyond memory", noise(8, 8), {1e6, 0, 0, 1, black});
    EXPECT_EQ(TransparentImageRenderer().pngData(CGImage()), std::unexpected(cannotEncodePNG));
}

}  // namespace
}  // namespace pictal
