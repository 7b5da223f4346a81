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

TEST(RoundedMask, CoversTheAreaOfTheShape) {
    for (const auto& [name, width, height, radius] : shapes) {
        const RoundedMask mask(width, height, radius);
        double sum = 0;
        for (std::int64_t y = 0; y < height; ++y) {
            const RoundedMask::Row row = mask.row(y);
            sum += static_cast<double>(width - 2 * row.inside());
            for (const float covered : row.edge)
                sum += 2 * static_cast<double>(covered);
            // A shared middle column is counted at both ends.
            if (2 * row.inside() > width) sum += 1 - static_cast<double>(row.edge.back());
        }
        const auto area = static_cast<double>(width * height);
        EXPECT_NEAR(sum, area - (4 - std::numbers::pi) * radius * radius, 1e-6 * area) << name;
    }
}

TEST(RoundedMask, CoversEachPixelExactly) {
    for (const auto& [name, width, height, radius] : shapes) {
        if (width > 100) continue;
        const RoundedMask mask(width, height, radius);
        for (std::int64_t y = 0; y < height; ++y)
            for (std::int64_t x = 0; x < width; ++x) {
                // A hundred slices, each as deep as the shape is in its middle.
                double covered = 0;
                for (int i = 0; i < 100; ++i) {
                    const double at = static_cast<double>(x) + (i + 0.5) / 100;
                    const double toSide = std::min(at, static_cast<double>(width) - at);
                    const double toArc = std::max(radius - toSide, 0.0);
                    const double inset = radius - std::sqrt(radius * radius - toArc * toArc);
                    const double top = std::max(static_cast<double>(y), inset);
                    const double bottom =
                        std::min(static_cast<double>(y + 1), static_cast<double>(height) - inset);
                    covered += std::max(bottom - top, 0.0) / 100;
                }
                ASSERT_NEAR(coverageAt(mask, x, y), covered, 1.0 / 1024)
                    << name << ", pixel " << x << ", " << y;
            }
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
