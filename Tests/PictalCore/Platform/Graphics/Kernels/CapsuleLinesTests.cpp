#include "PictalCore/Platform/Graphics/Kernels/CapsuleLines.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace pictal::kernels {
namespace {

using Capsules = std::vector<CapsuleInRow<float>>;

constexpr float width = 40;
constexpr std::array<float, lineBlock> lines{0.02F, 0.08F, 0.14F, 0.20F, 0.26F, 0.32F,
                                             0.38F, 0.44F, 0.50F, 0.56F, 0.62F, 0.68F,
                                             0.74F, 0.80F, 0.86F, 0.92F};

/// Upright capsules with slanted sides, some of which begin or end between the lines.
Capsules randomCapsules(std::size_t count, unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> unit(0, 1);
    Capsules capsules;
    for (std::size_t i = 0; i < count; ++i) {
        const float radius = 0.3F + 2 * unit(random), slope = unit(random) - 0.5F;
        const float x = width * unit(random), y = 2 * unit(random) - 1;
        const float length = 1 + 2 * unit(random), half = radius * std::hypot(1.F, slope);
        const float rise = radius * slope / std::hypot(1.F, slope);
        const float lowerX = x + slope * length, lowerY = y + length;
        capsules.push_back({radius,
                            slope,
                            x,
                            y,
                            lowerX,
                            lowerY,
                            y - radius,
                            lowerY + radius,
                            {x - half, y, y + rise, lowerY + rise},
                            {x + half, y, y - rise, lowerY - rise}});
    }
    return capsules;
}

/// The end by its meaning: the last point to a side that is within the radius of the axis.
double endByDistance(const CapsuleInRow<float>& c, double sign, double y) {
    const double dx = c.lowerX - c.upperX, dy = c.lowerY - c.upperY, r = c.radius;
    double inside = c.upperX + std::clamp((y - c.upperY) / dy, 0.0, 1.0) * dx;
    double outside = inside + sign * 20;
    for (int i = 0; i < 60; ++i) {
        const double x = (inside + outside) / 2;
        const double t =
            std::clamp(((x - c.upperX) * dx + (y - c.upperY) * dy) / (dx * dx + dy * dy), 0.0, 1.0);
        const bool isIn = std::hypot(x - c.upperX - t * dx, y - c.upperY - t * dy) <= r;
        (isIn ? inside : outside) = x;
    }
    return inside;
}

TEST(CapsuleLines, EndsAreWhereTheDistanceIsTheRadius) {
    for (const CapsuleInRow<float>& capsule : randomCapsules(200, 1)) {
        std::array<float, lineBlock> lefts{}, rights{};
        capsuleLineKernels<float>().leftEnds({&capsule, 1}, lines.data(), lefts.data());
        capsuleLineKernels<float>().rightEnds({&capsule, 1}, lines.data(), rights.data());
        for (std::size_t i = 0; i < lineBlock; ++i) {
            if (lines[i] < capsule.top + 0.01F || lines[i] > capsule.bottom - 0.01F) continue;
            EXPECT_NEAR(lefts[i], endByDistance(capsule, -1, lines[i]), 1e-4);
            EXPECT_NEAR(rights[i], endByDistance(capsule, 1, lines[i]), 1e-4);
        }
    }
}

TEST(CapsuleLines, UnitesIntervals) {
    for (unsigned seed = 0; seed < 50; ++seed) {
        const Capsules capsules = randomCapsules(3 + seed % 8, seed);
        LineIntervals<float> have;
        const std::size_t done =
            capsuleLineKernels<float>().unite(capsules, lines.data(), width, have);
        ASSERT_TRUE(done == capsules.size() || have.used == have.most);
        for (std::size_t i = 0; i < lineBlock; ++i) {
            // A point is covered by the union when it is by a capsule.
            for (float x = 0.003F; x < width; x += 0.37F) {
                const auto holds = [&](const CapsuleInRow<float>& c) {
                    return lines[i] >= c.top && lines[i] <= c.bottom &&
                           x > endByDistance(c, -1, lines[i]) && x < endByDistance(c, 1, lines[i]);
                };
                int times = 0;
                for (std::size_t k = 0; k < have.used; ++k)
                    times += x > have.low[k][i] && x < have.high[k][i] ? 1 : 0;
                EXPECT_EQ(times, std::any_of(capsules.begin(),
                                             capsules.begin() + std::ptrdiff_t(done), holds))
                    << seed << ", " << x;
            }
        }
    }
}

TEST(CapsuleLines, EveryTargetGivesTheSameBytes) {
    const auto resultAt = [](Target target, const Capsules& capsules) {
        const auto& kernels = capsuleLineKernels<float>(target);
        std::array<float, 2 * lineBlock> ends{};
        std::array<std::int32_t, 2 * lineBlock> fixed{};
        kernels.leftEnds(capsules, lines.data(), ends.data());
        kernels.rightEnds(capsules, lines.data(), ends.data() + lineBlock);
        kernels.toFixed(ends.data(), width, fixed.data());
        kernels.toFixed(ends.data() + lineBlock, width, fixed.data() + lineBlock);
        LineIntervals<float> intervals;
        std::vector<float> numbers{
            static_cast<float>(kernels.unite(capsules, lines.data(), width, intervals))};
        for (std::size_t k = 0; k < intervals.used; ++k) {
            numbers.insert(numbers.end(), intervals.low[k], intervals.low[k] + lineBlock);
            numbers.insert(numbers.end(), intervals.high[k], intervals.high[k] + lineBlock);
        }
        numbers.insert(numbers.end(), fixed.begin(), fixed.end());
        return numbers;
    };
    for (const Target target : allTargets) {
        if (!isAvailable(target)) continue;
        for (unsigned seed = 0; seed < 200; ++seed) {
            const Capsules capsules = randomCapsules(1 + seed % 12, seed);
            EXPECT_EQ(resultAt(target, capsules), resultAt(Target::plain, capsules)) << seed;
        }
    }
}

TEST(CapsuleLines, FixedNumbersAreRoundedAndBounded) {
    std::array<float, lineBlock> ends{-1, 0, 0.5F, 1.0F / 65536, 0.9F / 65536, 39.5F, 40, 1e30F};
    std::array<std::int32_t, lineBlock> fixed{};
    capsuleLineKernels<float>().toFixed(ends.data(), width, fixed.data());
    const std::array<std::int32_t, 8> want{0,          0,         32768, 1, 1, 39 * 65536 + 32768,
                                           40 * 65536, 40 * 65536};
    EXPECT_TRUE(std::equal(want.begin(), want.end(), fixed.begin()));
}

}  // namespace
}  // namespace pictal::kernels
