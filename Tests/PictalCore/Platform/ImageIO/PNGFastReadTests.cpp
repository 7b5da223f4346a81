#include "PictalCore/Platform/Graphics/Pixels/ImageOfPixels.h"
#include "PictalCore/Platform/ImageIO/detail/LibPNG.h"
#include "PictalCore/Platform/ImageIO/detail/PNGFastRead.h"
#include "Tests/Support/PNGBuilder.h"
#include "Tests/Support/PictureProbe.h"
#include "Tests/Support/SampleScreenshot.h"

namespace pictal::detail {
namespace {

using Bytes = PNGBuilder::Bytes;
using File = std::vector<std::byte>;

/// The picture by one of the two readers; nothing when it refuses.
std::optional<CGImage> readBy(bool fast, const File& bytes) {
    const auto file = PNGFile::parse(bytes, PNGFile::Extent::whole);
    if (!file) return std::nullopt;
    const auto& header = file->header;
    auto pixels = PixelBuffer::make(header.width, header.height, PixelBuffer::Contents::undefined);
    const bool done =
        fast ? readFast(*file, *pixels)
             : readWithLibPNG(bytes, header, PNGRowReader(*file, PNGColor()), *pixels).has_value();
    return done ? std::optional(detail::imageOf(*std::move(pixels), CGColorSpace::sRGB()))
                : std::nullopt;
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
    check("a transparent colour", false, true, with("tRNS", {0, 1, 0, 2, 0, 3}));
    check("a suggested palette", false, true, with("PLTE", {1, 2, 3}));
    check("a chunk of someone's own", false, true, with("maYB", {}));
    check("grey", false, true, PNGBuilder(2, 2, 0, 8).rows({0, 1, 2, 0, 3, 4}));
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

}  // namespace
}  // namespace pictal::detail
