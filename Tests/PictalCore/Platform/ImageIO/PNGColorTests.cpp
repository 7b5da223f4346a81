#include "PictalCore/Platform/Graphics/detail/ColorConversion.h"
#include "PictalCore/Platform/Graphics/detail/ColorProfile.h"
#include "PictalCore/Platform/ImageIO/PNG.h"
#include "Tests/Support/PNGBuilder.h"

#include <gtest/gtest.h>

namespace pictal {
namespace {

using Bytes = PNGBuilder::Bytes;

Bytes bytesOf(const std::vector<std::byte>& profile) {
    Bytes bytes;
    for (const std::byte byte : profile)
        bytes.push_back(std::to_integer<std::uint8_t>(byte));
    return bytes;
}

/// The contents of an iCCP chunk.
Bytes profileChunk(const Bytes& profile) {
    Bytes data{'x', 0, 0};
    const Bytes stream = PNGBuilder::compressed(profile);
    data.insert(data.end(), stream.begin(), stream.end());
    return data;
}

/// The first pixel of a file, converted to sRGB.
std::uint32_t firstPixelInSRGB(const CGImage& image) {
    std::uint32_t pixel = 0;
    detail::ColorConversion::make(image.colorSpace(), CGColorSpace::sRGB())
        ->convert(image.row(0).first(1), {&pixel, 1});
    return pixel;
}

const Bytes linearRGB = bytesOf(*detail::makeRGBProfile({}, 1.0));
const Bytes linearGrey = bytesOf(*detail::makeGreyProfile(1.0));
const Bytes sRGBColors =
    PNGBuilder::numbers({31270, 32900, 64000, 33000, 30000, 60000, 15000, 6000});
const Bytes displayP3Colors =
    PNGBuilder::numbers({31270, 32900, 68000, 32000, 26500, 69000, 15000, 6000});

enum class Space { device, standard, profile };

struct ColorRow {
    const char* name;
    int colorType;
    std::vector<std::pair<const char*, Bytes>> chunks;
    Bytes pixel;
    Space space;
    std::uint32_t inSRGB;
    const char* description;
};

TEST(PNGColor, ChunksSayWhatTheNumbersMean) {
    // Half of the light is 188 in sRGB: 1.055 × (128 / 255) ^ (1 / 2.4) − 0.055 = 0.7366.
    const Bytes half{128, 128, 128};
    const Bytes gammaOne = PNGBuilder::number(100'000);
    const ColorRow table[] = {
        {"nothing", 2, {}, half, Space::device, 0xFF808080, "untagged"},
        {"sRGB", 2, {{"sRGB", {0}}}, half, Space::standard, 0xFF808080, "sRGB"},
        {"gamma of sRGB",
         2,
         {{"gAMA", PNGBuilder::number(45'455)}},
         half,
         Space::standard,
         0xFF808080,
         "gamma 0.4545"},
        {"gamma and colours of sRGB",
         2,
         {{"gAMA", PNGBuilder::number(45'455)}, {"cHRM", sRGBColors}},
         half,
         Space::standard,
         0xFF808080,
         "gamma 0.4545, chromaticities"},
        {"gamma 1", 2, {{"gAMA", gammaOne}}, half, Space::profile, 0xFFBCBCBC, "gamma 1.0000"},
        {"gamma 0",
         2,
         {{"gAMA", PNGBuilder::number(0)}},
         half,
         Space::device,
         0xFF808080,
         "untagged"},
        // Display P3's (200, 100, 50) is sRGB's (215, 93, 31), by the matrices of its primaries.
        {"wide colours",
         2,
         {{"cHRM", displayP3Colors}},
         {200, 100, 50},
         Space::profile,
         0xFF1F5DD7,
         "chromaticities"},
        {"impossible colours",
         2,
         {{"cHRM", Bytes(32)}},
         half,
         Space::device,
         0xFF808080,
         "untagged"},
        {"a profile before sRGB",
         2,
         {{"iCCP", profileChunk(linearRGB)}, {"sRGB", {0}}},
         half,
         Space::profile,
         0xFFBCBCBC,
         "ICC profile RGB built-in"},
        {"sRGB before gamma",
         2,
         {{"gAMA", gammaOne}, {"sRGB", {0}}},
         half,
         Space::standard,
         0xFF808080,
         "sRGB"},
        {"a profile that is none",
         2,
         {{"iCCP", profileChunk({1, 2, 3})}},
         half,
         Space::device,
         0xFF808080,
         "untagged"},
        {"a profile that is not compressed",
         2,
         {{"iCCP", {'x', 0, 0, 1, 2}}},
         half,
         Space::device,
         0xFF808080,
         "untagged"},
        {"a profile of grey for colours",
         2,
         {{"iCCP", profileChunk(linearGrey)}},
         half,
         Space::device,
         0xFF808080,
         "untagged"},
        {"grey, nothing", 0, {}, {128}, Space::device, 0xFF808080, "untagged"},
        {"grey, sRGB", 0, {{"sRGB", {0}}}, {128}, Space::standard, 0xFF808080, "sRGB"},
        {"grey, gamma 1",
         0,
         {{"gAMA", gammaOne}},
         {128},
         Space::standard,
         0xFFBCBCBC,
         "gamma 1.0000"},
        {"grey, a profile",
         0,
         {{"iCCP", profileChunk(linearGrey)}},
         {128},
         Space::standard,
         0xFFBCBCBC,
         "ICC profile gray built-in"},
        {"grey, a profile of colours",
         0,
         {{"iCCP", profileChunk(linearRGB)}},
         {128},
         Space::device,
         0xFF808080,
         "untagged"},
        // 188 × 0.5 = 94.2 (0x80 / 255 = 0.502, 187.83 × 0.502 = 94.28)
        {"grey alpha, gamma 1",
         4,
         {{"gAMA", gammaOne}},
         {128, 128},
         Space::standard,
         0x805E5E5E,
         "gamma 1.0000"},
    };
    for (const ColorRow& row : table) {
        PNGBuilder file(1, 1, row.colorType, 8);
        for (const auto& [type, data] : row.chunks)
            file.chunk(type, data);
        Bytes filtered{0};
        filtered.insert(filtered.end(), row.pixel.begin(), row.pixel.end());
        const auto bytes = file.rows(filtered).build();
        const auto image = PNG::read(bytes);
        ASSERT_TRUE(image) << row.name << ": " << image.error().description();
        EXPECT_EQ(image->colorSpace().isDeviceRGB(), row.space == Space::device) << row.name;
        EXPECT_EQ(image->colorSpace().isSRGB(), row.space == Space::standard) << row.name;
        EXPECT_EQ(firstPixelInSRGB(*image), row.inSRGB) << row.name;
        EXPECT_EQ(PNG::readInfo(bytes)->colorSpace, row.description) << row.name;
    }
}

TEST(PNGColor, WideGreyGoesThroughItsProfileInSixteenBits) {
    // 0x8080 is 128 of 255 exactly; 188 again. Black and white stay.
    const auto image = PNG::read(PNGBuilder(3, 1, 0, 16)
                                     .chunk("gAMA", PNGBuilder::number(100'000))
                                     .rows({0, 0, 0, 0x80, 0x80, 0xFF, 0xFF})
                                     .build());
    ASSERT_TRUE(image);
    EXPECT_EQ(image->row(0)[0], 0xFF000000);
    EXPECT_EQ(image->row(0)[1], 0xFFBCBCBC);
    EXPECT_EQ(image->row(0)[2], 0xFFFFFFFF);
}

TEST(PNGColor, AProfileIsKeptByteForByte) {
    const auto image = PNG::read(PNGBuilder(1, 1, 6, 8)
                                     .chunk("iCCP", profileChunk(linearRGB))
                                     .rows({0, 1, 2, 3, 255})
                                     .build());
    ASSERT_TRUE(image);
    const auto kept = image->colorSpace().iccProfile();
    EXPECT_EQ(bytesOf({kept.begin(), kept.end()}), linearRGB);
    const auto again = PNG::read(*PNG::write(*image));
    EXPECT_EQ(again->colorSpace(), image->colorSpace());
    EXPECT_EQ(PNG::read(*PNG::write(*PNG::read(PNGBuilder(1, 1, 2, 8).rows({0, 1, 2, 3}).build())))
                  ->colorSpace(),
              CGColorSpace::deviceRGB());
}

}  // namespace
}  // namespace pictal
