#include "PictalCore/Geometry/AlignmentSnapper.h"
#include "Tests/Support/GeometryText.h"

#include <gtest/gtest.h>

namespace pictal {

constexpr CGRect screen{0, 0, 1000, 800};

TEST(AlignmentSnapper, SnapsPoints) {
    const auto check = [](const char* name, CGPoint point, const CGRect& container,
                          CGFloat tolerance, CGPoint want, std::int64_t guides) {
        const auto result = AlignmentSnapper::snap(point, container, tolerance);
        EXPECT_EQ(text(result.point), text(want)) << name;
        EXPECT_EQ(result.guides.rawValue, guides) << name;
    };
    check("x only", {505, 300}, screen, 8, {500, 300}, 1);
    check("both, at exactly the tolerance", {492, 392}, screen, 8, {500, 400}, 3);
    check("just beyond the tolerance", {508.001, 391.999}, screen, 8, {508.001, 391.999}, 0);
    check("negative tolerance, off the line", {501, 400}, screen, -4, {501, 400}, 2);
    check("NaN tolerance is none", {500, 401}, screen, nan, {500, 401}, 1);
    check("away from the origin", {-715, 5}, {-1440, -900, 1440, 900}, 8, {-720, 5}, 1);
    check("container without width", {1, 1}, {0, 0, 0, 800}, 8, {1, 1}, 0);
    check("container without number", {1, 400}, {0, 0, nan, 800}, 8, {1, 400}, 0);
}

TEST(AlignmentSnapper, SnapsRectangles) {
    const auto check = [](const char* name, const CGRect& rect, const CGRect& want,
                          std::int64_t guides, const CGRect& container = screen) {
        const auto result = AlignmentSnapper::snap(rect, container);
        EXPECT_EQ(text(result.rect), text(want)) << name;
        EXPECT_EQ(result.guides.rawValue, guides) << name;
    };
    check("rounded far from the centre", {10.3, 10.3, 100, 50}, {10, 10, 101, 51}, 0);
    check("x", {453, 100, 100, 50}, {450, 100, 100, 50}, 1);
    check("both, odd sizes", {446, 371, 101, 51}, {449, 374, 102, 52}, 3);
    // 10 + 6.15 - 6.15 is below 10: an edge that does not snap has to keep its place.
    check("rounding", {10, 20, 12.3, 50}, {10, 20, 13, 50}, 0);
    check("as large as the container", {3, -2, 1000, 800}, screen, 3);
    check("too wide, unrounded", {0.5, 0.5, 1001, 20}, {0.5, 0.5, 1001, 20}, 0);
    check("too tall", {450.5, 0, 100, 801}, {450.5, 0, 100, 801}, 0);
    check("without height", {450.5, 400, 100, 0}, {450.5, 400, 100, 0}, 0);
    check("in no container", {1.5, 1.5, 1, 1}, {1.5, 1.5, 1, 1}, 0, {0, 0, 0, 0});
}

}  // namespace pictal
