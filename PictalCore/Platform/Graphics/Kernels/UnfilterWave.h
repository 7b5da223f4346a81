#pragma once

#include "PictalCore/Platform/Graphics/Kernels/PixelVectors.h"

/// Eight rows of stored pixels at once, for UnfilterRows.cpp.
///
/// At step t row i does its pixel t − i. Two rows share a vector, the upper row in its lower half,
/// so that four such pairs of rows are under way that do not wait for each other: what a pair needs
/// of the pair above it was done one step before. Four steps are taken together, pair by pair, so
/// that pixels are loaded and stored four at a time.
namespace pictal::kernels::wave {

using namespace vectors;

inline constexpr std::size_t pairCount = unfilteredAtOnce / 2;
inline constexpr std::size_t stepCount = 4;

/// Of left, up and upper left the one that is nearest to left + up − upLeft, in this order when two
/// are as near. Written with a = left and so on: where c lies between a and b, the sum does too,
/// and c is nearest unless 3c − a − b passes one of them.
template <class Components>
PICTAL_BODY Components paethPrediction(Components left, Components up, Components upLeft) {
    const Components threshold = upLeft + upLeft + upLeft - up - left;
    const Components low = left < up ? left : up;
    const Components high = left < up ? up : left;
    const Components lowOrUpLeft = threshold >= high ? low : upLeft;
    return low >= threshold ? high : lowOrUpLeft;
}

/// What the prediction of each row of a pair looks at. Without them Paeth's is another filter's:
/// that of up without left and upper left, and so on.
struct Masks {
    Pair left, up, upLeft, average;
};

/// The masks of the filters of two rows.
PICTAL_BODY Masks masksOf(std::uint8_t upper, std::uint8_t lower) {
    const auto of = [=](auto&& isWanted) {
        const auto u = static_cast<std::int16_t>(-isWanted(static_cast<RowFilter>(upper)));
        const auto l = static_cast<std::int16_t>(-isWanted(static_cast<RowFilter>(lower)));
        return Pair{u, u, u, u, l, l, l, l};
    };
    using enum RowFilter;
    return {of([](RowFilter it) { return int{it == sub || it == paeth}; }),
            of([](RowFilter it) { return int{it == up || it == paeth}; }),
            of([](RowFilter it) { return int{it == paeth}; }),
            of([](RowFilter it) { return int{it == average}; })};
}

template <bool masked>
PICTAL_BODY Pair prediction(Pair left, Pair up, Pair upLeft, const Masks& masks) {
    if constexpr (!masked) return paethPrediction(left, up, upLeft);
    const Pair paeth = paethPrediction(left & masks.left, up & masks.up, upLeft & masks.upLeft);
    return paeth | (((left + up) >> 1) & masks.average);
}

template <std::size_t pixelBytes, std::uint32_t alpha, bool masked, bool shuffles>
class Wave {
  public:
    PICTAL_BODY Wave(const StoredRows& from, const std::uint32_t* above, const PixelRows& to)
        : above_(above), width_(to.width) {
        for (std::size_t i = 0; i < unfilteredAtOnce; ++i) {
            // Where the row's pixel 0 is, were it not that many pixels behind.
            stored_[i] = from.first + i * from.step + 1;
            pixels_[i] = to.first + i * to.stride;
        }
        for (std::size_t k = 0; k < pairCount; ++k)
            masks_[k] = masksOf(from.first[2 * k * from.step], from.first[(2 * k + 1) * from.step]);
    }

    PICTAL_BODY void run() {
        const std::size_t steps = width_ + unfilteredAtOnce - 1;
        std::size_t t = 0;
        for (; t < unfilteredAtOnce && t < steps; t += stepCount)
            take<true>(t);
        for (; t + stepCount <= width_; t += stepCount)
            take<false>(t);
        for (; t < steps; t += stepCount)
            take<true>(t);
    }

  private:
    /// The pixels of row i at steps t to t + 3. At the edges those outside the row are zeros, so
    /// that a row which has not begun leaves zeros for itself and the next.
    template <bool edge>
    PICTAL_BODY Words4 load(std::size_t i, std::size_t t) const {
        if constexpr (!edge)
            return loadPixels<pixelBytes, shuffles>(stored_[i] + (t - i) * pixelBytes);
        Words4 words{};
        for (std::size_t j = 0; j < stepCount; ++j)
            if (t + j >= i && t + j - i < width_) {
                std::uint32_t word = 0;
                std::memcpy(&word, stored_[i] + (t + j - i) * pixelBytes, 4);
                words[j] = word;
            }
        return words;
    }
    template <bool edge>
    PICTAL_BODY Words4 loadAbove(std::size_t t) const {
        if constexpr (!edge) return loadWords(above_ + t);
        Words4 words{};
        for (std::size_t j = 0; j < stepCount; ++j)
            if (t + j < width_) words[j] = above_[t + j];
        return words;
    }
    template <bool edge>
    PICTAL_BODY void store(Words4 words, std::size_t i, std::size_t t) {
        words |= alpha;
        if constexpr (!edge) {
            storeWords(words, pixels_[i] + (t - i));
            return;
        }
        for (std::size_t j = 0; j < stepCount; ++j)
            if (t + j >= i && t + j - i < width_) pixels_[i][t + j - i] = words[j];
    }

    /// Four steps of every pair.
    template <bool edge>
    PICTAL_BODY void take(std::size_t t) {
        // The upper half is what stands above the pair's upper row.
        const Words4 aboveAll = loadAbove<edge>(t);
        const Words4 swapped = __builtin_shufflevector(aboveAll, aboveAll, 1, 0, 3, 2);
        Pair above[stepCount] = {lowerPair(swapped), lowerPair(aboveAll), upperPair(swapped),
                                 upperPair(aboveAll)};
        for (std::size_t k = 0; k < pairCount; ++k) {
            const Words4 upper = load<edge>(2 * k, t), lower = load<edge>(2 * k + 1, t);
            const Words4 firstTwo = __builtin_shufflevector(upper, lower, 0, 4, 1, 5);
            const Words4 lastTwo = __builtin_shufflevector(upper, lower, 2, 6, 3, 7);
            const Pair stored[stepCount] = {lowerPair(firstTwo), upperPair(firstTwo),
                                            lowerPair(lastTwo), upperPair(lastTwo)};
            Pair done[stepCount];
            Pair left = left_[k], upLeft = upLeft_[k];
            for (std::size_t j = 0; j < stepCount; ++j) {
                const Pair up = __builtin_shufflevector(above[j], left, 4, 5, 6, 7, 8, 9, 10, 11);
                above[j] = left;  // for the pair below, which is one step behind
                left = sum(stored[j], prediction<masked>(left, up, upLeft, masks_[k]));
                upLeft = up;
                done[j] = left;
            }
            left_[k] = left;
            upLeft_[k] = upLeft;
            const Words4 one = packed(done[0], done[1]), two = packed(done[2], done[3]);
            store<edge>(__builtin_shufflevector(one, two, 0, 2, 4, 6), 2 * k, t);
            store<edge>(__builtin_shufflevector(one, two, 1, 3, 5, 7), 2 * k + 1, t);
        }
    }

    const std::uint8_t* stored_[unfilteredAtOnce];
    std::uint32_t* pixels_[unfilteredAtOnce];
    const std::uint32_t* above_;
    std::size_t width_;
    Masks masks_[pairCount];
    Pair left_[pairCount] = {};
    Pair upLeft_[pairCount] = {};
};

}  // namespace pictal::kernels::wave
