#include "PictalCore/Platform/ImageIO/PNG.h"
#include "Tests/Support/PNGBuilder.h"

#include <gtest/gtest.h>

namespace pictal {
namespace {

using Bytes = PNGBuilder::Bytes;
using Words = std::vector<std::uint32_t>;

Words pixelsOf(const CGImage& image) {
    Words pixels;
    for (std::int64_t y = 0; y < image.height(); ++y)
        pixels.insert(pixels.end(), image.row(y).begin(), image.row(y).end());
    return pixels;
}

/// Reads one row, unfiltered; its pixels are words: alpha, blue, green, red.
void expectPixels(const char* name, int colorType, int bitDepth, std::uint32_t width,
                  const Bytes& palette, const Bytes& transparency, const Bytes& row,
                  const Words& pixels) {
    PNGBuilder file(width, 1, colorType, bitDepth);
    if (!palette.empty()) file.chunk("PLTE", palette);
    if (!transparency.empty()) file.chunk("tRNS", transparency);
    Bytes filtered{0};
    PNGBuilder::append(filtered, row);
    const auto image = PNG::read(file.rows(filtered).build());
    ASSERT_TRUE(image) << name << ": " << image.error().description();
    EXPECT_EQ(pixelsOf(*image), pixels) << name;
    EXPECT_TRUE(image->colorSpace().isDeviceRGB()) << name;
}

TEST(PNGRead, EveryKindBecomesPremultipliedPixelsRoundedOnce) {
    const auto check = expectPixels;
    check("grey 1", 0, 1, 3, {}, {}, {0b1010'0000}, {0xFFFFFFFF, 0xFF000000, 0xFFFFFFFF});
    check("grey 2", 0, 2, 4, {}, {}, {0b0001'1011},
          {0xFF000000, 0xFF555555, 0xFFAAAAAA, 0xFFFFFFFF});
    check("grey 2 with a key of more bits", 0, 2, 2, {}, {0xAB, 0xCE}, {0b1011'0000},
          {0, 0xFFFFFFFF});
    check("grey 4", 0, 4, 3, {}, {}, {0x1F, 0x80}, {0xFF111111, 0xFFFFFFFF, 0xFF888888});
    check("grey 8 with a key", 0, 8, 2, {}, {0, 7}, {7, 8}, {0, 0xFF080808});
    // 384 / 257 = 1.494, 386 / 257 = 1.502
    check("grey 16", 0, 16, 2, {}, {}, {0x01, 0x80, 0x01, 0x82}, {0xFF010101, 0xFF020202});
    check("grey 16 with a key", 0, 16, 2, {}, {0x12, 0x34}, {0x12, 0x34, 0x12, 0x35},
          {0, 0xFF121212});
    check("rgb 8", 2, 8, 2, {}, {}, {1, 2, 3, 250, 251, 252}, {0xFF030201, 0xFFFCFBFA});
    check("rgb 8 with a key", 2, 8, 2, {}, {0, 1, 0, 2, 0, 3}, {1, 2, 3, 1, 2, 4}, {0, 0xFF040201});
    check("rgb 8 with a key of more bits", 2, 8, 2, {}, {9, 1, 0, 2, 8, 3}, {1, 2, 3, 1, 2, 4},
          {0, 0xFF040201});
    check("rgb 16", 2, 16, 1, {}, {}, {0x01, 0x80, 0x01, 0x82, 0xFF, 0xFF}, {0xFFFF0201});
    check("palette 1", 3, 1, 2, {9, 8, 7, 1, 2, 3}, {}, {0b0100'0000}, {0xFF070809, 0xFF030201});
    check("palette 4, translucent", 3, 4, 2, {255, 100, 0, 1, 2, 3}, {128}, {0x01},
          {0x80003280, 0xFF030201});
    check("palette 2, beyond its end", 3, 2, 2, {9, 8, 7}, {}, {0b0011'0000},
          {0xFF070809, 0xFF000000});
    // 200 × 100 / 255 = 78.43, 7 × 100 / 255 = 2.745
    check("grey alpha 8", 4, 8, 2, {}, {}, {200, 100, 7, 100}, {0x644E4E4E, 0x64030303});
    // 0x8000 is 127.502 of 255
    check("grey alpha 16", 4, 16, 1, {}, {}, {0xFF, 0xFF, 0x80, 0x00}, {0x80808080});
    check("rgba 8", 6, 8, 2, {}, {}, {200, 7, 255, 100, 9, 9, 9, 0}, {0x6464034E, 0});
    // Red 1.502 × 0.25 = 0.38 is 0; rounded twice it would be 2 × 64 / 255 = 0.502, so 1.
    check("rgba 16", 6, 16, 1, {}, {}, {0x01, 0x82, 0x80, 0x00, 0xFF, 0xFF, 0x40, 0x00},
          {0x40402000});
}

/// Which pass of an interlaced file holds a pixel, from the standard's figure.
constexpr std::string_view passes[8] = {"16462646", "77777777", "56565656", "77777777",
                                        "36463646", "77777777", "56565656", "77777777"};

TEST(PNGRead, InterlacedPicturesOfEverySmallSize) {
    for (std::uint32_t width = 1; width <= 10; ++width)
        for (std::uint32_t height = 1; height <= 10; ++height) {
            Bytes filtered;
            Words expected;
            for (int pass = 1; pass <= 7; ++pass)
                for (std::uint32_t y = 0; y < height; ++y) {
                    Bytes row{0};
                    for (std::uint32_t x = 0; x < width; ++x)
                        if (passes[y % 8][x % 8] == '0' + pass)
                            row.push_back(static_cast<std::uint8_t>(y * width + x));
                    if (row.size() > 1) PNGBuilder::append(filtered, row);
                }
            for (std::uint32_t i = 0; i < width * height; ++i)
                expected.push_back(0xFF000000 | i * 0x010101);
            const auto image = PNG::read(PNGBuilder(width, height, 0, 8, 1).rows(filtered).build());
            ASSERT_TRUE(image) << width << " × " << height << image.error().description();
            EXPECT_EQ(pixelsOf(*image), expected) << width << " × " << height;
        }
}

TEST(PNGRead, ReadsInfoWithoutPixels) {
    const auto bytes = PNGBuilder(70'000, 3, 3, 4, 1)
                           .chunk("gAMA", PNGBuilder::numbers({55'000}))
                           .chunk("PLTE", {1, 2, 3})
                           .chunk("tRNS", {7})
                           .chunk("IDAT", {1, 2, 3})
                           .build();
    // Behind the chunk's name are 3 bytes, its checksum, and 12 of the end.
    const std::size_t enough = bytes.size() - 19;
    for (std::size_t size = 1; size < enough; ++size)
        EXPECT_EQ(PNG::readInfo(std::span(bytes).first(size)).error().kind(),
                  PNG::ReadError::Kind::truncated)
            << size;
    const auto info = PNG::readInfo(std::span(bytes).first(enough));
    ASSERT_TRUE(info) << info.error().description();
    EXPECT_EQ(std::tie(info->width, info->height, info->bitDepth), std::tuple(70'000, 3, 4));
    EXPECT_EQ(info->colorType, PNG::ColorType::palette);
    EXPECT_TRUE(info->interlaced && info->hasAlpha);
    EXPECT_EQ(info->colorSpace, "gamma 0.5500");
}

}  // namespace
}  // namespace pictal
