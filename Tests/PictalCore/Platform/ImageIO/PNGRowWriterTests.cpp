#include "PictalCore/Platform/ImageIO/PNGRowWriter.h"
#include "Tests/Support/LibPNGDecoder.h"
#include "Tests/Support/PictureProbe.h"
#include "Tests/Support/SampleScreenshot.h"

#include <fstream>

#include <malloc.h>

namespace pictal {
namespace {

using PNG::RowWriter;
using PNG::WriteError;

TEST(PNGRowWriter, WritesWhatWentIn) {
    for (const bool isOpaque : {true, false})
        for (const std::int64_t height : {1, 15, 16, 17, 300}) {
            const CGImage image =
                *sampleScreenshot().cropping({{500, 250}, {333, static_cast<CGFloat>(height)}});
            std::vector<std::byte> file;
            const auto sink = [&](std::span<const std::byte> piece) {
                file.insert(file.end(), piece.begin(), piece.end());
                return true;
            };
            auto writer = RowWriter::make({333, height, isOpaque, CGColorSpace::sRGB()}, sink);
            ASSERT_TRUE(writer);
            for (std::int64_t y = 0; y < height; ++y)
                ASSERT_TRUE(writer->write(image.row(y)));
            ASSERT_TRUE(writer->finish());
            EXPECT_TRUE(picturesAgree(*decodedByLibPNG(file), image)) << height;
            EXPECT_TRUE(picturesAgree(*PNG::read(file), image)) << height;
            EXPECT_EQ(PNG::readInfo(file)->hasAlpha, !isOpaque);
        }
}

TEST(PNGRowWriter, RefusesWhatIsNoPicture) {
    const auto sink = [](std::span<const std::byte>) { return true; };
    EXPECT_EQ(RowWriter::make({0, 1}, sink).error(), WriteError::emptyImage);
    EXPECT_EQ(RowWriter::make({1, -1}, sink).error(), WriteError::emptyImage);
    EXPECT_EQ(RowWriter::make({1, 8'000'001}, sink).error(), WriteError::tooLarge);

    auto writer = RowWriter::make({2, 2}, sink);
    const std::vector<std::uint32_t> row(2), longer(3);
    EXPECT_EQ(writer->write(longer).error(), WriteError::wrongRow);
    EXPECT_TRUE(writer->write(row));
    EXPECT_EQ(writer->finish().error(), WriteError::wrongRow);
    EXPECT_TRUE(writer->write(row));
    EXPECT_EQ(writer->write(row).error(), WriteError::wrongRow);
    EXPECT_TRUE(writer->finish());
}

TEST(PNGRowWriter, StopsWhenItsBytesAreRefused) {
    const auto refused = [](std::span<const std::byte>) { return false; };
    EXPECT_EQ(RowWriter::make({1, 1}, refused).error(), WriteError::sinkFailed);
    for (int accepted = 1; accepted < 3; ++accepted) {
        auto writer = RowWriter::make(
            {1, 1}, [left = accepted](std::span<const std::byte>) mutable { return left-- > 0; });
        EXPECT_TRUE(writer->write(std::vector<std::uint32_t>(1)));
        EXPECT_EQ(writer->finish().error(), WriteError::sinkFailed) << accepted;
    }
}

/// The most memory that the process has held since the last reset, in bytes; resets it.
std::size_t peakMemory() {
    std::size_t kilobytes = 0;
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (word == "VmHWM:") status >> kilobytes;
    std::ofstream("/proc/self/clear_refs") << "5";
    return kilobytes * 1024;
}

TEST(PNGRowWriter, LargeTallPicturesTakeHardlyAnyMemory) {
    constexpr std::int64_t width = 2880, height = 120'000;
    std::size_t largest = 0, total = 0;
    const auto write = [&](std::int64_t rows) {
        auto writer = RowWriter::make({width, rows, true}, [&](std::span<const std::byte> piece) {
            largest = std::max(largest, piece.size());
            total += piece.size();
            return true;
        });
        for (std::int64_t y = 0; y < rows; ++y)
            ASSERT_TRUE(writer->write(sampleScreenshot().row(y % 1800)));
        ASSERT_TRUE(writer->finish());
    };
    // Once before, so that the pages of the code are not counted, nor what stays with the heap.
    write(100);
    ::malloc_trim(0);
    (void)peakMemory();
    const std::size_t before = peakMemory();
    write(height);
    EXPECT_GT(total, 50U << 20);
    EXPECT_LE(largest, (256U << 10) + 1024);
    // Sixteen rows as pixels and as filtered bytes, three more of working memory, and 1 MB; the
    // kernel counts a thread's pages in batches of 64.
    constexpr std::size_t batch = 64 * 4096;
    EXPECT_LE(peakMemory() - before, std::size_t{19} * width * 8 + (1U << 20) + batch);
}

}  // namespace
}  // namespace pictal
