#include "PictalCore/Platform/Graphics/Kernels/UnfilterRows.h"

#include "PictalCore/Platform/Graphics/Kernels/UnfilterByteWave.h"
#include "PictalCore/Platform/Graphics/Kernels/UnfilterWave.h"

#include <algorithm>

namespace pictal::kernels {

namespace {

using namespace vectors;

/// Four means of bytes, rounded down.
PICTAL_BODY std::uint32_t mean(std::uint32_t a, std::uint32_t b) {
    return (a & b) + (((a ^ b) >> 1) & 0x7F7F7F7F);
}

/// Four sums of bytes, without carries from one to the next.
PICTAL_BODY std::uint32_t wordSum(std::uint32_t a, std::uint32_t b) {
    return ((a & 0x7F7F7F7F) + (b & 0x7F7F7F7F)) ^ ((a ^ b) & 0x80808080);
}

/// A row of which every pixel is known without its left neighbour, or waits for it only in a sum.
/// @param next  what four stored pixels become, given what is above them
template <std::size_t pixelBytes, bool shuffles>
PICTAL_BODY void byFours(const std::uint8_t* from, const std::uint32_t* above, const PixelRows& to,
                         auto&& next) {
    std::size_t x = 0;
    for (; x + 4 <= to.width; x += 4)
        storeWords(
            next(loadPixels<pixelBytes, shuffles>(from + x * pixelBytes), loadWords(above + x)),
            to.first + x);
    std::uint32_t stored[4] = {}, up[4] = {}, done[4];
    for (std::size_t i = 0; x + i < to.width; ++i) {
        std::memcpy(&stored[i], from + (x + i) * pixelBytes, 4);
        up[i] = above[x + i];
    }
    storeWords(next(loadWords(stored), loadWords(up)), done);
    std::copy_n(done, to.width - x, to.first + x);
}

template <std::size_t pixelBytes, bool shuffles>
PICTAL_BODY void paethRow(const std::uint8_t* from, const std::uint32_t* above, const PixelRows& to,
                          std::uint32_t alpha) {
    using In = InLanes<1>;
    Pair left{}, upLeft{};
    for (std::size_t x = 0; x < to.width; ++x) {
        std::uint32_t word = 0;
        std::memcpy(&word, from + x * pixelBytes, 4);
        const Pair up = In::lowerPair(Words4{above[x], 0, 0, 0});
        left = sum(In::lowerPair(Words4{word, 0, 0, 0}), wave::paethPrediction(left, up, upLeft));
        upLeft = up;
        to.first[x] = In::packed(left, left)[0] | alpha;
    }
}

template <std::size_t pixelBytes, std::uint32_t alpha, bool shuffles>
PICTAL_BODY void unfilterOne(RowFilter filter, const std::uint8_t* from, const std::uint32_t* above,
                             const PixelRows& to) {
    const auto put = [&](auto&& next) { byFours<pixelBytes, shuffles>(from, above, to, next); };
    switch (filter) {
        case RowFilter::none:
            put([](Words4 stored, Words4) { return stored | alpha; });
            break;
        case RowFilter::sub: {
            Words4 left{};
            put([&](Words4 stored, Words4) {
                const Words4 twos =
                    sum(stored, __builtin_shufflevector(stored, Words4{}, 4, 0, 1, 2));
                const Words4 fours = sum(twos, __builtin_shufflevector(twos, Words4{}, 4, 4, 0, 1));
                const Words4 done = sum(fours, left);
                left = __builtin_shufflevector(done, done, 3, 3, 3, 3);
                return done | alpha;
            });
            break;
        }
        case RowFilter::up:
            put([](Words4 stored, Words4 up) { return sum(stored, up) | alpha; });
            break;
        case RowFilter::average: {
            std::uint32_t left = 0;
            for (std::size_t x = 0; x < to.width; ++x) {
                std::uint32_t word = 0;
                std::memcpy(&word, from + x * pixelBytes, 4);
                left = wordSum(word, mean(left, above[x]));
                to.first[x] = left | alpha;
            }
            break;
        }
        case RowFilter::paeth:
            paethRow<pixelBytes, shuffles>(from, above, to, alpha);
            break;
    }
}

constexpr bool isChain(std::uint8_t filter) {
    return filter == static_cast<std::uint8_t>(RowFilter::average) ||
           filter == static_cast<std::uint8_t>(RowFilter::paeth);
}

/// How the next eight rows are best done.
enum class Together { none, mixed, allPaeth };

/// Together where the first one and another are chains; else the first goes faster alone.
Together togetherOf(const std::uint8_t* filters, std::size_t step, std::size_t count) {
    if (count < unfilteredAtOnce || !isChain(filters[0])) return Together::none;
    int chains = 0, paeths = 0;
    for (std::size_t i = 0; i < unfilteredAtOnce; ++i) {
        const std::uint8_t filter = filters[i * step];
        if (filter >= rowFilterCount) return Together::none;
        chains += isChain(filter) ? 1 : 0;
        paeths += filter == static_cast<std::uint8_t>(RowFilter::paeth) ? 1 : 0;
    }
    return chains < 2                   ? Together::none
           : paeths == unfilteredAtOnce ? Together::allPaeth
                                        : Together::mixed;
}

template <std::size_t pixelBytes, std::uint32_t alpha, bool shuffles>
PICTAL_BODY std::size_t unfilterPixels(const StoredRows& from, const std::uint32_t* above,
                                       const PixelRows& to) {
    switch (togetherOf(from.first, from.step, from.count)) {
        case Together::allPaeth:
            wave::Wave<shuffles ? 2 : 1, pixelBytes, alpha, false>(from, above, to).run();
            return unfilteredAtOnce;
        case Together::mixed:
            wave::Wave<shuffles ? 2 : 1, pixelBytes, alpha, true>(from, above, to).run();
            return unfilteredAtOnce;
        case Together::none:
            break;
    }
    if (*from.first >= rowFilterCount) return 0;
    unfilterOne<pixelBytes, alpha, shuffles>(static_cast<RowFilter>(*from.first), from.first + 1,
                                             above, to);
    return 1;
}

PICTAL_BODY std::size_t unfilterBytes(std::uint8_t* first, std::size_t step, std::size_t count,
                                      const std::uint8_t* above) {
    const std::size_t size = step - 1;
    if (togetherOf(first, step, count) != Together::none) {
        wave::ByteWave(first, step, size, above).run();
        return unfilteredAtOnce;
    }
    if (*first >= rowFilterCount) return 0;
    std::uint8_t* const row = first + 1;
    std::uint8_t left = 0, upLeft = 0;
    switch (static_cast<RowFilter>(*first)) {
        case RowFilter::none:
            break;
        case RowFilter::sub:
            for (std::size_t i = 0; i < size; ++i)
                row[i] = left = static_cast<std::uint8_t>(row[i] + left);
            break;
        case RowFilter::up:
            for (std::size_t i = 0; i < size; ++i)
                row[i] = static_cast<std::uint8_t>(row[i] + above[i]);
            break;
        case RowFilter::average:
            for (std::size_t i = 0; i < size; ++i)
                row[i] = left = static_cast<std::uint8_t>(row[i] + ((left + above[i]) >> 1));
            break;
        case RowFilter::paeth:
            for (std::size_t i = 0; i < size; ++i) {
                row[i] = left = static_cast<std::uint8_t>(
                    row[i] + wave::paethPrediction<int>(left, above[i], upLeft));
                upLeft = above[i];
            }
            break;
    }
    return 1;
}

template <template <auto> class At, bool shuffles>
constexpr UnfilterKernels tableAt{
    At<unfilterPixels<3, 0xFF000000, shuffles>>::run,
    At<unfilterPixels<4, 0, shuffles>>::run,
    At<unfilterBytes>::run,
};

}  // namespace

const UnfilterKernels& unfilterKernels(Target target) {
    // Vectors of four pixels gain nothing by the highest target, whose comparisons take longer.
    return tableFor(target, tableAt<AtPlain, false>, tableAt<AtV3, true>, tableAt<AtV3, true>);
}

}  // namespace pictal::kernels
