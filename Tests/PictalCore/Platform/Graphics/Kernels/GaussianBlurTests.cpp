#include "PictalCore/Platform/Graphics/Kernels/GaussianBlur.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>
#include <numeric>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace pictal::kernels {
namespace {

constexpr double level = 1.0 / 255;

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

/// Blurs a mask and compares each of its pixels with `want(x, y, mask)`.
void expectBlurred(const char* name, int width, int height, double deviation, double tolerance,
                   const std::function<bool(int x, int y)>& isSet,
                   const std::function<double(int x, int y, const std::vector<float>&)>& want) {
    std::vector<float> mask;
    for (int i = 0; i < width * height; ++i)
        mask.push_back(isSet(i % width, i / width) ? 1 : 0);
    const std::vector<float> sharp = mask;
    blurMask(mask, width, height, deviation);
    for (int i = 0; i < width * height; ++i)
        ASSERT_NEAR(mask[static_cast<std::size_t>(i)], want(i % width, i / width, sharp), tolerance)
            << name << ", deviation " << deviation << ", pixel " << i % width << ", " << i / width;
}

TEST(GaussianBlur, MaskIsConvolvedInBothDirections) {
    std::mt19937 random(7);
    const auto check = [&](const char* name, int width, int height, double deviation) {
        // Every pixel gathers from every other one, weighted by a Gaussian in two dimensions.
        const auto gathered = [&](int x, int y, const std::vector<float>& sharp) {
            double sum = 0;
            for (int i = 0; i < width * height; ++i)
                sum += static_cast<double>(sharp[static_cast<std::size_t>(i)]) *
                       gaussian(x - i % width, deviation) * gaussian(y - i / width, deviation);
            return sum;
        };
        expectBlurred(
            name, width, height, deviation, level, [&](int, int) { return random() % 3 == 0; },
            gathered);
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

TEST(GaussianBlur, RectangleAgreesWithItsEdges) {
    for (const double deviation : {3.0, 5.0, 5.5})
        expectBlurred(
            "rectangle", 80, 80, deviation, level / 2,
            [](int x, int y) { return x >= 28 && x < 41 && y >= 30 && y < 50; },
            [&](int x, int y, auto&) {
                return (blurredEdge(x - 28, deviation) - blurredEdge(x - 41, deviation)) *
                       (blurredEdge(y - 30, deviation) - blurredEdge(y - 50, deviation));
            });
}

}  // namespace
}  // namespace pictal::kernels
