#include "PictalCore/Geometry/SelectionFrameAdjustment.h"
#include "Tests/Support/GeometryText.h"

#include <gtest/gtest.h>

namespace pictal {

using Handle = SelectionFrameAdjustmentHandle;
using enum Handle;

constexpr CGRect screen{0, 0, 1000, 800};

TEST(SelectionFrameAdjustment, HitsHandles) {
    const auto check = [](const char* name, CGPoint point, std::optional<Handle> want,
                          CGFloat edge = 14, CGFloat corner = 20,
                          const CGRect& rect = {150, 100, 400, 300}) {
        EXPECT_EQ(SelectionFrameAdjustment::hitHandle(point, rect, edge, corner), want) << name;
    };
    check("outside the first corner", {142, 95}, minXMinY);
    check("second corner", {560, 95}, maxXMinY);
    check("third corner", {169, 413}, minXMaxY);
    check("a corner's near side", {530, 380}, maxXMaxY);
    check("a corner's far side", {170, 100}, minY);
    check("14 outside the smaller edge", {350, 86}, minY);
    check("14 inside the greater edge", {350, 386}, maxY);
    check("14 outside the greater edge", {350, 414}, {});
    check("on the right edge", {550, 300}, maxX);
    check("middle", {350, 250}, move);
    check("x before y", {530, 110}, maxX, 60, 0);
    check("min x before max x", {350, 250}, minX, 250, 0);
    check("min y before max y", {350, 250}, minY, 160, 0);
    // The squares around the corners of 30 x 30 overlap by ten points.
    constexpr CGRect small{100, 100, 30, 30};
    check("all four squares", {115, 115}, minXMinY, 14, 20, small);
    check("the second and fourth", {120, 115}, maxXMinY, 14, 20, small);
    check("the third and fourth", {115, 120}, minXMaxY, 14, 20, small);
    check("negative edge tolerance", {350, 100}, {}, -5);
    check("no width", {100, 110}, {}, 14, 20, {100, 100, 0, 300});
}

TEST(SelectionFrameAdjustment, AdjustsRectangles) {
    constexpr CGRect rect{100, 100, 200, 100};
    const auto check = [&](const char* name, const CGRect& from, Handle handle, CGSize way,
                           const CGRect& want, const CGRect& bounds = screen,
                           CGSize minimum = SelectionFrameAdjustment::defaultMinimumSize) {
        const auto to = SelectionFrameAdjustment::adjustedRect(from, handle, way, bounds, minimum);
        EXPECT_EQ(text(to), text(want)) << name;
    };
    check("right, fraction", rect, maxX, {10.4, 7}, {100, 100, 211, 100});
    check("left to the minimum", rect, minX, {500, 7}, {220, 100, 80, 100});
    check("min y ignores x", rect, minY, {7, -30}, {100, 70, 200, 130});
    check("max y to the minimum", rect, maxY, {7, -99}, {100, 100, 200, 60});
    check("first corner", rect, minXMinY, {-10, -20}, {90, 80, 210, 120});
    check("second corner", rect, maxXMinY, {10, 20}, {100, 120, 210, 80});
    check("third corner", rect, minXMaxY, {10, 20}, {110, 100, 190, 120});
    check("fourth corner", rect, maxXMaxY, {10, 20}, {100, 100, 210, 120});
    check("move", rect, move, {-3.5, 2.25}, {96, 102, 201, 101});
    check("move, too wide", {10, 10, 1100, 100}, move, {5, 5}, {-100, 15, 1100, 100});
    check("the minimum wins at the left", {10, 10, 20, 99}, minX, {0, 0}, {-50, 10, 80, 99});
    check("the bounds win at the right", {950, 10, 20, 99}, maxX, {0, 0}, {950, 10, 50, 99});
    check("edges change places", {1100.5, 10, 50, 99}, maxX, {0, 0}, {1000, 10, 101, 99});
    check("minimum 0 is 1", rect, maxX, {-900, 0}, {100, 100, 1, 100}, screen, {0, 0});
    check("minimum beyond the bounds", screen, minX, {300, 0}, screen, screen, {2000, 60});
    check("no bounds", {9.5, 9, -9, 9}, move, {5, 5}, {0.5, 9, 9, 9}, {0, 0, 0, 9});
    // -5.3 + (1023 + 5.3) is above 1023: a right edge on the bounds has to stay there.
    check("rounding", {-5.3, 0, 99, 99}, maxX, {999, 0}, {-6, 0, 1029, 99}, {-10, 0, 1033, 99});
    check("NaN is no way", rect, move, {nan, infinity}, {-50, 700, 200, 100}, {-50, 20, 999, 780});
}

}  // namespace pictal
