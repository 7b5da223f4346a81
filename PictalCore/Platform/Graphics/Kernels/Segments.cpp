#include "PictalCore/Platform/Graphics/Kernels/Segments.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace pictal::kernels {

namespace {

/// Eight words at once. Loops over so few are unrolled before they are vectorised, so the vectors
/// are spelt out; every target has them, in halves where its registers are smaller.
using Words [[gnu::vector_size(32)]] = std::uint32_t;
using Bytes [[gnu::vector_size(8)]] = std::uint8_t;
using Halves [[gnu::vector_size(16)]] = std::uint16_t;

template <class Vector, class Element>
PICTAL_BODY void load(Vector& vector, const Element* from) {
    std::memcpy(&vector, from, sizeof vector);
}

/// Odd multipliers, one a pixel: steps of 2^64 / the golden ratio, stirred as SplitMix64 does.
constexpr std::array<std::uint32_t, segmentPixels> multipliers = [] {
    std::array<std::uint32_t, segmentPixels> result{};
    std::uint64_t state = 0;
    for (std::uint32_t& multiplier : result) {
        state += 0x9E3779B97F4A7C15;
        std::uint64_t mixed = (state ^ (state >> 30)) * 0xBF58476D1CE4E5B9;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EB;
        multiplier = static_cast<std::uint32_t>(mixed >> 32) | 1;
    }
    return result;
}();

/// The pixels of half a segment, folded: `hash` gathers products, `sum` pairs of 16-bit sums.
PICTAL_BODY void fold(const std::uint32_t* pixels, const std::uint32_t* factors, Words& hash,
                      Words& sum) {
    for (std::size_t i = 0; i < segmentPixels / 2; i += segmentBlock) {
        Words word, factor;
        load(word, pixels + i);
        load(factor, factors + i);
        // Multiplying only carries differences upward; this brings them down as well.
        hash += (word ^ (word >> 16)) * factor;
        sum += (word & 0x00FF00FF) + ((word >> 8) & 0x00FF00FF);
    }
    sum = (sum & 0xFFFF) + (sum >> 16);
}

/// Returned by reference: below AVX a vector in a register would be another calling convention.
PICTAL_BODY void addPairs(const Words& left, const Words& right, Words& sums) {
    sums = __builtin_shufflevector(left, right, 0, 2, 4, 6, 8, 10, 12, 14) +
           __builtin_shufflevector(left, right, 1, 3, 5, 7, 9, 11, 13, 15);
}

PICTAL_BODY bool spreadExceeds(const Words& sums, std::uint32_t limit) {
    std::uint32_t least = sums[0], most = sums[0];
    for (std::size_t i = 1; i < 8; ++i) {
        least = sums[i] < least ? sums[i] : least;
        most = sums[i] > most ? sums[i] : most;
    }
    return most - least > limit;
}

PICTAL_BODY std::uint64_t hashSegmentsBody(const std::uint32_t* row,
                                           std::span<const std::uint32_t> starts,
                                           std::uint32_t* hashes) {
    constexpr std::uint32_t texture = 48;
    std::uint64_t textured = 0;
    for (std::size_t s = 0; s < starts.size(); ++s) {
        const std::uint32_t* const pixels = row + starts[s];
        Words hash{}, left{}, right{};
        fold(pixels, multipliers.data(), hash, left);
        fold(pixels + segmentPixels / 2, multipliers.data() + segmentPixels / 2, hash, right);
        Words factor;
        load(factor, multipliers.data() + 24);
        hash = (hash ^ (hash >> 15)) * factor;
        std::uint32_t folded = 0;
        for (std::size_t i = 0; i < 8; ++i)
            folded += hash[i];
        hashes[s] = folded;
        Words sums;
        addPairs(left, right, sums);
        textured |= std::uint64_t{spreadExceeds(sums, texture)} << segmentBit(s);
    }
    return textured;
}

PICTAL_BODY void sumSegmentsBody(const std::uint32_t* row, std::span<const std::uint32_t> starts,
                                 SegmentSums* sums) {
    for (std::size_t s = 0; s < starts.size(); ++s) {
        const std::uint32_t* const pixels = row + starts[s];
        Words hash{}, left{}, right{};
        fold(pixels, multipliers.data(), hash, left);
        fold(pixels + segmentPixels / 2, multipliers.data(), hash, right);
        Words pairs;
        addPairs(left, right, pairs);
        const Halves result = __builtin_convertvector(pairs, Halves);
        std::memcpy(&sums[s], &result, sizeof result);
    }
}

PICTAL_BODY std::uint64_t equalSegmentsBody(const std::uint32_t* a, const std::uint32_t* b,
                                            std::size_t blocks) {
    Words bits{};
    for (std::size_t block = 0; block < blocks; ++block) {
        Words first, second;
        load(first, a + block * segmentBlock);
        load(second, b + block * segmentBlock);
        const auto equal = first == second;
        bits |= reinterpret_cast<const Words&>(equal) & (1U << block);
    }
    const Bytes packed = __builtin_convertvector(bits, Bytes);
    return std::bit_cast<std::uint64_t>(packed);
}

PICTAL_BODY std::uint64_t alikeSegmentsBody(const SegmentSums* a, const SegmentSums* b,
                                            std::size_t count, std::uint16_t tolerance) {
    std::uint64_t bits = 0;
    for (std::size_t s = 0; s < count; ++s) {
        Halves first, second;
        load(first, a + s);
        load(second, b + s);
        const Halves difference = first > second ? first - second : second - first;
        const auto far = difference > tolerance;
        const auto words = std::bit_cast<std::array<std::uint64_t, 2>>(far);
        bits |= std::uint64_t{(words[0] | words[1]) == 0} << segmentBit(s);
    }
    return bits;
}

PICTAL_BODY void addUpBody(std::span<const std::uint64_t> words, std::uint32_t* counts) {
    std::uint32_t count = counts[0];
    for (std::size_t i = 0; i < words.size(); ++i) {
        count += static_cast<std::uint32_t>(std::popcount(words[i]));
        counts[i + 1] = count;
    }
}

template <template <auto> class At>
constexpr SegmentKernels tableAt{
    At<hashSegmentsBody>::run,  At<sumSegmentsBody>::run, At<equalSegmentsBody>::run,
    At<alikeSegmentsBody>::run, At<addUpBody>::run,
};

}  // namespace

const SegmentKernels& segmentKernels(Target target) {
    // Vectors of 256 bits are as fast as there is memory for.
    return tableFor(target, tableAt<AtPlain>, tableAt<AtV3>, tableAt<AtV3>);
}

}  // namespace pictal::kernels
