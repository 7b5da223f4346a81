#include "PictalCore/Geometry/AlignmentSnapper.h"
#include "Tests/Support/GeometryText.h"

#include <limits>

#include <gtest/gtest.h>

namespace pictal {
namespace {

constexpr CGFloat nan = std::numeric_limits<CGFloat>::quiet_NaN();
constexpr CGRect screen{0, 0, 1000, 800};

TEST(AlignmentSnapper, SnapsPoints) {
    struct Case {
        const char* name;
        CGPoint point;
        CGRect container;
        CGFloat tolerance;
        CGPoint want;
        std::int64_t guides;
    };
    constexpr Case cases[] = {
        {"x only", {505, 300}, screen, 8, {500, 300}, 1},
        {"y only", {700, 395}, screen, 8, {700, 400}, 2},
        {"both, at exactly the tolerance", {492, 392}, screen, 8, {500, 400}, 3},
        {"just beyond the tolerance", {508.001, 391.999}, screen, 8, {508.001, 391.999}, 0},
        {"negative tolerance, off the line", {501, 400}, screen, -4, {501, 400}, 2},
        {"NaN tolerance is none", {500, 401}, screen, nan, {500, 401}, 1},
        {"container from its far corner", {505, 300}, {1000, 800, -1000, -800}, 8, {500, 300}, 1},
        {"container away from the origin", {-715, 5}, {-1440, -900, 1440, 900}, 8, {-720, 5}, 1},
        {"container without width", {1, 1}, {0, 0, 0, 800}, 8, {1, 1}, 0},
        {"container without number", {1, 400}, {0, 0, nan, 800}, 8, {1, 400}, 0},
    };
    for (const Case& c : cases) {
        const auto result = AlignmentSnapper::snap(c.point, c.container, c.tolerance);
        EXPECT_EQ(text(result.point), text(c.want)) << c.name;
        EXPECT_EQ(result.guides.rawValue, c.guides) << c.name;
    }
}

TEST(AlignmentSnapper, SnapsRectangles) {
    struct Case {
        const char* name;
        CGRect rect;
        CGRect container;
        CGRect want;
        std::int64_t guides;
    };
    constexpr Case cases[] = {
        {"rounded far from the centre", {10.3, 10.3, 100, 50}, screen, {10, 10, 101, 51}, 0},
        {"x", {453, 100, 100, 50}, screen, {450, 100, 100, 50}, 1},
        {"y", {100, 370, 100, 50}, screen, {100, 375, 100, 50}, 2},
        {"both, odd sizes", {446, 371, 101, 51}, screen, {449, 374, 102, 52}, 3},
        // 10 + 6.15 - 6.15 is below 10: an edge that does not snap has to keep its place.
        {"rounding", {10, 20, 12.3, 50}, screen, {10, 20, 13, 50}, 0},
        {"from its far corner", {553, 150, -100, -50}, screen, {450, 100, 100, 50}, 1},
        {"as large as the container", {3, -2, 1000, 800}, screen, screen, 3},
        {"too wide, unrounded", {0.5, 0.5, 1001, 20}, screen, {0.5, 0.5, 1001, 20}, 0},
        {"too tall", {450.5, 0, 100, 801}, screen, {450.5, 0, 100, 801}, 0},
        {"without height", {450.5, 400, 100, 0}, screen, {450.5, 400, 100, 0}, 0},
        {"in no container", {1.5, 1.5, 1, 1}, {0, 0, 0, 0}, {1.5, 1.5, 1, 1}, 0},
    };
    for (const Case& c : cases) {
        const auto result = AlignmentSnapper::snap(c.rect, c.container);
        EXPECT_EQ(text(result.rect), text(c.want)) << c.name;
        EXPECT_GE(result.rect.size.width, 0) << c.name;
        EXPECT_EQ(result.guides.rawValue, c.guides) << c.name;
    }
}

}  // namespace
}  // namespace pictal
