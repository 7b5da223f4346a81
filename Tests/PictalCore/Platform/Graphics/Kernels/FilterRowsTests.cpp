#include "PictalCore/Platform/Graphics/Kernels/Arithmetic.h"
#include "PictalCore/Platform/Graphics/Kernels/FilterRows.h"
#include "Tests/Support/Reference/RowFilters.h"

#include <algorithm>
#include <cstdlib>

#include <gtest/gtest.h>

namespace pictal::kernels {
namespace {

using namespace reference;

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
        for (const std::size_t pixel : {1U, 3U, 4U}) {
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

TEST_P(FilterRows, PacksAtEveryWidth) {
    for (std::size_t width = 1; width <= 130; ++width) {
        const Words row = randomWords(width);
        Bytes expected, packed(width * 3 + 64, 0xA5);
        for (const std::uint32_t word : row)
            for (int shift = 0; shift < 24; shift += 8)
                expected.push_back(static_cast<std::uint8_t>(word >> shift));
        expected.resize(packed.size(), 0xA5);
        kernels_.packRGB(row, packed.data());
        EXPECT_EQ(packed, expected) << width;
    }
}

}  // namespace
}  // namespace pictal::kernels
