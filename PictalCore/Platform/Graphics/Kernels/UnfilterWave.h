#pragma once

#include "PictalCore/Platform/Graphics/Kernels/PixelVectors.h"
#include "PictalCore/Platform/Graphics/Kernels/UnfilterRows.h"

/// Eight rows of stored pixels at once, for UnfilterRows.cpp.
///
/// Rows are under way one pixel behind the row above. Two rows share a lane of a vector, the upper
/// row in its lower half, and the pairs that do not share a vector do not wait for each other: what
/// one needs of the pair above it was done one step before. Four steps are taken together, pair by
/// pair, so that pixels are loaded and stored four at a time.
///
/// With two lanes the second one has the lower four rows. It does not look at the first one but at
/// the pixels that came out of it, and so is as far behind as these take to be stored: a wave of
/// its own.
namespace pictal::kernels::wave {

using namespace vectors;

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

/// What the prediction of each row looks at. Without them Paeth's is another filter's: that of up
/// without left and upper left, and so on.
template <class Pairs>
struct Masks {
    Pairs left, up, upLeft, average;

    /// Lets the component i have the filter.
    PICTAL_BODY void set(std::size_t i, std::uint8_t code) {
        using enum RowFilter;
        const auto filter = static_cast<RowFilter>(code);
        left[i] = static_cast<std::int16_t>(-int{filter == sub || filter == paeth});
        this->up[i] = static_cast<std::int16_t>(-int{filter == RowFilter::up || filter == paeth});
        upLeft[i] = static_cast<std::int16_t>(-int{filter == paeth});
        this->average[i] = static_cast<std::int16_t>(-int{filter == RowFilter::average});
    }
};

template <bool masked, class Pairs>
PICTAL_BODY Pairs prediction(Pairs left, Pairs up, Pairs upLeft, const Masks<Pairs>& masks) {
    if constexpr (!masked) return paethPrediction(left, up, upLeft);
    const Pairs paeth = paethPrediction(left & masks.left, up & masks.up, upLeft & masks.upLeft);
    return paeth | (((left + up) >> 1) & masks.average);
}

/// @tparam alpha  is or-ed to every pixel
template <std::size_t lanes, std::size_t pixelBytes, std::uint32_t alpha, bool masked>
class Wave {
    using In = InLanes<lanes>;
    using Words = typename In::Words;
    using Pairs = typename In::Pairs;

    static constexpr std::size_t rowsPerLane = unfilteredAtOnce / lanes;
    static constexpr std::size_t pairsPerLane = rowsPerLane / 2;
    /// How many steps a row is behind the first: a lane begins when four steps of the last row
    /// above it are stored.
    static constexpr std::size_t lag(std::size_t row) {
        return row / rowsPerLane * (rowsPerLane + stepCount - 1) + row % rowsPerLane;
    }
    static constexpr std::size_t greatestLag = lag(unfilteredAtOnce - 1);

  public:
    PICTAL_BODY Wave(const StoredRows& from, const std::uint32_t* above, const PixelRows& to)
        : above_(above), width_(to.width) {
        for (std::size_t i = 0; i < unfilteredAtOnce; ++i) {
            stored_[i] = from.first + i * from.step + 1;
            pixels_[i] = to.first + i * to.stride;
            const std::size_t inLane = i % rowsPerLane,
                              first = i / rowsPerLane * 8 + inLane % 2 * 4;
            for (std::size_t c = 0; c < 4; ++c)
                masks_[inLane / 2].set(first + c, from.first[i * from.step]);
        }
    }

    PICTAL_BODY void run() {
        const std::size_t steps = width_ + greatestLag;
        std::size_t t = 0;
        for (; t < greatestLag; t += stepCount)
            take<true>(t);
        for (; t + stepCount <= width_; t += stepCount)
            take<false>(t);
        for (; t < steps; t += stepCount)
            take<true>(t);
    }

