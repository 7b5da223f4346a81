#include "PictalCore/Geometry/AlignmentSnapper.h"
#include "Tests/Support/GeometryText.h"

#include <gtest/gtest.h>

namespace pictal {

TEST(AlignmentSnapper, SnapsPoints) {
    const auto check = [](const char* name, CGPoint point, const CGRect& container,
                          CGFloat tolerance, CGPoint want, std::int64_t guides) {
        const auto result = AlignmentSnapper::snap(point, container, tolerance);
        EXPECT_EQ(text(result.point), text(want)) << name;
        EXPECT_EQ(result.guides.rawValue, guides) << name;
    };
    constexpr CGRect screen{0, 0, 1000, 800};
    check("both, at exactly the tolerance", {492, 392}, screen, 8, {500, 400}, 3);
    check("just beyond the tolerance", {508.001, 391.999}, screen, 8, {508.001, 391.999}, 0);
    check("negative tolerance, off one line", {501, 400}, screen, -4, {501, 400}, 2);
    check("NaN tolerance is none", {500, 401}, screen, nan, {500, 401}, 1);
    check("away from the origin", {-715, 5}, {-1440, -900, 1440, 900}, 8, {-720, 5}, 1);
    check("container without number", {1, 400}, {0, 0, nan, 800}, 8, {1, 400}, 0);
}

TEST(AlignmentSnapper, SnapsRectangles) {
    const auto check = [](const char* name, const CGRect& rect, const CGRect& want,
                          std::int64_t guides, const CGRect& container = {0, 0, 1000, 800}) {
        const auto result = AlignmentSnapper::snap(rect, container);
        EXPECT_EQ(text(result.rect), text(want)) << name;
        EXPECT_EQ(result.guides.rawValue, guides) << name;
    };
    check("both, odd sizes", {446, 371, 101, 51}, {449, 374, 102, 52}, 3);
    // 104 + 46.2 - 46.2 is a hair below 104, and 10 + 6.15 - 6.15 below 10.
    check("rebuilt where nothing snaps", {104, 10, 92.4, 12.3}, {103, 9, 94, 14}, 0);
    check("as large as the container", {3, -2, 1000, 800}, {0, 0, 1000, 800}, 3);
    check("too wide, unrounded", {0.5, 0.5, 1001, 20}, {0.5, 0.5, 1001, 20}, 0);
    check("too tall", {450.5, 0, 100, 801}, {450.5, 0, 100, 801}, 0);
    check("without height", {550.5, 400, -100, 0}, {450.5, 400, 100, 0}, 0);
}

}  // namespace pictal
