#include "PictalCore/Platform/ImageIO/PNG.h"
#include "Tests/Support/PNGBuilder.h"
#include "Tests/Support/SampleScreenshot.h"

#include <random>

#include <gtest/gtest.h>

namespace pictal {
namespace {

using namespace std::literals;
using Bytes = PNGBuilder::Bytes;
using File = std::vector<std::byte>;
using enum PNG::ReadError::Kind;

/// A copy with the last byte, or one that far before it, changed.
auto flipped(auto bytes, std::size_t fromEnd) {
    auto& byte = bytes[bytes.size() - 1 - fromEnd];
    byte = static_cast<std::remove_reference_t<decltype(byte)>>(static_cast<int>(byte) ^ 1);
    return bytes;
}

File withoutEnd(File file, std::size_t count) {
    file.resize(file.size() - count);
    return file;
}

TEST(PNGDamage, IsRefusedWithItsReason) {
    const auto refuses = [](const char* name, std::span<const std::byte> file,
                            PNG::ReadError::Kind kind, const char* says) {
        const auto image = PNG::read(file);
        ASSERT_FALSE(image) << name;
        EXPECT_EQ(image.error().kind(), kind) << name;
        EXPECT_NE(image.error().description().find(says), std::string::npos)
            << name << ": " << image.error().description();
    };
    const auto refusesText = [&](std::string_view text, PNG::ReadError::Kind kind,
                                 const char* says) {
        refuses(says, std::as_bytes(std::span(text)), kind, says);
    };
    testing::internal::CaptureStderr();
    refusesText("", notPNG, "empty");
    refusesText("hello", notPNG, "not PNG");
    refusesText("\xFF\xD8\xFF\xE0 and so on", notPNG, "JPEG");
    refusesText("GIF89a, say", notPNG, "GIF");
    refusesText("RIFF\1\2\3\4WEBPVP8 ", notPNG, "WebP");
    refusesText("BM\1\2\3\4", notPNG, "BMP");
    refusesText("II*\0\1\2\3\4"sv, notPNG, "TIFF");
    refusesText("\0\0\0\30ftypheic\0"sv, notPNG, "HEIC");
    refusesText("\x89PNG", truncated, "cut short");
    refusesText("\x89PNG\r\n\x1A\n", truncated, "cut short");

    const Bytes rows{0, 1, 2, 0, 3, 4}, many(100'000);
    const auto base = [] { return PNGBuilder(2, 2, 0, 8); };
    const auto good = [&] { return base().rows(rows); };
    const auto stream = [&](const Bytes& data) { return base().chunk("IDAT", data).build(); };
    refuses("no end chunk", withoutEnd(good().build(), 12), truncated, "without its last chunk");
    refuses("half an end chunk", withoutEnd(good().build(), 1), truncated, "cut short");
    refuses("half the pixels", withoutEnd(good().build(), 20), truncated, "IDAT");
    refuses("checksum of the pixels", flipped(good().build(), 12), corrupt, "IDAT at byte 33");
    refuses("checksum of the end", flipped(good().build(), 0), corrupt, "IEND");
    refuses("checksum of a text behind the pixels",
            flipped(good().chunk("tEXt", {'a', 0}).build(), 12), corrupt, "tEXt");
    refuses("checksum inside the stream", stream(flipped(PNGBuilder::compressed(rows), 0)), corrupt,
            "incorrect data check");
    refuses("no header", PNGBuilder(1, 1, 2, 7).build(), corrupt, "impossible");
    refuses("no width", PNGBuilder(0, 1, 2, 8).build(), corrupt, "size");
    refuses("a negative height", PNGBuilder(1, 0x80000000, 2, 8).build(), corrupt, "size");
    refuses("no pixels", base().build(), truncated, "cannot hold");
    refuses("too few rows", base().rows({0, 1, 2}).build(), corrupt, "image data");
    refuses("no such filter", base().rows({5, 1, 2, 0, 3, 4}).build(), corrupt, "filter");
    refuses("no palette", PNGBuilder(1, 1, 3, 8).rows({0, 0}).build(), corrupt, "PLTE");
    refuses("an unknown critical chunk", good().chunk("NEED", {}).build(), corrupt, "NEED");
    refuses("no name", good().chunk("t xt", {}).build(), corrupt, "no chunk");
    refuses("a side too long", PNGBuilder(8'000'001, 1, 0, 1).rows(Bytes(1'000'002)).build(),
            tooLarge, "8,000,000");
    refuses("a side too high", PNGBuilder(1, 8'000'001, 0, 1).rows(Bytes(16'000'002)).build(),
            tooLarge, "8,000,000");
    refuses("too many pixels", PNGBuilder(16'385, 16'384, 0, 8).rows({0}).build(), tooLarge,
            "268435456");
    for (const int interlace : {0, 1})
        refuses("1 GB of pixels in 1 kB",
                PNGBuilder(16'384, 16'384, 6, 8, interlace).rows(many).build(), truncated,
                "cannot hold");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(PNGDamage, WhatHarmsNoPixelIsTolerated) {
    const auto reads = [](const char* name, const PNGBuilder& file) {
        const auto image = PNG::read(file.build());
        ASSERT_TRUE(image) << name << ": " << image.error().description();
        EXPECT_EQ(image->row(0)[0], 0xFF090909) << name;
    };
    const auto base = [] { return PNGBuilder(1, 1, 0, 8); };
    reads("more rows than the header says", base().rows({0, 9, 0, 9}));
    reads("an unknown chunk", base().chunk("maYB", {1}).rows({0, 9}));
    reads("a text that does not unpack", base().chunk("zTXt", {'a', 0, 0, 1}).rows({0, 9}));
    reads("a transparent colour of the wrong length", base().chunk("tRNS", {0}).rows({0, 9}));
    const auto nine = PNGBuilder(3, 3, 0, 8).rows(Bytes(12)).build();
    EXPECT_EQ(PNG::read(nine, {.maximumPixels = 8}).error().kind(), tooLarge);
    EXPECT_TRUE(PNG::read(nine, {.maximumPixels = 9}));
}

/// Changes a file somewhere: a bit, a byte, its end, a piece lost or doubled.
File mutated(File file, std::mt19937& random) {
    const auto below = [&](std::size_t limit) { return random() % limit; };
    const std::size_t at = below(file.size());
    const auto first = file.begin() + static_cast<std::ptrdiff_t>(at);
    const auto last =
        first + static_cast<std::ptrdiff_t>(1 + below(std::min<std::size_t>(64, file.size() - at)));
    const File piece(first, last);
    switch (below(5)) {
        case 0:
            *first ^= std::byte{1} << below(8);
            break;
        case 1:
            *first ^= static_cast<std::byte>(1 + below(255));
            break;
        case 2:
            file.resize(at);
            break;
        case 3:
            file.erase(first, last);
            break;
        default:
            file.insert(first, piece.begin(), piece.end());
    }
    return file;
}

TEST(PNGDamage, AThousandMutationsAreAllRefusedAndNoneCrashes) {
    std::mt19937 random(20'240'501);
    for (int round = 0; round < 1000; ++round)
        EXPECT_FALSE(PNG::read(mutated(sampleScreenshotFile(), random))) << "round " << round;
}

TEST(PNGDamage, AThousandMutationsBehindRightChecksumsCrashNothing) {
    std::mt19937 random(20'240'502);
    // Text and the corner of the photograph, small enough to be unpacked a thousand times.
    const File real = *PNG::write(*sampleScreenshot().cropping({{400, 200}, {200, 120}}));
    int readable = 0;
    for (int round = 0; round < 1000; ++round) {
        File file = mutated(real, random);
        repairChecksums(file);
        readable += PNG::read(file, {.maximumPixels = 1'000'000}) ? 1 : 0;
    }
    // A checksum of its own guards the stream, so that hardly anything passes.
    EXPECT_LT(readable, 20);
}

}  // namespace
}  // namespace pictal