  private:
    /// Whether row i has a pixel at step t.
    [[nodiscard]] PICTAL_BODY bool hasPixel(std::size_t i, std::size_t t) const {
        return t >= lag(i) && t - lag(i) < width_;
    }
    /// The pixels of row i at steps t to t + 3. At the edges those outside the row are zeros, so
    /// that a row which has not begun leaves zeros for itself and the next.
    template <bool edge>
    [[nodiscard]] PICTAL_BODY Words4 load(std::size_t i, std::size_t t) const {
        if constexpr (!edge)
            return loadPixels < pixelBytes, lanes == 2 > (stored_[i] + (t - lag(i)) * pixelBytes);
        Words4 words{};
        for (std::size_t j = 0; j < stepCount; ++j)
            if (hasPixel(i, t + j)) {
                std::uint32_t word = 0;
                std::memcpy(&word, stored_[i] + (t + j - lag(i)) * pixelBytes, 4);
                words[j] = word;
            }
        return words;
    }
    /// What is above row i, the first one of its lane.
    template <bool edge>
    [[nodiscard]] PICTAL_BODY Words4 loadAbove(std::size_t i, std::size_t t) const {
        const std::uint32_t* const row = i == 0 ? above_ : pixels_[i - 1];
        if constexpr (!edge) return loadWords(row + (t - lag(i)));
        Words4 words{};
        for (std::size_t j = 0; j < stepCount; ++j)
            if (hasPixel(i, t + j)) words[j] = row[t + j - lag(i)];
        return words;
    }
    template <bool edge>
    PICTAL_BODY void store(Words4 words, std::size_t i, std::size_t t) {
        words |= alpha;
        if constexpr (!edge) {
            storeWords(words, pixels_[i] + (t - lag(i)));
            return;
        }
        for (std::size_t j = 0; j < stepCount; ++j)
            if (hasPixel(i, t + j)) pixels_[i][t + j - lag(i)] = words[j];
    }

    /// The same row of each lane.
    template <bool edge>
    [[nodiscard]] PICTAL_BODY Words loadRows(std::size_t i, std::size_t t) const {
        Words4 parts[lanes];
        for (std::size_t lane = 0; lane < lanes; ++lane)
            parts[lane] = load<edge>(lane * rowsPerLane + i, t);
        return In::joined(parts);
    }
    template <bool edge>
    PICTAL_BODY void storeRows(Words words, std::size_t i, std::size_t t) {
        for (std::size_t lane = 0; lane < lanes; ++lane)
            store<edge>(In::lane(words, lane), lane * rowsPerLane + i, t);
    }

    /// Four steps of every pair.
    template <bool edge>
    PICTAL_BODY void take(std::size_t t) {
        Words4 parts[lanes];
        for (std::size_t lane = 0; lane < lanes; ++lane)
            parts[lane] = loadAbove<edge>(lane * rowsPerLane, t);
        // The upper half is what stands above the pair's upper row.
        const Words aboveAll = In::joined(parts), swapped = In::swapped(aboveAll);
        Pairs above[stepCount] = {In::lowerPair(swapped), In::lowerPair(aboveAll),
                                  In::upperPair(swapped), In::upperPair(aboveAll)};
        for (std::size_t k = 0; k < pairsPerLane; ++k) {
            const Words upper = loadRows<edge>(2 * k, t), lower = loadRows<edge>(2 * k + 1, t);
            const Words firstTwo = In::zippedLower(upper, lower);
            const Words lastTwo = In::zippedUpper(upper, lower);
            const Pairs stored[stepCount] = {In::lowerPair(firstTwo), In::upperPair(firstTwo),
                                             In::lowerPair(lastTwo), In::upperPair(lastTwo)};
            Pairs done[stepCount];
            Pairs left = left_[k], upLeft = upLeft_[k];
            for (std::size_t j = 0; j < stepCount; ++j) {
                const Pairs up = In::across(above[j], left);
                above[j] = left;  // for the pair below, which is one step behind
                left = sum(stored[j], prediction<masked>(left, up, upLeft, masks_[k]));
                upLeft = up;
                done[j] = left;
            }
            left_[k] = left;
            upLeft_[k] = upLeft;
            const Words one = In::packed(done[0], done[1]), two = In::packed(done[2], done[3]);
            storeRows<edge>(In::evens(one, two), 2 * k, t);
            storeRows<edge>(In::odds(one, two), 2 * k + 1, t);
        }
    }

    const std::uint8_t* stored_[unfilteredAtOnce];
    std::uint32_t* pixels_[unfilteredAtOnce];
    const std::uint32_t* above_;
    std::size_t width_;
    Masks<Pairs> masks_[pairsPerLane] = {};
    Pairs left_[pairsPerLane] = {};
    Pairs upLeft_[pairsPerLane] = {};
};

}  // namespace pictal::kernels::wave
