#include "PictalCore/Platform/Graphics/Kernels/Segments.h"

#include <algorithm>
#include <array>
#include <random>
#include <set>
#include <vector>

#include <gtest/gtest.h>

namespace pictal::kernels {

namespace {

std::vector<std::uint32_t> randomWords(std::size_t count, std::uint32_t seed) {
    std::mt19937 random(seed);
    std::vector<std::uint32_t> words(count);
    std::ranges::generate(words, random);
    return words;
}

std::uint32_t hashOf(const std::vector<std::uint32_t>& pixels, Target target = Target::plain) {
    const std::uint32_t start = 0;
    std::uint32_t hash = 0;
    (void)segmentKernels(target).hashSegments(pixels.data(), {&start, 1}, &hash);
    return hash;
}

}  // namespace

TEST(SegmentKernels, AddComponentsByPlace) {
    std::vector<std::uint32_t> pixels(segmentPixels);
    // Column 2 is in sums 1 and, from the 32nd on, 5; every component counts.
    pixels[2] = 0x04030201;
    pixels[8 + 3] = 0xFFFFFFFF;
    pixels[32 + 7] = 0x00000100;
    const std::vector<std::uint32_t> starts{0};
    for (const Target target : allTargets) {
        if (!isAvailable(target)) continue;
        SegmentSums sums{};
        segmentKernels(target).sumSegments(pixels.data(), starts, &sums);
        EXPECT_EQ(sums, (SegmentSums{0, 10 + 4 * 255, 0, 0, 0, 0, 0, 1}));
    }
}

TEST(SegmentKernels, HashesDifferWhereOneBitDoes) {
    auto pixels = randomWords(segmentPixels, 3);
    std::set<std::uint32_t> hashes{hashOf(pixels)};
    for (std::size_t i = 0; i < segmentPixels; ++i)
        for (std::uint32_t bit = 0; bit < 32; ++bit) {
            pixels[i] ^= 1U << bit;
            hashes.insert(hashOf(pixels));
            pixels[i] ^= 1U << bit;
        }
    // Of 2,049 numbers of 32 bits, two are the same in one set of two thousand.
    EXPECT_GE(hashes.size(), 2048U);
    std::swap(pixels[5], pixels[40]);
    EXPECT_FALSE(hashes.contains(hashOf(pixels)));
}

TEST(SegmentKernels, TextureIsASpreadOfMoreThan48) {
    const std::vector<std::uint32_t> starts{0, 64};
    std::vector<std::uint32_t> pixels(128, 0xFF808080);
    std::uint32_t hashes[2];
    pixels[10] += 48;
    EXPECT_EQ(segmentKernels().hashSegments(pixels.data(), starts, hashes), 0U);
    pixels[74] += 49;
    EXPECT_EQ(segmentKernels().hashSegments(pixels.data(), starts, hashes),
              std::uint64_t{1} << segmentBit(1));
}

TEST(SegmentKernels, CompareAndCount) {
    auto a = randomWords(64, 7), b = a;
    for (const std::size_t i : {0U, 9U, 23U, 63U})
        b[i] ^= 1U << (i % 32);
    std::uint64_t want = 0;
    for (std::size_t i = 0; i < 64; ++i)
        want |= std::uint64_t{a[i] == b[i]} << segmentBit(i);
    EXPECT_EQ(segmentKernels().equalSegments(a.data(), b.data(), 8), want);

    SegmentSums first{100, 200, 300, 400, 500, 600, 700, 800}, second = first;
    second[0] -= 12;
    second[7] += 12;
    EXPECT_EQ(segmentKernels().alikeSegments(&first, &second, 1, 12), 1U);
    EXPECT_EQ(segmentKernels().alikeSegments(&first, &second, 1, 11), 0U);

    const std::vector<std::uint64_t> words{0, 5, ~std::uint64_t{0}};
    std::vector<std::uint32_t> counts(4, 9);
    segmentKernels().addUp(words, counts.data());
    EXPECT_EQ(counts, (std::vector<std::uint32_t>{9, 9, 11, 75}));
}

TEST(SegmentKernels, AreTheSameForEveryTarget) {
    const auto pixels = randomWords(5000, 11);
    for (const Target target : allTargets) {
        if (!isAvailable(target)) continue;
        const auto& have = segmentKernels(target);
        const auto& want = segmentKernels(Target::plain);
        for (std::uint32_t count = 1; count <= 64; ++count) {
            std::vector<std::uint32_t> starts;
            for (std::uint32_t i = 0; i < count; ++i)
                starts.push_back((i * 71 + count) % 4900);
            std::vector<std::uint32_t> hashes(64), wanted(64);
            EXPECT_EQ(have.hashSegments(pixels.data(), starts, hashes.data()),
                      want.hashSegments(pixels.data(), starts, wanted.data()));
            EXPECT_EQ(hashes, wanted);
            std::vector<SegmentSums> sums(64), wantedSums(64);
            have.sumSegments(pixels.data(), starts, sums.data());
            want.sumSegments(pixels.data(), starts, wantedSums.data());
            EXPECT_EQ(sums, wantedSums);
            for (const std::uint16_t tolerance : std::array<std::uint16_t, 3>{0, 200, 400})
                EXPECT_EQ(have.alikeSegments(sums.data(), sums.data() + 1, count - 1, tolerance),
                          want.alikeSegments(sums.data(), sums.data() + 1, count - 1, tolerance));
        }
    }
}

}  // namespace pictal::kernels
