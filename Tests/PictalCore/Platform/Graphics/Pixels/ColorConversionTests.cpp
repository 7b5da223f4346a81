#include "PictalCore/Platform/Graphics/BitmapContext.h"
#include "PictalCore/Platform/Graphics/Pixels/ColorConversion.h"
#include "PictalCore/Platform/Graphics/Pixels/ColorProfile.h"
#include "Tests/Support/PictureProbe.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <utility>

namespace pictal {
namespace {

using namespace kernels;

/// A wide space: the primaries of P3 with the white and the curve of sRGB.
CGColorSpace wideSpace() {
    const auto profile = detail::makeRGBProfile(
        {.red = {0.680, 0.320}, .green = {0.265, 0.690}, .blue = {0.150, 0.060}});
    return CGColorSpace::fromICCProfile(profile.value()).value();
}

/// By the matrix from linear P3 to linear sRGB, both D65; the curve goes on below 0 and above 1.
std::array<double, 3> toSRGB(const std::array<double, 3>& wide) {
    constexpr double matrix[3][3] = {{1.2249402, -0.2249402, 0},
                                     {-0.0420570, 1.0420570, 0},
                                     {-0.0196376, -0.0786361, 1.0982736}};
    std::array<double, 3> result{};
    for (std::size_t row = 0; row < 3; ++row) {
        double light = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            const double c = wide[i];
            light +=
                matrix[row][i] * (c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4));
        }
        result[row] = light <= 0.0031308 ? light * 12.92 : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
    }
    return result;
}

TEST(ColorConversion, CarriesAWideSpaceToSRGB) {
    const auto conversion = detail::ColorConversion::make(wideSpace(), CGColorSpace::sRGB());
    ASSERT_TRUE(conversion);
    for (const std::uint32_t pixel :
         {pixelOf(0, 0, 0, 255), pixelOf(255, 255, 255, 255), pixelOf(128, 128, 128, 255),
          pixelOf(100, 150, 200, 255), pixelOf(255, 0, 0, 255), pixelOf(200, 220, 40, 255),
          pixelOf(30, 60, 20, 255)}) {
        std::uint32_t have = 0;
        conversion->convert({&pixel, 1}, {&have, 1});
        const std::array color{redOf(pixel) / 255.0, greenOf(pixel) / 255.0, blueOf(pixel) / 255.0};
        const auto want = toSRGB(color);
        const auto one =
            detail::ColorConversion::convert(color, wideSpace(), CGColorSpace::sRGB()).value();
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_NEAR(have >> 8 * i & 255, 255 * std::clamp(want[i], 0.0, 1.0), 1.5)
                << pixelText(pixel) << i;
            EXPECT_NEAR(one[i], std::clamp(want[i], 0.0, 1.0), 1e-5) << pixelText(pixel) << i;
        }
        EXPECT_EQ(alphaOf(have), 255U);
    }
}

TEST(ColorConversion, IsRelativeToTheWhiteOfTheSpace) {
    // Under tungsten light, X = 1.0985 and Z = 0.3558, white is still white, and grey is grey.
    auto profile = detail::makeRGBProfile({.white = {0.4476, 0.4074}}).value();
    const auto word = [&](std::size_t at) {  // big-endian
        return std::to_integer<std::size_t>(profile[at + 2]) << 8 |
               std::to_integer<std::size_t>(profile[at + 3]);
    };
    std::size_t tag = 132;  // the first of twelve bytes each: name, offset, size
    while (std::memcmp(&profile[tag], "wtpt", 4) != 0)
        tag += 12;
    const std::size_t white = word(tag + 4) + 8;
    for (const auto& [at, value] : {std::pair(0, 71991), {4, 65536}, {8, 23318}})  // × 65536
        for (std::size_t i = 0; i < 4; ++i)
            profile[white + static_cast<std::size_t>(at) + i] =
                static_cast<std::byte>(value >> (24 - 8 * i) & 255);
    const auto warm = CGColorSpace::fromICCProfile(profile);
    const auto one =
        detail::ColorConversion::convert({1, 1, 1}, warm.value(), CGColorSpace::sRGB()).value();
    std::array pixels{pixelOf(255, 255, 255, 255), pixelOf(100, 100, 100, 255)};
    const auto before = pixels;
    detail::ColorConversion::make(*warm, CGColorSpace::sRGB())->convert(pixels, pixels);
    for (std::size_t i = 0; i < 2; ++i)
        EXPECT_LE(levelsBetween(pixels[i], before[i]), 1) << pixelText(pixels[i]);
    for (const double component : one)
        EXPECT_NEAR(component, 1, 1e-3);
}

TEST(ColorConversion, GoesToASpaceAndBack) {
    const CGColorSpace sRGB = CGColorSpace::sRGB();
    const std::uint32_t pixel = pixelOf(40, 180, 90, 255);
    std::uint32_t there = 0, back = 0;
    detail::ColorConversion::make(sRGB, wideSpace())->convert({&pixel, 1}, {&there, 1});
    detail::ColorConversion::make(wideSpace(), sRGB)->convert({&there, 1}, {&back, 1});
    EXPECT_GT(levelsBetween(there, pixel), 10);
    EXPECT_LE(levelsBetween(back, pixel), 2) << pixelText(back);
    const auto linear =
        CGColorSpace::fromICCProfile(*detail::makeRGBProfile({}, detail::ToneCurve::power(1.0)))
            .value();
    std::uint32_t wide = 0, straight = 0;
    detail::ColorConversion::make(linear, wideSpace())->convert({&pixel, 1}, {&wide, 1});
    detail::ColorConversion::make(wideSpace(), sRGB)->convert({&wide, 1}, {&back, 1});
    detail::ColorConversion::make(linear, sRGB)->convert({&pixel, 1}, {&straight, 1});
    EXPECT_LE(levelsBetween(back, straight), 2) << "by way of a third space";
    const detail::ColorComponents color{-0.25, 0.5, 2};
    EXPECT_EQ(detail::ColorConversion::convert(color, sRGB, CGColorSpace::deviceRGB()), color);
}

