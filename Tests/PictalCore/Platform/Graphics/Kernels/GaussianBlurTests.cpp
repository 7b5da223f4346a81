#include "PictalCore/Platform/Graphics/Kernels/GaussianBlur.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace pictal::kernels {
namespace {

double gaussian(double x, double deviation) {
    return std::exp(-x * x / (2 * deviation * deviation)) /
           (deviation * std::sqrt(2 * std::numbers::pi));
}

TEST(GaussianBlur, DeviationIsHalfTheBlur) {
    EXPECT_EQ(gaussianDeviation(36), 18);
    EXPECT_EQ(gaussianDeviation(-2), 0);
    EXPECT_EQ(gaussianDeviation(NAN), 0);
}

TEST(GaussianBlur, EdgeIsTheMeanOverThePixel) {
    for (const double deviation : {0.05, 0.3, 1.0, 7.5, 40.0})
        for (double left = -5 * deviation - 1.5; left < 5 * deviation + 1; left += deviation / 3) {
            const double step = std::min(deviation, 1.0) / 64;
            double slices = 0;  // of the Gaussian, added up
            for (double at = -8 * deviation + step / 2; at < 8 * deviation; at += step)
                slices += gaussian(at, deviation) * step * std::clamp(left + 1 - at, 0.0, 1.0);
            EXPECT_NEAR(blurredEdge(left, deviation), slices, 1e-4)
                << "left " << left << ", deviation " << deviation;
        }
}

TEST(GaussianBlur, EdgeIsSharpWithoutDeviationAndFlatBeyondItsReach) {
    EXPECT_EQ(blurredEdge(-1, 0), 0);
    EXPECT_EQ(blurredEdge(-0.25, 0), 0.75);
    EXPECT_EQ(blurredEdge(0, 0), 1);
    EXPECT_EQ(blurredEdge(gaussianReach(10), 10), 1);
    EXPECT_EQ(blurredEdge(-gaussianReach(10) - 1, 10), 0);
    EXPECT_EQ(blurredEdge(1e300, 1e280), 1);
}

TEST(GaussianBlur, MaskIsConvolvedInBothDirections) {
    std::mt19937 random(7);
    const auto check = [&](const char* name, int width, int height, double deviation) {
        std::vector<float> mask(static_cast<std::size_t>(width * height));
        std::ranges::generate(mask, [&] { return random() % 3 == 0 ? 1.0F : 0.0F; });
        const std::vector<float> sharp = mask;
        blurMask(mask, width, height, deviation);
        const int count = width * height;
        for (int i = 0; i < count; ++i) {
            // Every pixel gathers from every other one, weighted by a Gaussian in two dimensions.
            double want = 0;
            for (int j = 0; j < count; ++j)
                want += static_cast<double>(sharp[static_cast<std::size_t>(j)]) *
                        gaussian(i % width - j % width, deviation) *
                        gaussian(i / width - j / width, deviation);
            ASSERT_NEAR(mask[static_cast<std::size_t>(i)], want, 1.0 / 255) << name << ", " << i;
        }
    };
    check("wide", 61, 17, 2.5);
    check("tall", 5, 60, 3);
    check("narrower than the blur", 7, 9, 6);
    check("one column", 1, 30, 4);
    check("one row", 30, 1, 4);
    check("one pixel", 1, 1, 5);
}

TEST(GaussianBlur, MaskKeepsItsSumAndItsSymmetry) {
    for (const double deviation : {0.0, 0.2, 1.0, 4.0}) {
        constexpr std::size_t side = 41, middle = side * (side / 2) + side / 2;
        std::vector<float> mask(side * side);
        mask[middle] = 1;
        blurMask(mask, side, side, deviation);
        EXPECT_NEAR(std::accumulate(mask.begin(), mask.end(), 0.0), 1, 1e-5) << deviation;
        for (std::size_t i = 0; i < mask.size(); ++i)  // turned by a quarter
            ASSERT_NEAR(mask[i], mask[(side - 1 - i % side) * side + i / side], 1e-7);
    }
}

}  // namespace
}  // namespace pictal::kernels
