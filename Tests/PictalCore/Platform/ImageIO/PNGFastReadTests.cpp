#include "PictalCore/Platform/ImageIO/detail/LibPNG.h"
#include "PictalCore/Platform/ImageIO/detail/PNGFastRead.h"
#include "Tests/Support/PNGBuilder.h"
#include "Tests/Support/PictureProbe.h"
#include "Tests/Support/SampleScreenshot.h"

#include <random>

#include <gtest/gtest.h>

namespace pictal::detail {
namespace {

using Bytes = PNGBuilder::Bytes;
using File = std::vector<std::byte>;

/// The picture by one of the two readers; nothing when it refuses.
std::optional<CGImage> readBy(bool fast, const File& bytes) {
    const auto file = PNGFile::parse(bytes, PNGFile::Extent::whole);
    if (!file) return std::nullopt;
    auto pixels = PixelBuffer::allocate(file->header.width, file->header.height,
                                        PixelBuffer::Contents::undefined);
    const bool done =
        fast ? readFast(*file, *pixels)
             : readWithLibPNG(bytes, file->header, PNGRows(*file, PNGColor()), *pixels).has_value();
    if (!done) return std::nullopt;
    return CGImage(*std::move(pixels), CGColorSpace::sRGB());
}

TEST(PNGFastRead, GivesThePixelsOfLibPNG) {
    std::mt19937 random(20'240'505);
    for (const int colorType : {2, 6})
        for (std::uint32_t width = 1; width <= 40; ++width) {
            // Any bytes behind any filters are rows.
            Bytes rows;
            for (std::uint32_t y = 0; y < 12; ++y) {
                rows.push_back(static_cast<std::uint8_t>(random() % 5));
                for (std::uint32_t i = 0; i < width * (colorType == 2 ? 3 : 4); ++i)
                    rows.push_back(static_cast<std::uint8_t>(random()));
            }
            const File file = PNGBuilder(width, 12, colorType, 8).rows(rows).build();
            const auto fast = readBy(true, file), slow = readBy(false, file);
            ASSERT_TRUE(fast && slow) << width;
            EXPECT_TRUE(picturesAgree(*fast, *slow)) << "type " << colorType << ", " << width;
        }
    EXPECT_TRUE(picturesAgree(*readBy(true, sampleScreenshotFile()),
                              *readBy(false, sampleScreenshotFile())));
}

TEST(PNGFastRead, LeavesWhatIsUnusualToLibPNG) {
    const Bytes rows{0, 1, 2, 3, 1, 4, 5, 6};
    const Bytes stream = PNGBuilder::compressed(rows);
    const auto edited = [&](auto edit) {
        Bytes copy = stream;
        edit(copy);
        return PNGBuilder(1, 2, 2, 8).chunk("IDAT", copy).build();
    };
    const Bytes head(stream.begin(), stream.begin() + 5), tail(stream.begin() + 5, stream.end());
    const PNGBuilder base(1, 2, 2, 8);
    const auto with = [](PNGBuilder builder, std::string_view type, const Bytes& data) {
        return builder.chunk(type, data);
    };
    const struct {
        const char* name;
        File file;
        bool isTaken, isReadable;
    } table[] = {
        {"plain", PNGBuilder(base).rows(rows).build(), true, true},
        {"with a text", with(base, "tEXt", {'a', 0}).rows(rows).build(), true, true},
        {"in two pieces", with(with(base, "IDAT", head), "IDAT", tail).build(), true, true},
        {"in two pieces and an empty one",
         with(with(with(base, "IDAT", head), "IDAT", {}), "IDAT", tail).build(), true, true},
        {"a transparent colour", with(base, "tRNS", {0, 1, 0, 2, 0, 3}).rows(rows).build(), false,
         true},
        {"a suggested palette", with(base, "PLTE", {1, 2, 3}).rows(rows).build(), false, true},
        {"a chunk of someone's own", with(base, "maYB", {}).rows(rows).build(), false, true},
        {"grey", PNGBuilder(2, 2, 0, 8).rows({0, 1, 2, 0, 3, 4}).build(), false, true},
        {"16 bits", PNGBuilder(1, 1, 2, 16).rows(Bytes(7)).build(), false, true},
        {"interlaced", PNGBuilder(1, 1, 2, 8, 1).rows({0, 1, 2, 3}).build(), false, true},
        {"a small window", edited([](Bytes& copy) {
             copy[0] = 0x18;
             copy[1] = 0x19;  // 0x1819 is a multiple of 31
         }),
         false, true},
        {"bytes behind the stream", edited([](Bytes& copy) { copy.push_back(0); }), false, true},
        {"a row too many", PNGBuilder(1, 1, 2, 8).rows(rows).build(), false, true},
        {"a row too few", PNGBuilder(1, 3, 2, 8).rows(rows).build(), false, false},
        {"no such filter", PNGBuilder(1, 1, 2, 8).rows({5, 1, 2, 3}).build(), false, false},
        {"the stream's checksum", edited([](Bytes& copy) { copy.back() ^= 1; }), false, false},
        {"pieces apart",
         with(with(with(base, "IDAT", head), "tEXt", {'a', 0}), "IDAT", tail).build(), false,
         false},
    };
    for (const auto& row : table) {
        const auto fast = readBy(true, row.file), slow = readBy(false, row.file);
        EXPECT_EQ(fast.has_value(), row.isTaken) << row.name;
        EXPECT_EQ(slow.has_value(), row.isReadable) << row.name;
        if (fast && slow) {
            EXPECT_TRUE(picturesAgree(*fast, *slow)) << row.name;
        }
    }
}

}  // namespace
}  // namespace pictal::detail
