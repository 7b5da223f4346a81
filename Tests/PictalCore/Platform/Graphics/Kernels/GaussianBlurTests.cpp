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

constexpr double level = 1.0 / 255;

double gaussian(double x, double deviation) {
    return std::exp(-x * x / (2 * deviation * deviation)) /
           (deviation * std::sqrt(2 * std::numbers::pi));
}

/// The mean over a pixel of an edge blurred by adding up thin slices of the Gaussian.
double slowEdge(double left, double deviation) {
    const double step = std::min(deviation, 1.0) / 64;
    double sum = 0;
    for (double offset = -8 * deviation; offset < 8 * deviation; offset += step) {
        const double middle = offset + step / 2;
        sum += gaussian(middle, deviation) * step * std::clamp(left + 1 - middle, 0.0, 1.0);
    }
    return sum;
}

TEST(GaussianBlur, DeviationIsHalfTheBlur) {
    EXPECT_EQ(gaussianDeviation(36), 18);
    EXPECT_EQ(gaussianDeviation(-2), 0);
    EXPECT_EQ(gaussianDeviation(std::nan("")), 0);
}

TEST(GaussianBlur, EdgeIsTheMeanOverThePixel) {
    for (const double deviation : {0.05, 0.3, 1.0, 7.5, 40.0})
        for (double left = -5 * deviation - 1.5; left < 5 * deviation + 1; left += deviation / 3)
            EXPECT_NEAR(blurredEdge(left, deviation), slowEdge(left, deviation), 1e-4)
                << "left " << left << ", deviation " << deviation;
}

TEST(GaussianBlur, EdgeIsSharpWithoutDeviationAndFlatBeyondItsReach) {
    EXPECT_EQ(blurredEdge(-1, 0), 0);
    EXPECT_EQ(blurredEdge(-0.25, 0), 0.75);
    EXPECT_EQ(blurredEdge(0, 0), 1);
    EXPECT_EQ(blurredEdge(gaussianReach(10), 10), 1);
    EXPECT_EQ(blurredEdge(-gaussianReach(10) - 1, 10), 0);
    EXPECT_EQ(blurredEdge(1e300, 1e280), 1);
}

/// Every pixel gathers from every other one, weighted by a Gaussian in two dimensions.
std::vector<double> slowBlur(const std::vector<float>& mask, int width, int height,
                             double deviation) {
    std::vector<double> blurred(mask.size());
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            for (int v = 0; v < height; ++v)
                for (int u = 0; u < width; ++u)
                    blurred[static_cast<std::size_t>(y * width + x)] +=
                        static_cast<double>(mask[static_cast<std::size_t>(v * width + u)]) *
                        gaussian(x - u, deviation) * gaussian(y - v, deviation);
    return blurred;
}

TEST(GaussianBlur, MaskIsConvolvedInBothDirections) {
    struct Case {
        const char* name;
        int width, height;
        double deviation;
    };
    for (const Case& c : {Case{"wide", 61, 17, 2.5}, Case{"tall", 5, 60, 3},
                          Case{"narrower than the blur", 7, 9, 6}, Case{"one column", 1, 30, 4},
                          Case{"one row", 30, 1, 4}, Case{"one pixel", 1, 1, 5}}) {
        std::vector<float> mask(static_cast<std::size_t>(c.width * c.height));
        std::mt19937 random(7);
        for (float& value : mask)
            value = random() % 3 == 0 ? 1.0F : 0.0F;
        const std::vector<double> want = slowBlur(mask, c.width, c.height, c.deviation);
        blurMask(mask, c.width, c.height, c.deviation);
        for (std::size_t i = 0; i < mask.size(); ++i)
            ASSERT_NEAR(static_cast<double>(mask[i]), want[i], level)
                << c.name << ", pixel " << i % static_cast<std::size_t>(c.width) << ", "
                << i / static_cast<std::size_t>(c.width);
    }
}

TEST(GaussianBlur, MaskKeepsItsSumAndItsSymmetry) {
    for (const double deviation : {0.0, 0.2, 1.0, 4.0}) {
        constexpr int side = 41;
        std::vector<float> mask(side * side);
        mask[side * (side / 2) + side / 2] = 1;
        blurMask(mask, side, side, deviation);
        EXPECT_NEAR(std::accumulate(mask.begin(), mask.end(), 0.0), 1, 1e-5) << deviation;
        for (int y = 0; y < side; ++y)
            for (int x = 0; x < side; ++x)
                ASSERT_NEAR(mask[static_cast<std::size_t>(y * side + x)],
                            mask[static_cast<std::size_t>((side - 1 - x) * side + y)], 1e-7);
    }
}

TEST(GaussianBlur, TwoBlursAreOneOfTheirVariances) {
    constexpr int side = 101;
    std::vector<float> twice(side * side), once;
    for (int y = 40; y < 60; ++y)
        for (int x = 45; x < 70; ++x)
            twice[static_cast<std::size_t>(y * side + x)] = 1;
    once = twice;
    blurMask(twice, side, side, 3);
    blurMask(twice, side, side, 4);
    blurMask(once, side, side, 5);
    for (std::size_t i = 0; i < once.size(); ++i)
        ASSERT_NEAR(once[i], twice[i], level / 2) << i;
}

TEST(GaussianBlur, RectangleAgreesWithItsEdges) {
    constexpr int side = 80;
    for (const double deviation : {3.0, 5.5}) {
        std::vector<float> mask(side * side);
        for (int y = 30; y < 50; ++y)
            for (int x = 28; x < 41; ++x)
                mask[static_cast<std::size_t>(y * side + x)] = 1;
        blurMask(mask, side, side, deviation);
        for (int y = 0; y < side; ++y)
            for (int x = 0; x < side; ++x) {
                const double across =
                    blurredEdge(x - 28, deviation) - blurredEdge(x - 41, deviation);
                const double down = blurredEdge(y - 30, deviation) - blurredEdge(y - 50, deviation);
                ASSERT_NEAR(static_cast<double>(mask[static_cast<std::size_t>(y * side + x)]),
                            across * down, level / 2)
                    << x << ", " << y;
            }
    }
}

}  // namespace
}  // namespace pictal::kernels
