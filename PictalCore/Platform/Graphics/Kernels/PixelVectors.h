#pragma once

#include "PictalCore/Platform/Graphics/Kernels/Targets.h"
#include "PictalCore/Platform/Graphics/Kernels/UnfilterRows.h"

#include <cstring>

/// Four pixels in a vector of the processor's own size, and two with 16 bits for each component.
namespace pictal::kernels::vectors {

using Bytes16 [[gnu::vector_size(16)]] = std::uint8_t;
using Bytes8 [[gnu::vector_size(8)]] = std::uint8_t;
using Words4 [[gnu::vector_size(16)]] = std::uint32_t;
/// Two pixels; a component fills the lower half of its 16 bits.
using Pair [[gnu::vector_size(16)]] = std::int16_t;

template <class To, class From>
PICTAL_BODY To as(From from) {
    static_assert(sizeof(To) == sizeof(From));
    return reinterpret_cast<To>(from);
}

PICTAL_BODY Words4 loadWords(const void* from) {
    Words4 words;
    std::memcpy(&words, from, sizeof words);
    return words;
}
PICTAL_BODY void storeWords(Words4 words, void* to) {
    std::memcpy(to, &words, sizeof words);
}

/// Four stored pixels as words. Of three bytes, the highest of each word is whatever comes next;
/// four bytes behind the last are read.
/// @tparam shuffles  whether the target can put bytes in any order at once
template <std::size_t pixelBytes, bool shuffles>
PICTAL_BODY Words4 loadPixels(const std::uint8_t* from) {
    if constexpr (pixelBytes == 4) {
        return loadWords(from);
    } else if constexpr (shuffles) {
        const auto bytes = as<Bytes16>(loadWords(from));
        return as<Words4>(__builtin_shufflevector(bytes, bytes, 0, 1, 2, 3, 3, 4, 5, 6, 6, 7, 8, 9,
                                                  9, 10, 11, 12));
    } else {
        std::uint32_t words[4];
        for (int i = 0; i < 4; ++i)
            std::memcpy(&words[i], from + i * 3, 4);
        return Words4{words[0], words[1], words[2], words[3]};
    }
}

/// Bytes are added without carries from one to the next.
template <class Vector>
PICTAL_BODY Vector sum(Vector a, Vector b) {
    return as<Vector>(as<Bytes16>(a) + as<Bytes16>(b));
}

/// The first two pixels, or the last two.
PICTAL_BODY Pair lowerPair(Words4 pixels) {
    const auto bytes = as<Bytes16>(pixels);
    return as<Pair>(__builtin_shufflevector(bytes, Bytes16{}, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5,
                                            21, 6, 22, 7, 23));
}
PICTAL_BODY Pair upperPair(Words4 pixels) {
    const auto bytes = as<Bytes16>(pixels);
    return as<Pair>(__builtin_shufflevector(bytes, Bytes16{}, 8, 24, 9, 25, 10, 26, 11, 27, 12, 28,
                                            13, 29, 14, 30, 15, 31));
}

/// Two pairs as four words.
PICTAL_BODY Words4 packed(Pair lower, Pair upper) {
    const auto l = __builtin_convertvector(lower, Bytes8);
    const auto u = __builtin_convertvector(upper, Bytes8);
    return as<Words4>(
        __builtin_shufflevector(l, u, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15));
}

}  // namespace pictal::kernels::vectors
