#include "PictalCore/Platform/Graphics/Pixels/ImageOfPixels.h"
#include "PictalCore/Platform/ImageIO/detail/LibPNG.h"
#include "PictalCore/Platform/ImageIO/detail/PNGFastRead.h"
#include "Tests/Support/PNGBuilder.h"
#include "Tests/Support/PictureProbe.h"
#include "Tests/Support/SampleScreenshot.h"

#include <random>

namespace pictal::detail {
namespace {

using Bytes = PNGBuilder::Bytes;
using File = std::vector<std::byte>;

/// The picture by one of the two readers; nothing when it refuses.
std::optional<CGImage> readBy(bool fast, const File& bytes) {
    const auto file = PNGFile::parse(bytes, PNGFile::Extent::whole);
    if (!file) return std::nullopt;
    const PNGRowReader rows(*file, PNGColor());
    auto pixels = makeBufferFor(*file);
    const auto opacity = fast ? readFast(*file, rows, *pixels) : std::nullopt;
    const bool done =
        fast ? opacity.has_value() : readWithLibPNG(bytes, file->header, rows, *pixels).has_value();
    if (!done) return std::nullopt;
    const CGImage image = imageOf(*std::move(pixels), CGColorSpace::sRGB());
    EXPECT_TRUE(!fast || image.isOpaque() == (*opacity == Opacity::opaque));
    return image;
}

TEST(PNGFastRead, GivesThePixelsOfLibPNG) {
    EXPECT_TRUE(picturesAgree(*readBy(true, sampleScreenshotFile()),
                              *readBy(false, sampleScreenshotFile())));
}

TEST(PNGFastRead, LeavesWhatIsUnusualToLibPNG) {
    const auto check = [](const char* name, bool isTaken, bool isReadable,
                          const PNGBuilder& builder) {
        const auto fast = readBy(true, builder.build()), slow = readBy(false, builder.build());
        EXPECT_EQ(fast.has_value(), isTaken) << name;
        EXPECT_EQ(slow.has_value(), isReadable) << name;
        EXPECT_TRUE(!fast || !slow || picturesAgree(*fast, *slow)) << name;
    };
    const Bytes rows{0, 1, 2, 3, 1, 4, 5, 6}, stream = PNGBuilder::compressed(rows);
    const Bytes head(stream.begin(), stream.begin() + 5), tail(stream.begin() + 5, stream.end());
    Bytes window = stream, longer = stream, wrong = stream;
    window[0] = 0x18, window[1] = 0x19;  // 0x1819 is a multiple of 31
    longer.push_back(0);
    wrong.back() ^= 1;
    const auto base = [] { return PNGBuilder(1, 2, 2, 8); };
    const auto part = [&] { return base().chunk("IDAT", head); };
    const auto with = [&](const char* type, const Bytes& data) {
        return base().chunk(type, data).rows(rows);
    };
    check("plain", true, true, base().rows(rows));
    check("with a text", true, true, with("tEXt", {'a', 0}));
    check("in two pieces", true, true, part().chunk("IDAT", tail));
    check("and an empty one", true, true, part().chunk("IDAT", {}).chunk("IDAT", tail));
    // Palettes and greys as everybody writes them; libpng judges what stands wrong or twice.
    const Bytes twoColors{1, 2, 3, 4, 5, 6}, bits{0, 0b0111'0000};
    const auto palette = [](const Bytes& pixels,
                            std::initializer_list<std::pair<const char*, Bytes>> chunks) {
        PNGBuilder file(4, 1, 3, 1);
        for (const auto& [type, data] : chunks)
            file.chunk(type, data);
        return file.rows(pixels);
    };
    const auto grey = [](const Bytes& key) { return PNGBuilder(4, 1, 0, 1).chunk("tRNS", key); };
    check("palette", true, true, palette(bits, {{"PLTE", twoColors}}));
    check("one translucent", true, true, palette(bits, {{"PLTE", twoColors}, {"tRNS", {7}}}));
    check("an index too high", true, true, palette(bits, {{"PLTE", {1, 2, 3}}}));
    check("no palette", false, false, palette(bits, {}));
    check("an empty one", false, false, palette(bits, {{"PLTE", {}}}));
    check("two", false, false, palette(bits, {{"PLTE", twoColors}, {"PLTE", twoColors}}));
    check("a colour too short", false, false, palette(bits, {{"PLTE", {1, 2, 3, 4, 5}}}));
    check("a colour too many", false, true, palette(bits, {{"PLTE", Bytes(9)}}));
    check("palette behind", false, false, palette(bits, {}).chunk("PLTE", twoColors));
    check("alpha before", false, true, palette(bits, {{"tRNS", {7}}, {"PLTE", twoColors}}));
    check("alpha behind", false, true, palette(bits, {{"PLTE", twoColors}}).chunk("tRNS", {7}));
    check("alpha twice", false, true,
          palette(bits, {{"PLTE", twoColors}, {"tRNS", {7}}, {"tRNS", {8}}}));
    check("no alphas", false, true, palette(bits, {{"PLTE", twoColors}, {"tRNS", {}}}));
    check("an alpha too many", false, true,
          palette(bits, {{"PLTE", twoColors}, {"tRNS", Bytes(3)}}));
    check("grey", true, true, PNGBuilder(2, 2, 0, 8).rows({0, 1, 2, 0, 3, 4}));
    check("grey with a key", true, true, grey({0, 1}).rows(bits));
    check("grey, a short key", false, true, grey({1}).rows(bits));
    check("grey with a palette", false, true,
          PNGBuilder(4, 1, 0, 1).chunk("PLTE", twoColors).rows(bits));
    check("grey, no such filter", false, false, PNGBuilder(1, 1, 0, 8).rows({5, 1}));
    check("grey with alpha", false, true, PNGBuilder(1, 1, 4, 8).rows({0, 1, 2}));
    check("a transparent colour", false, true, with("tRNS", {0, 1, 0, 2, 0, 3}));
    check("a suggested palette", false, true, with("PLTE", {1, 2, 3}));
    check("a chunk of someone's own", false, true, with("maYB", {}));
    check("16 bits", false, true, PNGBuilder(1, 1, 2, 16).rows(Bytes(7)));
    check("interlaced", false, true, PNGBuilder(1, 1, 2, 8, 1).rows({0, 1, 2, 3}));
    check("a small window", false, true, base().chunk("IDAT", window));
    check("bytes behind the stream", false, true, base().chunk("IDAT", longer));
    check("a row too many", false, true, PNGBuilder(1, 1, 2, 8).rows(rows));
    check("a row too few", false, false, PNGBuilder(1, 3, 2, 8).rows(rows));
    check("no such filter", false, false, PNGBuilder(1, 1, 2, 8).rows({5, 1, 2, 3}));
    check("the stream's checksum", false, false, base().chunk("IDAT", wrong));
    check("pieces apart", false, false, part().chunk("tEXt", {'a', 0}).chunk("IDAT", tail));
}

struct Kind {
    int colorType, bitDepth, channels;
};
constexpr Kind kinds[] = {{2, 8, 3}, {6, 8, 4}, {0, 8, 1}, {0, 1, 1}, {0, 2, 1},
                          {0, 4, 1}, {3, 8, 1}, {3, 1, 1}, {3, 2, 1}, {3, 4, 1}};

/// A file of random rows, of runs of rows with one filter and of mixes.
PNGBuilder randomFile(const Kind& kind, std::uint32_t width, std::uint32_t height,
                      std::mt19937& random) {
    const auto any = [&](std::size_t count, std::uint32_t limit) {
        Bytes bytes(count);
        for (auto& byte : bytes)
            byte = static_cast<std::uint8_t>(random() % limit);
        return bytes;
    };
    PNGBuilder file(width, height, kind.colorType, kind.bitDepth);
    if (kind.colorType == 3) file.chunk("PLTE", any(3 + random() % (1U << kind.bitDepth) * 3, 256));
    if (kind.colorType == 3 && random() % 2 == 0) file.chunk("tRNS", {7});
    if (kind.colorType == 0 && random() % 2 == 0) file.chunk("tRNS", {0, 1});
    const bool isOpaque = random() % 3 == 0, isMixed = random() % 2 == 0;
    std::uint32_t filter = 0;
    Bytes rows;
    for (std::uint32_t y = 0; y < height; ++y) {
        if (isMixed || y % 11 == 0) filter = static_cast<std::uint32_t>(random() % 5);
        rows.push_back(static_cast<std::uint8_t>(filter));
        const auto bits = width * static_cast<std::size_t>(kind.bitDepth * kind.channels);
        PNGBuilder::append(rows, any((bits + 7) / 8, 256));
        // The alpha above all is 255, and every filter but the first two adds nothing to it.
        if (kind.channels == 4 && isOpaque)
            for (std::size_t x = 0; x < width; ++x)
                rows[rows.size() - 1 - x * 4] = y == 0 && (filter != 1 || x + 1 == width) ? 255 : 0;
    }
    return file.rows(rows);
}

TEST(PNGFastRead, AgreesWithLibPNGOnEveryKind) {
    std::mt19937 random(20'240'506);
    for (const Kind& kind : kinds)
        for (std::uint32_t width = 1; width <= 60; width += width < 10 ? 1 : 7)
            for (const std::uint32_t height : {1U, 9U, 30U}) {
                const File file = randomFile(kind, width, height, random).build();
                const auto fast = readBy(true, file), slow = readBy(false, file);
                ASSERT_TRUE(fast && slow) << kind.colorType << ", " << kind.bitDepth << " bits";
                EXPECT_TRUE(picturesAgree(*fast, *slow))
                    << "colour type " << kind.colorType << ", " << kind.bitDepth << " bits, "
                    << width << " x " << height;
            }
}

TEST(PNGFastRead, JoinsPiecesWithAndWithoutRoomBeforeTheRows) {
    std::mt19937 random(20'240'507);
    for (const Kind& kind : {kinds[0], kinds[1]}) {
        // Random bytes do not compress: three quarters of the pixels' memory, or all of it.
        const File whole = randomFile(kind, 200, 100, random).build();
        const auto data = PNGFile::parse(whole, PNGFile::Extent::whole)->imageData[0];
        const auto* const first = reinterpret_cast<const std::uint8_t*>(data.data());
        PNGBuilder pieces(200, 100, kind.colorType, kind.bitDepth);
        for (std::size_t at = 0; at < data.size(); at += 8192)
            pieces.chunk("IDAT", Bytes(first + at, first + std::min(at + 8192, data.size())));
        const auto joined = readBy(true, pieces.build());
        ASSERT_TRUE(joined);
        EXPECT_TRUE(picturesAgree(*joined, *readBy(true, whole)));
    }
}

}  // namespace
}  // namespace pictal::detail
