#include "PictalCore/Geometry/SelectionFrameAdjustment.h"
#include "Tests/Support/GeometryText.h"

#include <limits>

#include <gtest/gtest.h>

namespace pictal {
namespace {

using Handle = SelectionFrameAdjustmentHandle;
using enum Handle;

constexpr CGFloat nan = std::numeric_limits<CGFloat>::quiet_NaN();
constexpr CGFloat infinity = std::numeric_limits<CGFloat>::infinity();

TEST(SelectionFrameAdjustment, HitsHandles) {
    struct Case {
        const char* name;
        CGPoint point;
        std::optional<Handle> want;
        CGFloat edge = SelectionFrameAdjustment::defaultEdgeTolerance;
        CGFloat corner = SelectionFrameAdjustment::defaultCornerTolerance;
    };
    constexpr Case cases[] = {
        {"outside the first corner", {92, 95}, minXMinY},
        {"second corner", {510, 95}, maxXMinY},
        {"third corner", {119, 413}, minXMaxY},
        {"in its square, but too far out", {119, 419}, {}},
        {"a corner's near side", {480, 380}, maxXMaxY},
        {"a corner's far side", {120, 100}, minY},
        {"12 outside", {300, 88}, minY},
        {"14 outside the smaller edge", {300, 86}, minY},
        {"14 inside the greater edge", {300, 386}, maxY},
        {"14 outside the greater edge", {300, 414}, {}},
        {"20 outside", {300, 80}, {}},
        {"on the right edge", {500, 300}, maxX},
        {"middle", {300, 250}, move},
        {"corners in order", {300, 390}, minXMaxY, 14, 250},
        {"x before y", {480, 110}, maxX, 60, 0},
        {"min x before max x", {300, 250}, minX, 250, 0},
        {"min y before max y", {300, 250}, minY, 160, 0},
        {"negative edge tolerance", {300, 100}, {}, -5},
        {"NaN corner tolerance", {100, 100}, minX, 14, nan},
        {"NaN edge tolerance", {300, 250}, {}, nan},
        {"NaN point", {nan, 250}, {}},
    };
    constexpr CGRect rect{100, 100, 400, 300};
    for (const Case& c : cases)
        EXPECT_EQ(SelectionFrameAdjustment::hitHandle(c.point, rect, c.edge, c.corner), c.want)
            << c.name;
    EXPECT_FALSE(SelectionFrameAdjustment::hitHandle({100, 110}, {100, 100, 0, 300}));
}

TEST(SelectionFrameAdjustment, AdjustsRectangles) {
    constexpr CGRect screen{0, 0, 1000, 800};
    constexpr CGRect rect{100, 100, 200, 100};
    struct Case {
        const char* name;
        CGRect rect;
        Handle handle;
        CGSize way;
        CGRect want;
        CGRect bounds = screen;
        CGSize minimum = SelectionFrameAdjustment::defaultMinimumSize;
    };
    constexpr Case cases[] = {
        {"right to the minimum", rect, maxX, {-180, 0}, {100, 100, 80, 100}},
        {"right, fraction", rect, maxX, {10.4, 0}, {100, 100, 211, 100}},
        {"right to the bounds", rect, maxX, {5000, 0}, {100, 100, 900, 100}},
        {"left to the bounds", rect, minX, {-500, 0}, {0, 100, 300, 100}},
        {"left to the minimum", rect, minX, {500, 0}, {220, 100, 80, 100}},
        {"min y ignores x", rect, minY, {7, -30}, {100, 70, 200, 130}},
        {"max y to the minimum", rect, maxY, {7, -99}, {100, 100, 200, 60}},
        {"first corner", rect, minXMinY, {-10, -20}, {90, 80, 210, 120}},
        {"second corner", rect, maxXMinY, {10, 20}, {100, 120, 210, 80}},
        {"third corner", rect, minXMaxY, {10, 20}, {110, 100, 190, 120}},
        {"fourth corner", rect, maxXMaxY, {10, 20}, {100, 100, 210, 120}},
        {"move", rect, move, {-3.5, 2.25}, {96, 102, 201, 101}},
        {"move to the right end", rect, move, {900, 0}, {800, 100, 200, 100}},
        {"move to the origin", rect, move, {-900, -900}, {0, 0, 200, 100}},
        {"move, too wide", {10, 10, 1100, 100}, move, {5, 5}, {-100, 15, 1100, 100}},
        {"the minimum wins at the left", {10, 10, 20, 99}, minX, {0, 0}, {-50, 10, 80, 99}},
        {"the bounds win at the right", {950, 10, 20, 99}, maxX, {0, 0}, {950, 10, 50, 99}},
        {"edges change places", {1100.5, 10, 50, 99}, maxX, {0, 0}, {1000, 10, 101, 99}},
        {"minimum 0 is 1", rect, maxX, {-900, 0}, {100, 100, 1, 100}, screen, {0, 0}},
        {"minimum beyond the bounds", screen, minX, {300, 0}, screen, screen, {2000, 60}},
        {"no bounds", {0.5, 0.5, 9, 9}, move, {5, 5}, {0.5, 0.5, 9, 9}, {0, 0, 0, 9}},
        {"no area", {10.5, 9, -5, 0}, move, {5, 5}, {5.5, 9, 5, 0}},
        // -5.3 + (1023 + 5.3) is above 1023: a right edge on the bounds has to stay there.
        {"rounding", {-5.3, 0, 99, 99}, maxX, {999, 0}, {-6, 0, 1029, 99}, {-10, 0, 1033, 99}},
        {"infinitely far", rect, move, {infinity, -infinity}, {800, 0, 200, 100}},
        {"NaN moves to the origin", rect, move, {nan, 0}, {0, 100, 200, 100}},
        {"NaN at the right is the minimum", rect, maxX, {nan, 0}, {100, 100, 80, 100}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(text(SelectionFrameAdjustment::adjustedRect(c.rect, c.handle, c.way, c.bounds,
                                                              c.minimum)),
                  text(c.want))
            << c.name;
}

}  // namespace
}  // namespace pictal
