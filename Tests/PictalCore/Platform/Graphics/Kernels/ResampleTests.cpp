#include "PictalCore/Platform/Graphics/Kernels/Arithmetic.h"
#include "PictalCore/Platform/Graphics/Kernels/Resample.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace pictal::kernels {
namespace {

/// The cubic by its definition: a piece of a Hermite curve whose slopes are the neighbours' halves.
/// What a single 1 at place 0 among zeros contributes at distance d.
double hermite(double d) {
    const double x = std::abs(d), t = x - std::floor(x);
    const double h00 = 2 * t * t * t - 3 * t * t + 1, h10 = t * t * t - 2 * t * t + t;
    const double h01 = 3 * t * t - 2 * t * t * t, h11 = t * t * t - t * t;
    // From 0 to 1 the curve falls from the 1 (slope 0) to a 0 with slope -1/2; beyond, from there.
    if (x < 1) return h00 + 0 * h01 - 0.5 * h11;
    if (x < 2) return -0.5 * h10;
    return 0;
}

using Weights = std::map<std::int64_t, double>;

/// The weights as the text says it: every pixel of the source is asked.
Weights plainWeights(const ScaledAxis& axis, Shrinking shrinking, std::int64_t size,
                     std::int64_t at) {
    const double from = axis.start + static_cast<double>(at) * axis.step, to = from + axis.step;
    Weights weights;
    double sum = 0;
    for (std::int64_t i = 0; i < size; ++i) {
        const double left = static_cast<double>(i);
        const double width = std::max(1.0, std::abs(axis.step));
        const double weight = shrinking == Shrinking::mean && width > 1
                                  ? std::max(0.0, std::min(std::max(from, to), left + 1) -
                                                      std::max(std::min(from, to), left))
                                  : hermite((left + 0.5 - (from + to) / 2) / width);
        if (weight != 0) weights[i] = weight;
        sum += weight;
    }
    for (auto& [place, weight] : weights)
        weight /= sum;
    return weights;
}

TEST(Resample, WeightsFollowTheirCurves) {
    struct Case {
        const char* name;
        std::int64_t size, count;
        double start, step;
    };
    for (const auto& [name, size, count, start, step] : {Case{"half", 12, 6, 0, 2},
                                                         {"a third, mirrored", 30, 9, 29.25, -3.1},
                                                         {"a bit smaller", 20, 19, 0, 20 / 19.0},
                                                         {"twice", 7, 14, 0, 0.5},
                                                         {"moved by a fraction", 9, 8, 0.25, 1},
                                                         {"one pixel of many", 50, 1, 0, 50},
                                                         {"many of one", 1, 5, 0, 0.2}})
        for (const auto shrinking : {Shrinking::mean, Shrinking::cubic}) {
            const Taps taps = tapsOf({start, step}, shrinking, size, 0, count);
            ASSERT_EQ(taps.windows.size(), static_cast<std::size_t>(count)) << name;
            for (std::int64_t i = 0; i < count; ++i) {
                const auto& window = taps.windows[static_cast<std::size_t>(i)];
                Weights found;
                for (std::size_t tap = 0; tap < window.count; ++tap)
                    found[static_cast<std::int64_t>(window.first + tap)] =
                        double{taps.weightsOf(window)[tap]};
                for (const auto& [place, weight] : plainWeights({start, step}, shrinking, size, i))
                    EXPECT_NEAR(found[place], weight, 1e-7) << name << ' ' << i << ' ' << place;
                double sum = 0;
                for (const auto& [place, weight] : found)
                    sum += weight;
                EXPECT_NEAR(sum, 1, 1e-6) << name << ' ' << i;
            }
        }
}

TEST(Resample, WholePixelsAreTakenAsTheyAre) {
    for (const auto shrinking : {Shrinking::mean, Shrinking::cubic}) {
        const Taps taps = tapsOf({3, 1}, shrinking, 10, 0, 5);
        for (std::size_t i = 0; i < 5; ++i) {
            EXPECT_EQ(taps.windows[i].first, i + 3);
            EXPECT_EQ(taps.windows[i].count, 1U);
            EXPECT_EQ(taps.weightsOf(taps.windows[i])[0], 1);
        }
    }
    const Taps beyond = tapsOf({-40, 2}, Shrinking::mean, 10, 0, 50);
    EXPECT_EQ(beyond.windows[0].first, 0U);  // the nearest there is
    EXPECT_EQ(beyond.windows[49].first, 9U);
}

/// Every target gives the same bits, and the sums are those of the definition.
TEST(Resample, KernelsAddUpAtEveryTarget) {
    std::mt19937 random{7};
    for (const std::size_t width : {1U, 3U, 31U, 130U, 517U})
        for (const std::size_t rowCount : {1U, 3U, 4U, 9U, 300U, 1'027U}) {
            std::vector<std::vector<std::uint32_t>> rows(rowCount);
            std::vector<const std::uint32_t*> pointers;
            std::vector<float> weights;
            for (auto& row : rows) {
                row.resize(width);
                std::ranges::generate(row, [&] { return static_cast<std::uint32_t>(random()); });
                pointers.push_back(row.data());
                weights.push_back((static_cast<float>(random() % 2'001) / 1'000.0F - 0.5F) /
                                  static_cast<float>(rowCount));
            }
            const std::int64_t narrow = static_cast<std::int64_t>(width + 1) / 2;
            const Taps taps = tapsOf({0, static_cast<double>(width) / static_cast<double>(narrow)},
                                     Shrinking::cubic, static_cast<std::int64_t>(width), 0, narrow);
            std::vector<float> plainSums, plainColumns;
            for (const Target target : allTargets) {
                if (!isAvailable(target)) continue;
                const auto& kernels = resampleKernels(target);
                std::vector<float> sums(width * 4), again(width * 4);
                kernels.sumRows(pointers, weights, sums);
                std::vector<float> columns(taps.windows.size() * 4);
                kernels.sumColumns(sums, 0, taps, columns);
                if (target == Target::plain) {
                    plainSums = sums;
                    plainColumns = columns;
                }
                EXPECT_EQ(sums, plainSums) << width << ' ' << rowCount;
                EXPECT_EQ(columns, plainColumns) << width << ' ' << rowCount;
                const std::vector<const float*> same{sums.data(), sums.data()};
                const std::vector<float> halves{0.25F, 0.5F};
                kernels.sumSums(same, halves, again);
                for (std::size_t i = 0; i < sums.size(); ++i) {
                    double expected = 0;
                    for (std::size_t row = 0; row < rowCount; ++row)
                        expected += double{weights[row]} * ((rows[row][i / 4] >> i % 4 * 8) & 255);
                    ASSERT_NEAR(sums[i], expected, 1e-3) << width << ' ' << rowCount << ' ' << i;
                    ASSERT_FLOAT_EQ(again[i], sums[i] * 0.75F);
                }
                for (std::size_t i = 0; i < columns.size(); ++i) {
                    const auto& window = taps.windows[i / 4];
                    double expected = 0;
                    for (std::size_t tap = 0; tap < window.count; ++tap)
                        expected += double{taps.weightsOf(window)[tap]} *
                                    double{sums[(window.first + tap) * 4 + i % 4]};
                    ASSERT_NEAR(columns[i], expected, 2e-3) << width << ' ' << i;
                }
            }
        }
}

TEST(Resample, PixelsAreRoundedAndStayPremultiplied) {
    for (const Target target : allTargets) {
        if (!isAvailable(target)) continue;
        const std::vector<float> sums{100.4F, 100.5F, -3.7F, 254.6F, 270.0F, 300, 0.49F, 256.2F,
                                      90,     80,     70.6F, 80.4F,  -0.4F,  5,   9,     -7};
        std::vector<std::uint32_t> pixels(4);
        resampleKernels(target).toPixels(sums, pixels);
        EXPECT_EQ(pixels, (std::vector{pixelOf(100, 101, 0, 255), pixelOf(255, 255, 0, 255),
                                       pixelOf(80, 80, 71, 80), 0U}));
    }
}

}  // namespace
}  // namespace pictal::kernels
