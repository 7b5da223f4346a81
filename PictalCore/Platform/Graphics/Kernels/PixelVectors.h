#pragma once

#include "PictalCore/Platform/Graphics/Kernels/Targets.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

/// Vectors of pixels, in lanes of 16 bytes that do not mix: four words, or two pixels with 16 bits
/// for each component, of which it fills the lower half.
namespace pictal::kernels::vectors {

template <std::size_t lanes>
struct Vectors {
    using Bytes [[gnu::vector_size(16 * lanes)]] = std::uint8_t;
    using Words [[gnu::vector_size(16 * lanes)]] = std::uint32_t;
    using Pairs [[gnu::vector_size(16 * lanes)]] = std::int16_t;
    using Halves [[gnu::vector_size(16 * lanes)]] = std::uint64_t;
};

using Bytes8 [[gnu::vector_size(8)]] = std::uint8_t;
using Bytes16 = Vectors<1>::Bytes;
using Words4 = Vectors<1>::Words;
using Pair = Vectors<1>::Pairs;

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
        for (std::size_t i = 0; i < 4; ++i)
            std::memcpy(&words[i], from + i * 3, 4);
        return Words4{words[0], words[1], words[2], words[3]};
    }
}

/// Bytes are added without carries from one to the next.
template <class Vector>
PICTAL_BODY Vector sum(Vector a, Vector b) {
    using Bytes = typename Vectors<sizeof(Vector) / 16>::Bytes;
    return as<Vector>(as<Bytes>(a) + as<Bytes>(b));
}

/// What is done alike in each lane.
template <std::size_t lanes>
struct InLanes;

template <>
struct InLanes<1> : Vectors<1> {
    PICTAL_BODY static Words joined(const Words4 (&parts)[1]) { return parts[0]; }
    PICTAL_BODY static Words4 lane(Words words, std::size_t) { return words; }
    PICTAL_BODY static Words swapped(Words a) { return __builtin_shufflevector(a, a, 1, 0, 3, 2); }
    /// The first two words of each in turn, or the last two.
    PICTAL_BODY static Words zippedLower(Words a, Words b) {
        return __builtin_shufflevector(a, b, 0, 4, 1, 5);
    }
    PICTAL_BODY static Words zippedUpper(Words a, Words b) {
        return __builtin_shufflevector(a, b, 2, 6, 3, 7);
    }
    PICTAL_BODY static Words evens(Words a, Words b) {
        return __builtin_shufflevector(a, b, 0, 2, 4, 6);
    }
    PICTAL_BODY static Words odds(Words a, Words b) {
        return __builtin_shufflevector(a, b, 1, 3, 5, 7);
    }
    PICTAL_BODY static Pairs lowerPair(Words words) {
        return as<Pairs>(__builtin_shufflevector(as<Bytes>(words), Bytes{}, 0, 16, 1, 17, 2, 18, 3,
                                                 19, 4, 20, 5, 21, 6, 22, 7, 23));
    }
    PICTAL_BODY static Pairs upperPair(Words words) {
        return as<Pairs>(__builtin_shufflevector(as<Bytes>(words), Bytes{}, 8, 24, 9, 25, 10, 26,
                                                 11, 27, 12, 28, 13, 29, 14, 30, 15, 31));
    }
    /// The second pixel of one and the first of the other.
    PICTAL_BODY static Pairs across(Pairs a, Pairs b) {
        return as<Pairs>(__builtin_shufflevector(as<Halves>(a), as<Halves>(b), 1, 2));
    }
    /// The words of two pixels each.
    PICTAL_BODY static Words packed(Pairs a, Pairs b) {
        const auto lower = __builtin_convertvector(a, Bytes8);
        const auto upper = __builtin_convertvector(b, Bytes8);
        return as<Words>(__builtin_shufflevector(lower, upper, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11,
                                                 12, 13, 14, 15));
    }
};

template <>
struct InLanes<2> : Vectors<2> {
    PICTAL_BODY static Words joined(const Words4 (&parts)[2]) {
        return __builtin_shufflevector(parts[0], parts[1], 0, 1, 2, 3, 4, 5, 6, 7);
    }
    PICTAL_BODY static Words4 lane(Words words, std::size_t index) {
        return index == 0 ? __builtin_shufflevector(words, words, 0, 1, 2, 3)
                          : __builtin_shufflevector(words, words, 4, 5, 6, 7);
    }
    PICTAL_BODY static Words swapped(Words a) {
        return __builtin_shufflevector(a, a, 1, 0, 3, 2, 5, 4, 7, 6);
    }
    PICTAL_BODY static Words zippedLower(Words a, Words b) {
        return __builtin_shufflevector(a, b, 0, 8, 1, 9, 4, 12, 5, 13);
    }
    PICTAL_BODY static Words zippedUpper(Words a, Words b) {
        return __builtin_shufflevector(a, b, 2, 10, 3, 11, 6, 14, 7, 15);
    }
    PICTAL_BODY static Words evens(Words a, Words b) {
        return __builtin_shufflevector(a, b, 0, 2, 8, 10, 4, 6, 12, 14);
    }
    PICTAL_BODY static Words odds(Words a, Words b) {
        return __builtin_shufflevector(a, b, 1, 3, 9, 11, 5, 7, 13, 15);
    }
    PICTAL_BODY static Pairs lowerPair(Words words) {
        return as<Pairs>(__builtin_shufflevector(as<Bytes>(words), Bytes{}, 0, 32, 1, 33, 2, 34, 3,
                                                 35, 4, 36, 5, 37, 6, 38, 7, 39, 16, 48, 17, 49, 18,
                                                 50, 19, 51, 20, 52, 21, 53, 22, 54, 23, 55));
    }
    PICTAL_BODY static Pairs upperPair(Words words) {
        return as<Pairs>(__builtin_shufflevector(
            as<Bytes>(words), Bytes{}, 8, 40, 9, 41, 10, 42, 11, 43, 12, 44, 13, 45, 14, 46, 15, 47,
            24, 56, 25, 57, 26, 58, 27, 59, 28, 60, 29, 61, 30, 62, 31, 63));
    }
    PICTAL_BODY static Pairs across(Pairs a, Pairs b) {
        return as<Pairs>(__builtin_shufflevector(as<Halves>(a), as<Halves>(b), 1, 4, 3, 6));
    }
    PICTAL_BODY static Words packed(Pairs a, Pairs b) {
        return as<Words>(__builtin_shufflevector(as<Bytes>(a), as<Bytes>(b), 0, 2, 4, 6, 8, 10, 12,
                                                 14, 32, 34, 36, 38, 40, 42, 44, 46, 16, 18, 20, 22,
                                                 24, 26, 28, 30, 48, 50, 52, 54, 56, 58, 60, 62));
    }
};

}  // namespace pictal::kernels::vectors
