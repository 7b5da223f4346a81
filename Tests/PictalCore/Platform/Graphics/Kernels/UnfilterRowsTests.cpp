#include "PictalCore/Platform/Graphics/Kernels/Arithmetic.h"
#include "PictalCore/Platform/Graphics/Kernels/UnfilterRows.h"
#include "Tests/Support/Reference/RowFilters.h"

#include <gtest/gtest.h>

namespace pictal::kernels {
namespace {

using namespace reference;

TEST(UnfilterRows, UndoesEveryFilter) {
    for (std::size_t width = 1; width <= 130; ++width)
        for (const std::size_t pixel : {3U, 4U})
            for (std::size_t f = 0; f < rowFilterCount; ++f) {
                const auto filter = static_cast<RowFilter>(f);
                const Bytes row = randomRow(width * pixel), above = randomRow(width * pixel);
                const auto wordsOf = [&](const Bytes& bytes) {
                    Words words(width, pixel == 3 ? 0xFF000000 : 0);
                    for (std::size_t i = 0; i < width * pixel; ++i)
                        words[i / pixel] |= std::uint32_t{bytes[rowMargin + i]} << 8 * (i % pixel);
                    return words;
                };
                Bytes stored = filtered(filter, row, above, pixel);
                stored.push_back(0x5A);
                Words expected = wordsOf(row), result(width + 4, 0xA5A5A5A5);
                const auto undo = pixel == 3 ? unfilterRGB : unfilterRGBA;
                undo(filter, stored.data(), wordsOf(above), std::span(result).first(width));
                expected.resize(width + 4, 0xA5A5A5A5);
                EXPECT_EQ(result, expected) << "width " << width << ", filter " << f;
            }
}

TEST(UnfilterRows, ThePaethPredictionIsExactForAllNeighbours) {
    // A row of two: the second pixel's left is a, above it is b, above left c; four c at a time.
    for (std::uint32_t a = 0; a < 256; ++a)
        for (std::uint32_t b = 0; b < 256; b += a % 16 == 0 ? 1 : 5)
            for (std::uint32_t c = 0; c < 256; c += 4) {
                const Words above{pixelOf(c, c + 1, c + 2, c + 3), b * 0x01010101};
                Bytes stored;
                for (std::uint32_t i = 0; i < 4; ++i)
                    stored.push_back(static_cast<std::uint8_t>(a - (c + i)));
                stored.resize(9);
                Words row(2);
                unfilterRGBA(RowFilter::paeth, stored.data(), above, row);
                for (std::uint32_t i = 0; i < 4; ++i)
                    ASSERT_EQ(row[1] >> (8 * i) & 255,
                              prediction(RowFilter::paeth, static_cast<int>(a), static_cast<int>(b),
                                         static_cast<int>(c + i)))
                        << a << ", " << b << ", " << c + i;
            }
}

}  // namespace
}  // namespace pictal::kernels
