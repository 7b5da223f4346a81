#include "PictalCore/Platform/ImageIO/PNG.h"
#include "Tests/Support/PNGBuilder.h"
#include "Tests/Support/SampleScreenshot.h"

#include <random>

#include <gtest/gtest.h>

namespace pictal {
namespace {

using namespace std::literals;
using Bytes = PNGBuilder::Bytes;
using Kind = PNG::ReadError::Kind;
using File = std::vector<std::byte>;

File fileOf(std::string_view text) {
    const auto bytes = std::as_bytes(std::span(text));
    return {bytes.begin(), bytes.end()};
}

/// The last byte of the file, or one that far before it, is changed.
File flipped(File file, std::size_t fromEnd) {
    file[file.size() - 1 - fromEnd] ^= std::byte{1};
    return file;
}

File withoutEnd(File file, std::size_t count) {
    file.resize(file.size() - count);
    return file;
}

/// A stream with its own checksum wrong, in a chunk whose checksum is right.
Bytes wrongStreamChecksum(const Bytes& filtered) {
    Bytes stream = PNGBuilder::compressed(filtered);
    stream.back() ^= 1;
    return stream;
}

TEST(PNGDamage, IsRefusedWithItsReason) {
    const PNGBuilder good = PNGBuilder(2, 2, 0, 8).rows({0, 1, 2, 0, 3, 4});
    const PNGBuilder base(2, 2, 0, 8);
    const auto with = [](PNGBuilder builder, std::string_view type, const Bytes& data) {
        return builder.chunk(type, data).build();
    };
    const struct {
        const char* name;
        File file;
        Kind kind;
        const char* says;
    } table[] = {
        {"empty", {}, Kind::notPNG, "empty"},
        {"text", fileOf("hello"), Kind::notPNG, "not PNG"},
        {"JPEG", fileOf("\xFF\xD8\xFF\xE0 and so on"), Kind::notPNG, "JPEG"},
        {"GIF", fileOf("GIF89a, say"), Kind::notPNG, "GIF"},
        {"WebP", fileOf("RIFF\1\2\3\4WEBPVP8 "), Kind::notPNG, "WebP"},
        {"BMP", fileOf("BM\1\2\3\4"), Kind::notPNG, "BMP"},
        {"TIFF", fileOf("II*\0\1\2\3\4"sv), Kind::notPNG, "TIFF"},
        {"HEIC",
         fileOf("\0\0\0\x18"
                "ftypheic\0"sv),
         Kind::notPNG, "HEIC"},
        {"half a signature", fileOf("\x89PNG"), Kind::truncated, "cut short"},
        {"a signature alone", fileOf("\x89PNG\r\n\x1A\n"), Kind::truncated, "cut short"},
        {"no end chunk", withoutEnd(good.build(), 12), Kind::truncated, "without its last chunk"},
        {"half an end chunk", withoutEnd(good.build(), 1), Kind::truncated, "cut short"},
        {"half the pixels", withoutEnd(good.build(), 20), Kind::truncated, "IDAT"},
        {"checksum of the pixels", flipped(good.build(), 12), Kind::corrupt, "IDAT at byte 33"},
        {"checksum of the end", flipped(good.build(), 0), Kind::corrupt, "IEND"},
        {"checksum of a text behind the pixels", flipped(with(good, "tEXt", {'a', 0}), 12),
         Kind::corrupt, "tEXt"},
        {"checksum inside the stream", with(base, "IDAT", wrongStreamChecksum({0, 1, 2, 0, 3, 4})),
         Kind::corrupt, "incorrect data check"},
        {"no header", PNGBuilder(1, 1, 2, 7).build(), Kind::corrupt, "impossible"},
        {"no width", PNGBuilder(0, 1, 2, 8).build(), Kind::corrupt, "size"},
        {"a negative height", PNGBuilder(1, 0x80000000, 2, 8).build(), Kind::corrupt, "size"},
        {"no pixels", base.build(), Kind::truncated, "cannot hold"},
        {"too few rows", with(base, "IDAT", PNGBuilder::compressed({0, 1, 2})), Kind::corrupt,
         "image data"},
        {"no such filter", with(base, "IDAT", PNGBuilder::compressed({5, 1, 2, 0, 3, 4})),
         Kind::corrupt, "filter"},
        {"no palette", PNGBuilder(1, 1, 3, 8).rows({0, 0}).build(), Kind::corrupt, "PLTE"},
        {"an unknown critical chunk", with(good, "NEED", {}), Kind::corrupt, "NEED"},
        {"no name", with(good, "t xt", {}), Kind::corrupt, "no chunk"},
        {"a side too long", PNGBuilder(8'000'001, 1, 0, 1).rows(Bytes(1'000'002)).build(),
         Kind::tooLarge, "8,000,000"},
        {"too many pixels", PNGBuilder(32'769, 32'768, 0, 8).rows({0}).build(), Kind::tooLarge,
         "1073741824"},
        {"3 GB of pixels in 1 kB", PNGBuilder(32'768, 24'576, 6, 8).rows(Bytes(100'000)).build(),
         Kind::truncated, "cannot hold"},
        {"3 GB of pixels in 1 kB, interlaced",
         PNGBuilder(32'768, 24'576, 6, 8, 1).rows(Bytes(100'000)).build(), Kind::truncated,
         "cannot hold"},
    };
    testing::internal::CaptureStderr();
    for (const auto& row : table) {
        const auto image = PNG::read(row.file);
        ASSERT_FALSE(image) << row.name;
        EXPECT_EQ(image.error().kind(), row.kind) << row.name;
        EXPECT_NE(image.error().description().find(row.says), std::string::npos)
            << row.name << ": " << image.error().description();
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(PNGDamage, WhatHarmsNoPixelIsTolerated) {
    const std::pair<const char*, File> table[] = {
        {"more rows than the header says", PNGBuilder(1, 1, 0, 8).rows({0, 9, 0, 9}).build()},
        {"an unknown chunk", PNGBuilder(1, 1, 0, 8).chunk("maYB", {1}).rows({0, 9}).build()},
        {"a text that does not unpack",
         PNGBuilder(1, 1, 0, 8).chunk("zTXt", {'a', 0, 0, 1}).rows({0, 9}).build()},
        {"a transparent colour of the wrong length",
         PNGBuilder(1, 1, 0, 8).chunk("tRNS", {0}).rows({0, 9}).build()},
    };
    for (const auto& [name, file] : table) {
        const auto image = PNG::read(file);
        ASSERT_TRUE(image) << name << ": " << image.error().description();
        EXPECT_EQ(image->row(0)[0], 0xFF090909) << name;
    }
    EXPECT_EQ(PNG::read(PNGBuilder(3, 3, 0, 8).rows(Bytes(12)).build(), {.maximumPixels = 8})
                  .error()
                  .kind(),
              Kind::tooLarge);
    EXPECT_TRUE(PNG::read(PNGBuilder(3, 3, 0, 8).rows(Bytes(12)).build(), {.maximumPixels = 9}));
}

/// Changes a file somewhere: a bit, a byte, its end, a piece lost or doubled.
File mutated(File file, std::mt19937& random) {
    const auto below = [&](std::size_t limit) { return random() % limit; };
    const auto at = static_cast<std::ptrdiff_t>(below(file.size()));
    const auto length = static_cast<std::ptrdiff_t>(
        1 + below(std::min<std::size_t>(64, file.size() - static_cast<std::size_t>(at))));
    const File piece(file.begin() + at, file.begin() + at + length);
    switch (below(5)) {
        case 0:
            file[static_cast<std::size_t>(at)] ^= std::byte{1} << below(8);
            break;
        case 1:
            file[static_cast<std::size_t>(at)] ^= static_cast<std::byte>(1 + below(255));
            break;
        case 2:
            file.resize(static_cast<std::size_t>(at));
            break;
        case 3:
            file.erase(file.begin() + at, file.begin() + at + length);
            break;
        default:
            file.insert(file.begin() + at, piece.begin(), piece.end());
            break;
    }
    return file;
}

TEST(PNGDamage, AThousandMutationsAreAllRefusedAndNoneCrashes) {
    constexpr unsigned seed = 20'240'501;
    std::mt19937 random(seed);
    for (int round = 0; round < 1000; ++round)
        EXPECT_FALSE(PNG::read(mutated(sampleScreenshotFile(), random)))
            << "seed " << seed << ", round " << round;
}

TEST(PNGDamage, AThousandMutationsBehindRightChecksumsCrashNothing) {
    constexpr unsigned seed = 20'240'502;
    std::mt19937 random(seed);
    // Text and the corner of the photograph, small enough to be unpacked a thousand times.
    const File real = *PNG::write(*sampleScreenshot().cropping({{400, 200}, {200, 120}}));
    int readable = 0;
    for (int round = 0; round < 1000; ++round) {
        File file = mutated(real, random);
        repairChecksums(file);
        const auto image = PNG::read(file, {.maximumPixels = 1'000'000});
        readable += image ? 1 : 0;
    }
    // A checksum of its own guards the stream, so that hardly anything passes.
    EXPECT_LT(readable, 20) << "seed " << seed;
}

}  // namespace
}  // namespace pictal
