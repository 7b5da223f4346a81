#include "PictalCore/Platform/Graphics/Pixels/ColorProfile.h"
#include "PictalCore/Platform/ImageIO/PNG.h"
#include "Tests/Support/LibPNGDecoder.h"
#include "Tests/Support/PictureProbe.h"
#include "Tests/Support/SampleScreenshot.h"

namespace pictal {
namespace {

/// Writes a picture in each compression and reads it back, by ours and by libpng alone.
void expectComesBack(const CGImage& image, const std::string& what) {
    for (const auto compression : allCases<PNG::Compression>()) {
        const auto name = what + ", " + std::string(rawValue(compression));
        const auto bytes = PNG::write(image, compression);
        ASSERT_TRUE(bytes) << name;
        const auto ours = PNG::read(*bytes);
        ASSERT_TRUE(ours) << name << ": " << ours.error().description();
        EXPECT_TRUE(picturesAgree(*ours, image)) << name;
        EXPECT_EQ(ours->colorSpace(), image.colorSpace()) << name;
        const auto theirs = decodedByLibPNG(*bytes);
        ASSERT_TRUE(theirs) << name;
        EXPECT_TRUE(picturesAgree(*theirs, image)) << name << ", by libpng";
    }
}

TEST(PNGWrite, TranslucentPixelsComeBackAsTheSameBytes) {
    // Every pair of an alpha and a component that it can have.
    const auto pixelAt = [](std::uint32_t x, std::uint32_t alpha) {
        const std::uint32_t c = std::min(x, alpha);
        return kernels::pixelOf(c, alpha - c, c / 2, alpha);
    };
    expectComesBack(pictureOf(256, 256, pixelAt), "every pair");
}

TEST(PNGWrite, RealPicturesComeBack) {
    expectComesBack(*sampleScreenshot().cropping({400, 150, 301, 257}), "text and photograph");
    for (int side = 1; side < 36; ++side)
        expectComesBack(*sampleScreenshot().cropping(CGRect(600, 400, side, 36 - side)),
                        "width " + std::to_string(side));
}

TEST(PNGWrite, FewColoursBecomeAPalette) {
    using enum PNG::ColorType;
    const std::tuple<std::uint32_t, PNG::ColorType, int> table[] = {
        {1, palette, 1},  {2, palette, 1},  {3, palette, 2},   {4, palette, 2}, {5, palette, 4},
        {16, palette, 4}, {17, palette, 8}, {256, palette, 8}, {257, rgba, 8}};
    for (const auto& [count, colorType, bitDepth] : table)
        for (std::uint32_t width = 1; width < 20; width += 3) {
            const auto name = std::to_string(count) + " colours, width " + std::to_string(width);
            // Every second colour is translucent; the words differ in red or in alpha.
            const auto colorAt = [&, colors = count](std::uint32_t x, std::uint32_t y) {
                const std::uint32_t i = (y * width + x) % colors;
                return kernels::pixelOf(i % 129, 0, 0, i % 2 == 0 ? 255 : 128 + i / 129);
            };
            const CGImage image = pictureOf(width, count / width + 18, colorAt);
            expectComesBack(image, name);
            const auto info = PNG::readInfo(*PNG::write(image));
            EXPECT_EQ(info->colorType, colorType) << name;
            EXPECT_EQ(info->bitDepth, bitDepth) << name;
            EXPECT_EQ(info->hasAlpha, count > 1) << name;
            EXPECT_EQ(info->colorSpace, "sRGB") << name;
        }
}

/// The photograph in the sample, as grey.
CGImage greyPhotograph(const CGColorSpace& space = CGColorSpace::sRGB()) {
    return pictureOf(
        300, 200,
        [](std::uint32_t x, std::uint32_t y) {
            return (sampleScreenshot().row(y + 300)[x + 600] & 255) * 0x010101 | 0xFF000000;
        },
        space);
}

TEST(PNGWrite, GreyPhotographsAreFilteredAndDrawnGreyIsAPalette) {
    using enum PNG::ColorType;
    const auto typeOf = [](const CGImage& image) {
        return PNG::readInfo(*PNG::write(image))->colorType;
    };
    const CGImage photograph = greyPhotograph();
    expectComesBack(photograph, "grey photograph");
    EXPECT_EQ(typeOf(photograph), grey);
    expectComesBack(greyPhotograph(CGColorSpace::deviceRGB()), "untagged");
    // A grey file cannot carry a profile of RGB.
    const auto profile =
        CGColorSpace::fromICCProfile(*detail::makeRGBProfile({}, detail::ToneCurve::power(1)));
    EXPECT_EQ(typeOf(greyPhotograph(*profile)), palette);
    // Text on paper, with a grey for every degree of an edge.
    const CGImage text = pictureOf(300, 100, [](std::uint32_t x, std::uint32_t y) {
        return (sampleScreenshot().row(y + 150)[x + 512] & 255) * 0x010101 | 0xFF000000;
    });
    expectComesBack(text, "grey text");
    EXPECT_EQ(typeOf(text), palette);
    EXPECT_EQ(typeOf(pictureOf(64, 64,
                               [](std::uint32_t x, std::uint32_t y) {
                                   return 0xFF000000 | (x * 4 ^ y * 3) % 200 * 0x010101 |
                                          (x + y == 0 ? 1 : 0);
                               })),
              palette)
        << "one pixel is not grey";
}

TEST(PNGWrite, ASmallerFileTakesMoreWork) {
    const CGImage image = *sampleScreenshot().cropping({{0, 0}, {1000, 600}});
    const auto size = [&](PNG::Compression compression) {
        return PNG::write(image, compression)->size();
    };
    EXPECT_LT(size(PNG::Compression::small), size(PNG::Compression::standard));
    EXPECT_LT(size(PNG::Compression::standard), size(PNG::Compression::fast));
    EXPECT_EQ(PNG::write(CGImage()).error(), PNG::WriteError::emptyImage);
}

}  // namespace
}  // namespace pictal
