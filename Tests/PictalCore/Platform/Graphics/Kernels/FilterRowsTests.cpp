#include "PictalCore/Platform/Graphics/Kernels/Arithmetic.h"
#include "PictalCore/Platform/Graphics/Kernels/FilterRows.h"

#include <algorithm>
#include <cstdlib>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace pictal::kernels {
namespace {

using Bytes = std::vector<std::uint8_t>;
using Words = std::vector<std::uint32_t>;

/// The prediction of a filter, word for word as the standard has it.
int prediction(RowFilter filter, int a, int b, int c) {
    const int p = a + b - c;
    const int pa = std::abs(p - a), pb = std::abs(p - b), pc = std::abs(p - c);
    switch (filter) {
        case RowFilter::none:
            return 0;
        case RowFilter::sub:
            return a;
        case RowFilter::up:
            return b;
        case RowFilter::average:
            return (a + b) / 2;
        case RowFilter::paeth:
            return pa <= pb && pa <= pc ? a : pb <= pc ? b : c;
    }
    return -1;
}

Bytes filtered(RowFilter filter, const Bytes& row, const Bytes& above, std::size_t pixel) {
    Bytes result;
    for (std::size_t i = rowMargin; i < row.size(); ++i)
        result.push_back(static_cast<std::uint8_t>(
            row[i] - prediction(filter, row[i - pixel], above[i], above[i - pixel])));
    return result;
}

std::mt19937 randomNumbers{20'240'503};

Words randomWords(std::size_t size) {
    Words words(size);
    std::ranges::generate(words, [] { return static_cast<std::uint32_t>(randomNumbers()); });
    return words;
}
/// With a margin of zeros before the bytes.
Bytes randomRow(std::size_t size) {
    Bytes row(rowMargin);
    for (const std::uint32_t word : randomWords(size))
        row.push_back(static_cast<std::uint8_t>(word));
    return row;
}

class FilterRows : public testing::TestWithParam<Target> {
  protected:
    void SetUp() override {
        if (!isAvailable(GetParam())) GTEST_SKIP() << "this processor has no such target";
    }

    const FilterRowKernels& kernels_ = filterRowKernels(GetParam());
};

INSTANTIATE_TEST_SUITE_P(EveryTarget, FilterRows, testing::ValuesIn(allTargets));

TEST_P(FilterRows, FiltersAndTheirCostsAreThoseOfTheStandard) {
    for (std::size_t size = 1; size <= 600; size += size < 130 ? 1 : 47)
        for (const std::size_t pixel : {3U, 4U}) {
            const Bytes row = randomRow(size), above = randomRow(size);
            const auto bytes = std::span(row).subspan(rowMargin);
            const auto costs = kernels_.filterCosts(bytes, &above[rowMargin], pixel);
            for (std::size_t f = 0; f < rowFilterCount; ++f) {
                const auto filter = static_cast<RowFilter>(f);
                Bytes expected = filtered(filter, row, above, pixel), result(size + 64, 0xA5);
                std::uint64_t cost = 0;
                for (const std::uint8_t byte : expected)
                    cost += static_cast<std::uint64_t>(std::abs(static_cast<std::int8_t>(byte)));
                EXPECT_EQ(costs[f], cost) << "size " << size << ", filter " << f;
                kernels_.filter(filter, bytes, &above[rowMargin], pixel, result.data());
                expected.resize(size + 64, 0xA5);  // nothing behind the end
                EXPECT_EQ(result, expected) << "size " << size << ", filter " << f;
            }
        }
}

TEST_P(FilterRows, PacksAndCountsAtEveryWidth) {
    for (std::size_t width = 1; width <= 130; ++width) {
        Words row = randomWords(width), above = randomWords(width);
        Bytes expected, packed(width * 3 + 64, 0xA5);
        std::size_t lefts = 0, both = 0;
        for (std::size_t i = 0; i < width; ++i) {
            if (i % 3 == 1) row[i] = row[i - 1];
            if (i % 5 == 0) row[i] = above[i];
            for (int shift = 0; shift < 24; shift += 8)
                expected.push_back(static_cast<std::uint8_t>(row[i] >> shift));
            const bool likeLeft = i > 0 && row[i - 1] == row[i];
            lefts += likeLeft ? 1 : 0;
            both += likeLeft || above[i] == row[i] ? 1 : 0;
        }
        expected.resize(packed.size(), 0xA5);
        kernels_.packRGB(row, packed.data());
        EXPECT_EQ(packed, expected) << width;
        EXPECT_EQ(kernels_.countRepeats(row, {}), lefts) << width;
        EXPECT_EQ(kernels_.countRepeats(row, above), both) << width;
    }
}

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
