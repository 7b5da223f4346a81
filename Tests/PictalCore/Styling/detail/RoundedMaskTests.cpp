#include "PictalCore/Styling/detail/RoundedMask.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include <gtest/gtest.h>

namespace pictal::detail {
namespace {

double coverageAt(const RoundedMask& mask, std::int64_t x, std::int64_t y) {
    const RoundedMask::Row row = mask.row(y);
    const std::int64_t fromEnd = std::min(x, mask.width() - 1 - x);
    if (fromEnd < row.outside) return 0;
    if (fromEnd >= row.inside()) return 1;
    return static_cast<double>(row.edge[static_cast<std::size_t>(fromEnd - row.outside)]);
}

struct Shape {
    const char* name;
    std::int64_t width, height;
    double radius;
};
constexpr Shape shapes[]{
    {"no corners", 5, 4, 0},     {"hardly round", 9, 8, 0.01}, {"within a pixel", 9, 8, 0.7},
    {"one pixel", 9, 8, 1},      {"card", 60, 50, 22},         {"fraction", 61, 50, 12.37},
    {"pill", 30, 12, 6},         {"odd pill", 30, 13, 6.5},    {"tall odd pill", 13, 30, 6.5},
    {"circle", 20, 20, 10},      {"odd circle", 21, 21, 10.5}, {"shared middle pixels", 5, 5, 2.3},
    {"single pixel", 1, 1, 0.5}, {"single column", 1, 9, 0.5}, {"huge circle", 3000, 3000, 1500},
};

TEST(RoundedMask, CoversEachPixelAndTheWholeAreaExactly) {
    for (const auto& [name, columns, rows, radius] : shapes) {
        const RoundedMask mask(columns, rows, radius);
        const auto width = static_cast<double>(columns), height = static_cast<double>(rows);
        double sum = 0;
        for (std::int64_t i = 0; i < columns * rows; ++i) {
            const double have = coverageAt(mask, i % columns, i / columns);
            sum += have;
            if (columns > 100) continue;
            const auto x = static_cast<double>(i % columns), y = static_cast<double>(i / columns);
            double covered = 0;  // a hundred slices, each as deep as the shape is in its middle
            for (double at = x + 0.005; at < x + 1; at += 0.01) {
                const double toArc = std::max(radius - std::min(at, width - at), 0.0);
                const double inset = radius - std::sqrt(radius * radius - toArc * toArc);
                covered += std::max(std::min(y + 1, height - inset) - std::max(y, inset), 0.0);
            }
            ASSERT_NEAR(have, covered / 100, 1.0 / 1024) << name << ", pixel " << x << ", " << y;
        }
        EXPECT_NEAR(sum, width * height - (4 - std::numbers::pi) * radius * radius,
                    1e-6 * width * height)
            << name;
    }
}

TEST(RoundedMask, CornerIsItsOwnMirrorImage) {
    const RoundedMask mask(60, 60, 22.4);
    for (std::int64_t y = 0; y < 60; ++y)
        for (std::int64_t x = 0; x < y; ++x)
            ASSERT_EQ(coverageAt(mask, x, y), coverageAt(mask, y, x)) << x << ", " << y;
}

}  // namespace
}  // namespace pictal::detail
