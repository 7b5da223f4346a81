#include "PictalCore/Geometry/SelectionFrameAdjustment.h"
#include "Tests/Support/GeometryText.h"

#include <limits>

#include <gtest/gtest.h>

namespace pictal {
namespace {

using Handle = SelectionFrameAdjustmentHandle;

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
    for (const Case& c :
         {Case{"outside its corner", {92, 95}, Handle::minXMinY},
          Case{"second corner", {510, 95}, Handle::maxXMinY},
          Case{"third corner", {119, 419.5}, {}},
          Case{"third corner, inside", {119, 413}, Handle::minXMaxY},
          Case{"fourth corner", {481, 381}, Handle::maxXMaxY},
          Case{"a corner's far side", {120, 100}, Handle::minY},
          Case{"a corner's near side", {480, 380}, Handle::maxXMaxY},
          Case{"12 outside", {300, 88}, Handle::minY},
          Case{"14 outside the smaller edge", {300, 86}, Handle::minY},
          Case{"14 inside the greater edge", {300, 386}, Handle::maxY},
          Case{"14 outside the greater edge", {300, 414}, {}},
          Case{"20 outside", {300, 80}, {}},
          Case{"on the right edge", {500, 300}, Handle::maxX},
          Case{"inside the left edge", {113, 250}, Handle::minX},
          Case{"middle", {300, 250}, Handle::move},
          Case{"x before y", {150, 150}, Handle::minX, 60, 0},
          Case{"the smaller edge before the greater", {300, 250}, Handle::minX, 250, 0},
          Case{"negative edge tolerance", {300, 100}, {}, -5},
          Case{"NaN corner tolerance", {100, 100}, Handle::minX, 14, nan},
          Case{"NaN edge tolerance", {300, 250}, {}, nan},
          Case{"NaN point", {nan, 250}, {}}}) {
        for (const CGRect& rect : {CGRect{100, 100, 400, 300}, CGRect{500, 400, -400, -300}})
            EXPECT_EQ(SelectionFrameAdjustment::hitHandle(c.point, rect, c.edge, c.corner), c.want)
                << c.name;
    }
    EXPECT_FALSE(SelectionFrameAdjustment::hitHandle({100, 110}, {100, 100, 0, 300}));
}

TEST(SelectionFrameAdjustment, AdjustsRectangles) {
    constexpr CGRect bounds{0, 0, 1000, 800};
    constexpr CGRect rect{100, 100, 200, 100};
    struct Case {
        const char* name;
        CGRect rect;
        Handle handle;
        CGSize translation;
        CGRect want;
        CGRect bounds = CGRect{0, 0, 1000, 800};
        CGSize minimum = SelectionFrameAdjustment::defaultMinimumSize;
    };
    for (const Case& c :
         {Case{"right to the minimum", rect, Handle::maxX, {-180, 0}, {100, 100, 80, 100}},
          Case{"right, fraction", rect, Handle::maxX, {10.4, 0}, {100, 100, 211, 100}},
          Case{"right to the bounds", rect, Handle::maxX, {5000, 0}, {100, 100, 900, 100}},
          Case{"left to the bounds", rect, Handle::minX, {-500, 0}, {0, 100, 300, 100}},
          Case{"left to the minimum", rect, Handle::minX, {500, 0}, {220, 100, 80, 100}},
          Case{"top ignores x", rect, Handle::minY, {7, -30}, {100, 70, 200, 130}},
          Case{"bottom to the minimum", rect, Handle::maxY, {7, -99}, {100, 100, 200, 60}},
          Case{"corner min min", rect, Handle::minXMinY, {-10, -20}, {90, 80, 210, 120}},
          Case{"corner max min", rect, Handle::maxXMinY, {10, 20}, {100, 120, 210, 80}},
          Case{"corner min max", rect, Handle::minXMaxY, {10, 20}, {110, 100, 190, 120}},
          Case{"corner max max", rect, Handle::maxXMaxY, {10, 20}, {100, 100, 210, 120}},
          Case{"move", rect, Handle::move, {-3.5, 2.25}, {96, 102, 201, 101}},
          Case{"move to the right end", rect, Handle::move, {900, 0}, {800, 100, 200, 100}},
          Case{"move to the origin", rect, Handle::move, {-900, -900}, {0, 0, 200, 100}},
          Case{"move, larger than the bounds",
               {10, 10, 1100, 100},
               Handle::move,
               {5, 5},
               {-100, 15, 1100, 100}},
          Case{"the minimum wins at the left",
               {900, 100, 20, 100},
               Handle::minX,
               {0, 0},
               {840, 100, 80, 100}},
          Case{"the bounds win at the right",
               {950, 100, 20, 100},
               Handle::maxX,
               {0, 0},
               {950, 100, 50, 100}},
          Case{"edges pushed past each other",
               {1100, 100, 50, 100},
               Handle::maxX,
               {0, 0},
               {1000, 100, 100, 100}},
          Case{"minimum 0 is 1", rect, Handle::maxX, {-900, 0}, {100, 100, 1, 100}, bounds, {0, 0}},
          Case{"minimum beyond the bounds",
               {0, 0, 1000, 100},
               Handle::maxX,
               {-300, 0},
               {0, 0, 1000, 100},
               bounds,
               {2000, 60}},
          Case{"all from their far corners",
               {300, 200, -200, -100},
               Handle::maxX,
               {-180, 0},
               {100, 100, 80, 100},
               {1000, 800, -1000, -800}},
          Case{"no bounds", {0.5, 0.5, 9, 9}, Handle::move, {5, 5}, {0.5, 0.5, 9, 9}, {0, 0, 0, 9}},
          Case{"no area", {10.5, 9, -5, 0}, Handle::move, {5, 5}, {5.5, 9, 5, 0}},
          // A right edge on the bounds stays there: -5.3 + (1023 + 5.3) would be above 1023.
          Case{"whole bounds, fractional left",
               {-5.3, 0, 500, 100},
               Handle::maxX,
               {900, 0},
               {-6, 0, 1029, 100},
               {-10, 0, 1033, 800}},
          Case{"infinitely far", rect, Handle::move, {infinity, -infinity}, {800, 0, 200, 100}},
          Case{"NaN moves to the origin", rect, Handle::move, {nan, 0}, {0, 100, 200, 100}},
          Case{"NaN at the right is the minimum",
               rect,
               Handle::maxX,
               {nan, 0},
               {100, 100, 80, 100}}})
        EXPECT_EQ(text(SelectionFrameAdjustment::adjustedRect(c.rect, c.handle, c.translation,
                                                              c.bounds, c.minimum)),
                  text(c.want))
            << c.name;
}

}  // namespace
}  // namespace pictal
