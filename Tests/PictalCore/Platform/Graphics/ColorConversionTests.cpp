#include "PictalCore/Platform/Graphics/BitmapContext.h"
#include "PictalCore/Platform/Graphics/detail/ColorConversion.h"
#include "PictalCore/Platform/Graphics/detail/ColorProfile.h"
#include "Tests/Support/PictureProbe.h"

#include <array>
#include <cmath>

#include <gtest/gtest.h>

namespace pictal {
namespace {

using kernels::pixelOf;

/// A wide space: the primaries of P3 with the white and the curve of sRGB.
CGColorSpace wideSpace() {
    const auto profile = detail::makeRGBProfile(
        {.red = {0.680, 0.320}, .green = {0.265, 0.690}, .blue = {0.150, 0.060}}, std::nullopt);
    return CGColorSpace::fromICCProfile(profile.value()).value();
}

double linear(double encoded) {
    return encoded <= 0.04045 ? encoded / 12.92 : std::pow((encoded + 0.055) / 1.055, 2.4);
}
double encoded(double light) {
    const double c = std::min(std::max(light, 0.0), 1.0);
    return c <= 0.0031308 ? c * 12.92 : 1.055 * std::pow(c, 1 / 2.4) - 0.055;
}

/// By the matrix from linear P3 to linear sRGB, both D65.
std::array<double, 3> toSRGB(const std::array<double, 3>& wide) {
    constexpr double matrix[3][3] = {{1.2249402, -0.2249402, 0},
                                     {-0.0420570, 1.0420570, 0},
                                     {-0.0196376, -0.0786361, 1.0982736}};
    std::array<double, 3> result{};
    for (int row = 0; row < 3; ++row) {
        double light = 0;
        for (int column = 0; column < 3; ++column)
            light += matrix[row][column] * linear(wide[static_cast<std::size_t>(column)] / 255);
        result[static_cast<std::size_t>(row)] = encoded(light) * 255;
    }
    return result;
}

TEST(ColorConversion, CarriesAWideSpaceToSRGB) {
    const auto conversion = detail::ColorConversion::make(wideSpace(), CGColorSpace::sRGB());
    ASSERT_TRUE(conversion);
    for (const std::array<double, 3>& color : {std::array<double, 3>{0, 0, 0},
                                               {255, 255, 255},
                                               {128, 128, 128},
                                               {100, 150, 200},
                                               {255, 0, 0},
                                               {200, 220, 40},
                                               {30, 60, 20}}) {
        const auto component = [&](std::size_t i) { return static_cast<std::uint32_t>(color[i]); };
        const std::array row{pixelOf(component(0), component(1), component(2), 255)};
        std::array<std::uint32_t, 1> out{};
        conversion->convert(row, out);
        const auto want = toSRGB(color);
        EXPECT_NEAR(kernels::redOf(out[0]), want[0], 1.5) << color[0] << " " << color[1];
        EXPECT_NEAR(kernels::greenOf(out[0]), want[1], 1.5) << color[0] << " " << color[1];
        EXPECT_NEAR(kernels::blueOf(out[0]), want[2], 1.5) << color[0] << " " << color[1];
        EXPECT_EQ(kernels::alphaOf(out[0]), 255U);
    }
}

TEST(ColorConversion, LeavesTheSameNumbersAlone) {
    for (const auto& [from, to] : {std::pair(CGColorSpace::sRGB(), CGColorSpace::deviceRGB()),
                                   std::pair(CGColorSpace::deviceRGB(), CGColorSpace::sRGB()),
                                   std::pair(wideSpace(), wideSpace())})
        EXPECT_TRUE(detail::ColorConversion::make(from, to)->isIdentity());
    EXPECT_EQ(wideSpace(), wideSpace());
    EXPECT_FALSE(wideSpace() == CGColorSpace::sRGB());
    EXPECT_FALSE(CGColorSpace::sRGB() == CGColorSpace::deviceRGB());
    const std::array<std::byte, 200> rubbish{};
    EXPECT_FALSE(CGColorSpace::fromICCProfile(rubbish));
    EXPECT_FALSE(CGColorSpace::fromICCProfile(detail::makeGreyProfile(2.2).value()))
        << "grey is no space for pixels of three components";
}

TEST(ColorConversion, DrawingConvertsOnceAndKeepsAlpha) {
    // Longer than one piece of the conversion, and translucent in its second half.
    const CGImage image = pictureOf(
        2500, 2,
        [](std::int64_t x, std::int64_t) {
            return kernels::premultiplied(pixelOf(100, 150, 200, x < 1250 ? 255 : 128));
        },
        wideSpace());
    auto context = BitmapContext::make(2500, 2, CGColorSpace::sRGB()).value();
    context.draw(image, CGRect(0, 0, 2500, 2));
    const PictureProbe probe(std::move(context).makeImage());
    const auto want = toSRGB({100, 150, 200});
    EXPECT_NEAR(probe.red(0, 0), want[0], 1.5);
    EXPECT_EQ(probe.pixel(1249, 1), probe.pixel(0, 0));
    EXPECT_EQ(probe.alpha(2499, 1), 128);
    EXPECT_NEAR(probe.red(2499, 1), want[0] * 128 / 255, 1.5);
}

}  // namespace
}  // namespace pictal
