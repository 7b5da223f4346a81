#include "PictalCore/Platform/Graphics/Pixels/ColorConversion.h"
#include "PictalCore/Platform/Graphics/Pixels/ColorProfile.h"
#include "PictalCore/Platform/ImageIO/PNG.h"
#include "Tests/Support/PNGBuilder.h"

#include <gtest/gtest.h>

namespace pictal {
namespace {

using Bytes = PNGBuilder::Bytes;
using Chunks = std::vector<std::pair<const char*, Bytes>>;

Bytes bytesOf(std::span<const std::byte> profile) {
    const auto* const first = reinterpret_cast<const std::uint8_t*>(profile.data());
    return {first, first + profile.size()};
}

Bytes profileChunk(const Bytes& profile) {
    Bytes data{'x', 0, 0};
    PNGBuilder::append(data, PNGBuilder::compressed(profile));
    return data;
}

const Bytes linearRGB = bytesOf(*detail::makeRGBProfile({}, detail::ToneCurve::power(1)));
const Bytes linearGrey = bytesOf(*detail::makeGreyProfile(detail::ToneCurve::power(1)));
const Bytes gammaOne = PNGBuilder::numbers({100'000});

enum class Space { device, standard, profile };

/// Reads a picture of one pixel behind some chunks: its space, the pixel in sRGB, and its space's
/// description.
void expectColor(const char* name, int colorType, const Chunks& chunks, const Bytes& pixel,
                 Space space, std::uint32_t inSRGB, const char* description) {
    PNGBuilder file(1, 1, colorType, 8);
    for (const auto& [type, data] : chunks)
        file.chunk(type, data);
    Bytes filtered{0};
    PNGBuilder::append(filtered, pixel);
    const auto bytes = file.rows(filtered).build();
    const auto image = PNG::read(bytes);
    ASSERT_TRUE(image) << name << ": " << image.error().description();
    EXPECT_EQ(image->colorSpace().isDeviceRGB(), space == Space::device) << name;
    EXPECT_EQ(image->colorSpace().isSRGB(), space == Space::standard) << name;
    std::uint32_t converted = 0;
    detail::ColorConversion::make(image->colorSpace(), CGColorSpace::sRGB())
        ->convert(image->row(0), {&converted, 1});
    EXPECT_EQ(converted, inSRGB) << name;
    EXPECT_EQ(PNG::readInfo(bytes)->colorSpace, description) << name;
}

TEST(PNGColor, ChunksSayWhatTheNumbersMean) {
    using enum Space;
    // Half of the light is 188 in sRGB: 1.055 × (128 / 255) ^ (1 / 2.4) − 0.055 = 0.7366.
    constexpr std::uint32_t same = 0xFF808080, lighter = 0xFFBCBCBC;
    const auto rgb = [](const char* name, const Chunks& chunks, Space space, std::uint32_t inSRGB,
                        const char* description) {
        expectColor(name, 2, chunks, {128, 128, 128}, space, inSRGB, description);
    };
    const auto grey = [](const char* name, const Chunks& chunks, Space space, std::uint32_t inSRGB,
                         const char* description) {
        expectColor(name, 0, chunks, {128}, space, inSRGB, description);
    };
    const Bytes usual = PNGBuilder::numbers({45'455}), none = PNGBuilder::numbers({0});
    const Bytes sRGBColors =
        PNGBuilder::numbers({31270, 32900, 64000, 33000, 30000, 60000, 15000, 6000});
    const Bytes displayP3Colors =
        PNGBuilder::numbers({31270, 32900, 68000, 32000, 26500, 69000, 15000, 6000});
    rgb("nothing", {}, device, same, "untagged");
    rgb("sRGB", {{"sRGB", {0}}}, standard, same, "sRGB");
    rgb("gamma of sRGB", {{"gAMA", usual}}, standard, same, "gamma 0.4545");
    rgb("gamma and colours of sRGB", {{"gAMA", usual}, {"cHRM", sRGBColors}}, standard, same,
        "gamma 0.4545, chromaticities");
    rgb("gamma 1", {{"gAMA", gammaOne}}, profile, lighter, "gamma 1.0000");
    rgb("gamma 0", {{"gAMA", none}}, device, same, "untagged");
    // A hundredth at least: below, the light would be a step at the brightest level.
    rgb("gamma 0.00999", {{"gAMA", PNGBuilder::numbers({999})}}, device, same, "untagged");
    rgb("gamma 0.01", {{"gAMA", PNGBuilder::numbers({1'000})}}, profile, 0xFF000000,
        "gamma 0.0100");
    // Display P3's (200, 100, 50) is sRGB's (215, 93, 31), by the matrices of its primaries.
    expectColor("wide colours", 2, {{"cHRM", displayP3Colors}}, {200, 100, 50}, profile, 0xFF1F5DD7,
                "chromaticities");
    rgb("impossible colours", {{"cHRM", Bytes(32)}}, device, same, "untagged");
    rgb("a profile before sRGB", {{"iCCP", profileChunk(linearRGB)}, {"sRGB", {0}}}, profile,
        lighter, "ICC profile RGB built-in");
    rgb("sRGB before gamma", {{"gAMA", gammaOne}, {"sRGB", {0}}}, standard, same, "sRGB");
    rgb("no profile", {{"iCCP", profileChunk({1, 2, 3})}}, device, same, "untagged");
    rgb("not compressed", {{"iCCP", {'x', 0, 0, 1, 2}}}, device, same, "untagged");
    rgb("grey's profile", {{"iCCP", profileChunk(linearGrey)}}, device, same, "untagged");
    grey("grey, nothing", {}, device, same, "untagged");
    grey("grey, sRGB", {{"sRGB", {0}}}, standard, same, "sRGB");
    grey("grey, gamma 1", {{"gAMA", gammaOne}}, standard, lighter, "gamma 1.0000");
    grey("grey, a profile", {{"iCCP", profileChunk(linearGrey)}}, standard, lighter,
         "ICC profile gray built-in");
    grey("colours' profile", {{"iCCP", profileChunk(linearRGB)}}, device, same, "untagged");
    // 188 × 0.5 = 94.2 (0x80 / 255 = 0.502, 187.83 × 0.502 = 94.28)
    expectColor("grey alpha, gamma 1", 4, {{"gAMA", gammaOne}}, {128, 128}, standard, 0x805E5E5E,
                "gamma 1.0000");
}

TEST(PNGColor, CodingPointsComeBeforeEverythingElse) {
    using enum Space;
    const Bytes half{128, 128, 128};
    const Chunks others{{"iCCP", profileChunk(linearRGB)}, {"sRGB", {0}}};
    const auto check = [&](const char* name, const Bytes& points, int colorType, const Bytes& pixel,
                           Space space, std::uint32_t inSRGB, const char* description) {
        Chunks chunks{{"cICP", points}};
        chunks.insert(chunks.end(), others.begin(), others.end());
        expectColor(name, colorType, chunks, pixel, space, inSRGB, description);
    };
    check("sRGB", {1, 13, 0, 1}, 2, half, standard, 0xFF808080, "cICP 1-13");
    check("Display P3", {12, 13, 0, 1}, 2, {200, 100, 50}, profile, 0xFF1F5DD7, "cICP 12-13");
    // By the matrices that CSS Color 4 publishes: 166.66, 115.64, 108.02.
    check("BT.2020's colours", {9, 13, 0, 1}, 2, {150, 120, 110}, profile, 0xFF6C74A7, "cICP 9-13");
    check("light itself", {1, 8, 0, 1}, 2, half, profile, 0xFFBCBCBC, "cICP 1-8");
    // ((0.50196 + 0.099) / 1.099) ^ (1 / 0.45) = 0.2615, which is 139.8 in sRGB.
    for (const std::uint8_t transfer : Bytes{1, 6, 14, 15})
        check("a camera's curve", {1, transfer, 0, 1}, 2, half, profile, 0xFF8C8C8C,
              ("cICP 1-" + std::to_string(transfer)).c_str());
    expectColor("grey of P3", 0, {{"cICP", {12, 13, 0, 1}}}, {128}, standard, 0xFF808080,
                "cICP 12-13");
    expectColor("grey light", 0, {{"cICP", {1, 8, 0, 1}}}, {128}, standard, 0xFFBCBCBC, "cICP 1-8");
}

TEST(PNGColor, SaysWhatCouldNotBeUsed) {
    const auto check = [](const Chunks& chunks, const char* want) {
        PNGBuilder file(1, 1, 2, 8);
        for (const auto& [type, data] : chunks)
            file.chunk(type, data);
        const auto bytes = file.rows({0, 128, 128, 128}).build();
        EXPECT_EQ(PNG::readInfo(bytes)->unusedColor, want);
        EXPECT_EQ(PNG::read(bytes)->row(0)[0], 0xFF808080) << want << ": the numbers stay";
    };
    check({}, "");
    check({{"cICP", {1, 13, 0, 1}}, {"iCCP", {'x'}}}, "");  // not even looked at
    check({{"iCCP", profileChunk({1, 2, 3})}}, "a damaged ICC profile");
    check({{"cICP", {9, 16, 0, 1}}}, "cICP with PQ");
    check({{"cICP", {9, 18, 0, 1}}, {"iCCP", {'x', 0}}}, "cICP with HLG, a damaged ICC profile");
    check({{"cICP", {2, 13, 0, 1}}}, "an unknown cICP");
    check({{"cICP", {1, 13, 1, 1}}}, "an unknown cICP");
    check({{"cICP", {1, 13, 0, 0}}}, "an unknown cICP");
    check({{"cICP", {1, 13, 0}}}, "a damaged cICP");
}

TEST(PNGColor, WhatStandsBehindThePixelsSaysNothing) {
    const auto late = PNGBuilder(1, 1, 2, 8).rows({0, 1, 2, 3}).chunk("gAMA", gammaOne).build();
    const auto image = PNG::read(late);
    ASSERT_TRUE(image) << image.error().description();
    EXPECT_TRUE(image->colorSpace().isDeviceRGB());
}

TEST(PNGColor, WideGreyGoesThroughItsProfileInSixteenBits) {
    // 0x8080 is 128 of 255 exactly; 188 again. Black and white stay.
    const Bytes row{0, 0, 0, 0x80, 0x80, 0xFF, 0xFF};
    const auto image = PNG::read(PNGBuilder(3, 1, 0, 16).chunk("gAMA", gammaOne).rows(row).build());
    ASSERT_TRUE(image);
    EXPECT_TRUE(std::ranges::equal(image->row(0), std::array{0xFF000000, 0xFFBCBCBC, 0xFFFFFFFF}));
}

TEST(PNGColor, AProfileIsKeptByteForByte) {
    const Bytes chunk = profileChunk(linearRGB), row{0, 1, 2, 3, 255};
    const auto image = PNG::read(PNGBuilder(1, 1, 6, 8).chunk("iCCP", chunk).rows(row).build());
    ASSERT_TRUE(image);
    EXPECT_EQ(bytesOf(image->colorSpace().iccProfile()), linearRGB);
    EXPECT_EQ(PNG::read(*PNG::write(*image))->colorSpace(), image->colorSpace());
    const auto untagged = PNG::read(PNGBuilder(1, 1, 6, 8).rows(row).build());
    EXPECT_EQ(PNG::read(*PNG::write(*untagged))->colorSpace(), CGColorSpace::deviceRGB());
}

}  // namespace
}  // namespace pictal