TEST(ColorConversion, CarriesOneColourOfAProfilePastSRGB) {
    // P3's primaries with a plain curve: in Display P3 each component is a colour of its own.
    const auto plain = CGColorSpace::fromICCProfile(
        detail::makeRGBProfile(detail::displayP3.chromaticities, detail::ToneCurve::power(1.8))
            .value());
    for (const detail::ColorComponents& color :
         {detail::ColorComponents{0, 1, 0}, {1, 0, 0.5}, {0.02, 0.9, 0.3}, {0.6, 0.6, 0.6}}) {
        const auto have =
            detail::ColorConversion::convert(color, *plain, CGColorSpace::displayP3()).value();
        for (std::size_t i = 0; i < 3; ++i) {
            const double light = std::pow(color[i], 1.8);
            const double want =
                light <= 0.0031308 ? 12.92 * light : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
            // Profiles have their primaries in 1/65536, and the curve is as steep as 12.92.
            EXPECT_NEAR(have[i], want, 3 * 12.92 / 131072) << color[0] << ", component " << i;
        }
    }
    EXPECT_FALSE(detail::ColorConversion::convert({}, CGColorSpace::sRGB(), *plain));
}

TEST(ColorConversion, TranslucentPixelsAreRightToALevelToo) {
    std::vector<std::uint32_t> pixels;
    for (std::uint32_t alpha = 1; alpha < 255; alpha += 3)
        for (std::uint32_t level = 0; level <= alpha; level += 1 + alpha / 7)
            pixels.push_back(pixelOf(level, alpha, alpha - level, alpha));
    std::vector<std::uint32_t> have(pixels.size());
    detail::ColorConversion::make(wideSpace(), CGColorSpace::sRGB())->convert(pixels, have);
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        const double alpha = alphaOf(pixels[i]);
        const auto want = toSRGB(
            {redOf(pixels[i]) / alpha, greenOf(pixels[i]) / alpha, blueOf(pixels[i]) / alpha});
        for (std::size_t c = 0; c < 3; ++c)
            EXPECT_NEAR(have[i] >> 8 * c & 255, alpha * std::clamp(want[c], 0.0, 1.0), 0.51)
                << pixelText(pixels[i]);
        EXPECT_EQ(alphaOf(have[i]), alpha);
    }
}

TEST(CGColorSpace, NamedSpacesAreReadBackAsThemselves) {
    for (const auto& space : {CGColorSpace::displayP3(), CGColorSpace::adobeRGB1998()})
        EXPECT_EQ(CGColorSpace::fromICCProfile(space.iccProfile()), space);
    EXPECT_FALSE(CGColorSpace::displayP3() == CGColorSpace::adobeRGB1998());
}

TEST(ColorConversion, LeavesTheSameNumbersAlone) {
    for (const auto& [from, to] : {std::pair(CGColorSpace::sRGB(), CGColorSpace::deviceRGB()),
                                   std::pair(CGColorSpace::deviceRGB(), CGColorSpace::sRGB()),
                                   std::pair(wideSpace(), wideSpace())})
        EXPECT_TRUE(detail::ColorConversion::make(from, to)->isIdentity());
    EXPECT_FALSE(wideSpace() == CGColorSpace::sRGB());
    EXPECT_FALSE(CGColorSpace::sRGB() == CGColorSpace::deviceRGB());
    const std::array<std::byte, 200> rubbish{};
    EXPECT_FALSE(CGColorSpace::fromICCProfile(rubbish));
    EXPECT_FALSE(CGColorSpace::fromICCProfile(
        detail::makeGreyProfile(detail::ToneCurve::power(2.2)).value()))
        << "grey is no space for pixels of three components";
}

TEST(ColorConversion, DrawingConvertsOnceAndKeepsAlpha) {
    // Longer than one piece of the conversion, and translucent in its second half.
    const CGImage image = pictureOf(
        2500, 2,
        [](auto x, auto) { return premultiplied(pixelOf(100, 150, 200, x < 1250 ? 255 : 128)); },
        wideSpace());
    auto context = BitmapContext::make(2500, 2, CGColorSpace::sRGB()).value();
    context.draw(image, CGRect(0, 0, 2500, 2));
    const PictureProbe probe(std::move(context).makeImage());
    const double red = 255 * toSRGB({100 / 255.0, 150 / 255.0, 200 / 255.0})[0];
    EXPECT_NEAR(probe.red(0, 0), red, 1.5);
    EXPECT_EQ(probe.pixel(1249, 1), probe.pixel(0, 0));
    EXPECT_EQ(probe.alpha(2499, 1), 128);
    EXPECT_NEAR(probe.red(2499, 1), red * 128 / 255, 1.5);
}

}  // namespace
}  // namespace pictal
