#include "PictalCore/Platform/Graphics/Kernels/Arithmetic.h"
#include "PictalCore/Platform/Graphics/Kernels/UnfilterRows.h"
#include "Tests/Support/Reference/RowFilters.h"

#include <gtest/gtest.h>

namespace pictal::kernels {
namespace {

using namespace reference;

constexpr std::uint32_t untouched = 0xA5A5A5A5;

class UnfilterRows : public testing::TestWithParam<Target> {
  protected:
    void SetUp() override {
        if (!isAvailable(GetParam())) GTEST_SKIP() << "this processor has no such target";
    }

    /// Undoes rows of so many bytes a pixel as a picture's reader does; words in rows of `stride`.
    /// Pixels of one byte are words too.
    [[nodiscard]] Words undone(Bytes stored, std::size_t width, std::size_t pixel,
                               std::size_t stride) const {
        const std::size_t step = 1 + width * pixel, height = stored.size() / step;
        stored.resize(stored.size() + storedRowMargin, 0x5A);
        Words pixels(stride * height, untouched);
        const Words noWords(width);
        const Bytes noBytes(width);
        for (std::size_t y = 0, count = 0; y < height; y += count) {
            std::uint8_t* const first = stored.data() + y * step;
            std::uint32_t* const to = pixels.data() + y * stride;
            const std::uint32_t* const above = y == 0 ? noWords.data() : to - stride;
            const Unfilter undo = pixel == 3 ? kernels_.rgb : kernels_.rgba;
            count = pixel == 1 ? kernels_.bytes(first, step, height - y,
                                                y == 0 ? noBytes.data() : first - step + 1)
                               : undo({first, step, height - y}, above, {to, stride, width});
            if (count == 0 || count > height - y) return {};
        }
        if (pixel == 1)
            for (std::size_t i = 0; i < width * height; ++i)
                pixels[i / width * stride + i % width] = stored[i / width * step + 1 + i % width];
        return pixels;
    }

    void expectUndone(const Bytes& filters, std::size_t width, std::size_t pixel) const {
        const std::size_t step = 1 + width * pixel, stride = width + 3;
        Bytes stored;
        for (const std::uint8_t filter : filters) {
            stored.push_back(filter);
            const Bytes row = randomRow(width * pixel);
            stored.insert(stored.end(), row.begin() + rowMargin, row.end());
        }
        const Bytes bytes = unfiltered(stored, step, pixel);
        Words expected(stride * filters.size(), untouched);
        for (std::size_t i = 0; i < width * filters.size(); ++i) {
            std::uint32_t& word = expected[i / width * stride + i % width];
            word = pixel == 3 ? 0xFF000000 : 0;
            for (std::size_t c = 0; c < pixel; ++c)
                word |= std::uint32_t{bytes[i / width * step + 1 + i % width * pixel + c]}
                        << (8 * c);
        }
        std::string names;
        for (const std::uint8_t filter : filters)
            names += std::to_string(filter);
        EXPECT_EQ(undone(stored, width, pixel, stride), expected)
            << "width " << width << ", bytes a pixel " << pixel << ", filters " << names;
    }

    const UnfilterKernels& kernels_ = unfilterKernels(GetParam());
};

INSTANTIATE_TEST_SUITE_P(EveryTarget, UnfilterRows, testing::ValuesIn(allTargets));

TEST_P(UnfilterRows, UndoesEveryFilterAndMixAtEveryWidth) {
    for (std::size_t width = 1; width <= 130; ++width)
        for (const std::size_t pixel : {1U, 3U, 4U}) {
            for (std::uint8_t filter = 0; filter < rowFilterCount; ++filter) {
                expectUndone(Bytes(3, filter), width, pixel);
                expectUndone(Bytes(17, filter), width, pixel);
            }
            Bytes any(40);
            for (std::uint8_t& filter : any)
                filter = static_cast<std::uint8_t>(randomNumbers() % rowFilterCount);
            expectUndone(any, width, pixel);
        }
}

TEST_P(UnfilterRows, EveryPairOfFiltersGoesUnderEveryOther) {
    // Pairs in each place of the eight that go together: the first is Paeth, so that they do.
    for (std::uint8_t one = 0; one < rowFilterCount; ++one)
        for (std::uint8_t two = 0; two < rowFilterCount; ++two)
            for (std::size_t at = 1; at < 7; ++at)
                for (const std::size_t pixel : {1U, 3U, 4U}) {
                    Bytes filters(9, 4);
                    filters[at] = one, filters[at + 1] = two;
                    expectUndone(filters, 21, pixel);
                }
}

TEST_P(UnfilterRows, StopsWhereThereIsNoSuchFilter) {
    for (const std::size_t pixel : {1U, 3U, 4U})
        for (std::size_t at = 0; at < 20; ++at) {
            Bytes stored;
            for (std::size_t y = 0; y < 20; ++y) {
                stored.push_back(y == at ? 5 : 4);
                stored.resize(stored.size() + 5 * pixel);
            }
            EXPECT_EQ(undone(stored, 5, pixel, 5), Words()) << "row " << at;
        }
}

TEST_P(UnfilterRows, ThePaethPredictionIsExactForAllNeighbours) {
    // Rows of three pixels, a nought and c over b and over a: the second and third in the row
    // below have a to their left, b above, and c above left, for four c at a time.
    for (std::uint32_t a = 0; a < 256; a += 3)
        for (std::uint32_t b = 0; b < 256; b += 5)
            for (std::uint32_t c = 0; c < 256; c += 4) {
                Bytes stored{0};
                for (std::uint32_t i = 0; i < 4; ++i)
                    stored.push_back(static_cast<std::uint8_t>(c + i));
                stored.insert(stored.end(), 4, static_cast<std::uint8_t>(b));
                stored.push_back(4);
                for (std::uint32_t i = 0; i < 4; ++i)  // over c, right of nothing: predicted as c
                    stored.push_back(static_cast<std::uint8_t>(a - (c + i)));
                stored.resize(18);
                const Words rows = undone(stored, 2, 4, 2);
                for (std::uint32_t i = 0; i < 4; ++i)
                    ASSERT_EQ(rows[3] >> (8 * i) & 255,
                              prediction(RowFilter::paeth, static_cast<int>(a), static_cast<int>(b),
                                         static_cast<int>(c + i)))
                        << a << ", " << b << ", " << c + i;
            }
}

}  // namespace
}  // namespace pictal::kernels
