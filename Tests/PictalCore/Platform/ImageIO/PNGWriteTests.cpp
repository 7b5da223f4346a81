#include "PictalCore/Platform/ImageIO/PNG.h"
#include "Tests/Support/LibPNGDecoder.h"
#include "Tests/Support/PictureProbe.h"
#include "Tests/Support/SampleScreenshot.h"

#include <gtest/gtest.h>

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
    expectComesBack(pictureOf(256, 256,
                              [](std::int64_t x, std::int64_t y) {
                                  const auto alpha = static_cast<std::uint32_t>(y);
                                  const auto c = std::min(static_cast<std::uint32_t>(x), alpha);
                                  return kernels::pixelOf(c, alpha - c, c / 2, alpha);
                              }),
                    "every pair");
}

TEST(PNGWrite, RealPicturesComeBack) {
    expectComesBack(*sampleScreenshot().cropping({{400, 150}, {301, 257}}), "text and photograph");
    for (std::int64_t side = 1; side < 36; ++side)
        expectComesBack(
            *sampleScreenshot().cropping(
                {{600, 400}, {static_cast<CGFloat>(side), 36 - static_cast<CGFloat>(side)}}),
            "width " + std::to_string(side));
}

TEST(PNGWrite, FewColoursBecomeAPalette) {
    const struct {
        std::uint32_t count;
        PNG::ColorType colorType;
        int bitDepth;
    } table[] = {
        {1, PNG::ColorType::palette, 1},  {2, PNG::ColorType::palette, 1},
        {3, PNG::ColorType::palette, 2},  {4, PNG::ColorType::palette, 2},
        {5, PNG::ColorType::palette, 4},  {16, PNG::ColorType::palette, 4},
        {17, PNG::ColorType::palette, 8}, {256, PNG::ColorType::palette, 8},
        {257, PNG::ColorType::rgba, 8},
    };
    for (const auto& row : table)
        for (std::int64_t width = 1; width < 20; width += 3) {
            const auto name =
                std::to_string(row.count) + " colours, width " + std::to_string(width);
            // Every second colour is translucent; the words differ in red or in alpha.
            const auto colorAt = [&](std::int64_t x, std::int64_t y) {
                const auto i = static_cast<std::uint32_t>(y * width + x) % row.count;
                return kernels::pixelOf(i % 129, 0, 0, i % 2 == 0 ? 255 : 128 + i / 129);
            };
            const auto height = static_cast<std::int64_t>(row.count) / width + 18;
            const CGImage image = pictureOf(width, height, colorAt);
            expectComesBack(image, name);
            const auto info = PNG::readInfo(*PNG::write(image));
            EXPECT_EQ(info->colorType, row.colorType) << name;
            EXPECT_EQ(info->bitDepth, row.bitDepth) << name;
            EXPECT_EQ(info->hasAlpha, row.count > 1) << name;
            EXPECT_EQ(info->colorSpace, "sRGB") << name;
        }
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
