#include "PictalCore/Platform/Graphics/Kernels/FilterRows.h"

#include <algorithm>
#include <cstring>

namespace pictal::kernels {

namespace {

using Words = std::span<const std::uint32_t>;
using Bytes = std::span<const std::uint8_t>;
using Costs = std::array<std::uint64_t, rowFilterCount>;

PICTAL_BODY void packRGBBody(Words pixels, std::uint8_t* to) {
    std::size_t i = 0;
    for (; i + 4 <= pixels.size(); i += 4, to += 12) {
        const std::uint32_t first = (pixels[i] & 0xFFFFFF) | pixels[i + 1] << 24;
        const std::uint32_t second = (pixels[i + 1] >> 8 & 0xFFFF) | pixels[i + 2] << 16;
        const std::uint32_t third = (pixels[i + 2] >> 16 & 0xFF) | pixels[i + 3] << 8;
        std::memcpy(to, &first, 4);
        std::memcpy(to + 4, &second, 4);
        std::memcpy(to + 8, &third, 4);
    }
    for (; i < pixels.size(); ++i, to += 3)
        std::memcpy(to, &pixels[i], 3);
}

PICTAL_BODY std::uint8_t paethPrediction(std::uint8_t left, std::uint8_t up, std::uint8_t upLeft) {
    const auto a = static_cast<std::int16_t>(left);
    const auto b = static_cast<std::int16_t>(up);
    const auto c = static_cast<std::int16_t>(upLeft);
    const auto distance = [](std::int16_t difference) {
        return static_cast<std::int16_t>(difference < 0 ? -difference : difference);
    };
    const std::int16_t toLeft = distance(static_cast<std::int16_t>(b - c));
    const std::int16_t toUp = distance(static_cast<std::int16_t>(a - c));
    const std::int16_t toUpLeft = distance(static_cast<std::int16_t>(a + b - c - c));
    const std::int16_t upOrUpLeft = toUp <= toUpLeft ? b : c;
    return static_cast<std::uint8_t>(((toLeft <= toUp) & (toLeft <= toUpLeft)) ? a : upOrUpLeft);
}

PICTAL_BODY std::uint8_t averagePrediction(std::uint8_t left, std::uint8_t up) {
    return static_cast<std::uint8_t>((left + up) >> 1);
}

/// What is left of a byte: its distance from the prediction, as an absolute signed byte.
PICTAL_BODY std::uint8_t cost(std::uint8_t byte, std::uint8_t prediction) {
    const auto rest = static_cast<std::uint8_t>(byte - prediction);
    const auto negated = static_cast<std::uint8_t>(-rest);
    return rest < negated ? rest : negated;
}

PICTAL_BODY Costs filterCostsBody(Bytes row, const std::uint8_t* above, std::size_t pixel) {
    // Sums of at most 128 each fit 16 bits for a block of this many.
    constexpr std::size_t block = 256;
    Costs costs{};
    for (std::size_t start = 0; start < row.size(); start += block) {
        const std::uint8_t* const x = row.data() + start;
        const std::uint8_t* const up = above + start;
        const std::uint8_t* const left = x - pixel;
        const std::uint8_t* const upLeft = up - pixel;
        const std::size_t count = std::min(block, row.size() - start);
        std::uint16_t none = 0, sub = 0, upward = 0, average = 0, paeth = 0;
        for (std::size_t i = 0; i < count; ++i) {
            none = static_cast<std::uint16_t>(none + cost(x[i], 0));
            sub = static_cast<std::uint16_t>(sub + cost(x[i], left[i]));
            upward = static_cast<std::uint16_t>(upward + cost(x[i], up[i]));
            average =
                static_cast<std::uint16_t>(average + cost(x[i], averagePrediction(left[i], up[i])));
            paeth = static_cast<std::uint16_t>(
                paeth + cost(x[i], paethPrediction(left[i], up[i], upLeft[i])));
        }
        costs[0] += none;
        costs[1] += sub;
        costs[2] += upward;
        costs[3] += average;
        costs[4] += paeth;
    }
    return costs;
}

PICTAL_BODY void filterBody(RowFilter filter, Bytes row, const std::uint8_t* above,
                            std::size_t pixel, std::uint8_t* __restrict to) {
    const std::uint8_t* const left = row.data() - pixel;
    const std::uint8_t* const upLeft = above - pixel;
    const auto put = [&](auto prediction) {
        for (std::size_t i = 0; i < row.size(); ++i)
            to[i] = static_cast<std::uint8_t>(row[i] - prediction(i));
    };
    switch (filter) {
        case RowFilter::none:
            std::memcpy(to, row.data(), row.size());
            break;
        case RowFilter::sub:
            put([=](std::size_t i) { return left[i]; });
            break;
        case RowFilter::up:
            put([=](std::size_t i) { return above[i]; });
            break;
        case RowFilter::average:
            put([=](std::size_t i) { return averagePrediction(left[i], above[i]); });
            break;
        case RowFilter::paeth:
            put([=](std::size_t i) { return paethPrediction(left[i], above[i], upLeft[i]); });
            break;
    }
}

template <template <auto> class At>
constexpr FilterRowKernels tableAt{
    At<packRGBBody>::run,
    At<filterCostsBody>::run,
    At<filterBody>::run,
};

}  // namespace

const FilterRowKernels& filterRowKernels(Target target) {
    return tableFor(target, tableAt<AtPlain>, tableAt<AtV3>, tableAt<AtV4>);
}

}  // namespace pictal::kernels
