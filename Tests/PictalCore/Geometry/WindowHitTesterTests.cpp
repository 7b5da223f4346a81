#include "PictalCore/Geometry/WindowCaptureSelectionRect.h"
#include "PictalCore/Geometry/WindowHitTester.h"
#include "Tests/Support/GeometryText.h"

#include <gtest/gtest.h>

namespace pictal {

TEST(WindowHitTester, TakesTheFrontmostThatIsLargeEnough) {
    const std::vector<WindowCandidate> windows{{1, {0, 0, 50, 50}, "badge", "Dock", 10},
                                               {2, {600, 400, -600, -400}, "notes", "Editor", 11},
                                               {3, {0, 0, 800, 600}, "page", "Browser", 12}};
    const auto check = [&](const char* name, CGPoint point, CGSize minimum, std::uint32_t want) {
        const WindowCandidate* hit = WindowHitTester::hitTest(point, windows, minimum);
        EXPECT_EQ(hit, want == 0 ? nullptr : &windows[want - 1]) << name;
    };
    check("exactly the minimum", {10, 10}, {50, 50}, 1);
    check("too low", {10, 10}, {50, 51}, 2);
    check("too narrow; the right edge is outside", {600, 10}, {51, 50}, 3);
    check("nothing there", {900, 10}, {100, 100}, 0);
    check("NaN minimum", {10, 10}, {nan, 0}, 0);
    EXPECT_EQ(windows[1].appKitFrame.size.width, 600) << "stored standardised";
}

template <class List>
concept CanBeHit =
    requires(List list) { WindowHitTester::hitTest({}, std::forward<List>(list), {}); };
static_assert(!CanBeHit<std::vector<WindowCandidate>>, "its window would be gone");

using WindowCaptureSelectionRect::visibleContentFrame;

TEST(WindowCaptureSelectionRect, FollowsTheImageWithinLimits) {
    constexpr CGRect frame{900, 700, -800, -600};
    const auto check = [&](const char* name, CGSize pixels, CGFloat scale, bool expands,
                           CGFloat inset, const CGRect& want) {
        const CGRect visible = visibleContentFrame(frame, pixels, scale, expands, inset);
        EXPECT_EQ(text(visible), text(want)) << name;
    };
    check("half a point less a side", {1598, 1198}, 2, false, 8, {100.5, 100.5, 799, 599});
    check("a quarter is nothing", {1599, 1199}, 2, true, 8, frame);
    check("smaller on one axis", {1600, 1198}, 2, true, 8, {100, 100.5, 800, 599});
    check("lower, a little wider", {1601, 1190}, 2, false, 8, {99.75, 102.5, 800.5, 595});
    check("exactly the limit", {784, 584}, 1, true, 8, {108, 108, 784, 584});
    check("too narrow", {782, 600}, 1, true, 8, frame);
    check("too low", {784, 582}, 1, true, 8, frame);
    check("larger, exactly the limit", {1760, 1320}, 2, true, 40, {60, 70, 880, 660});
    check("higher, not allowed", {1590, 1201.1}, 2, false, 8, frame);
    check("wider, not allowed", {1601.1, 1190}, 2, false, 8, frame);
    check("wider, beyond the limit", {882, 600}, 1, true, 40, frame);
    check("higher, beyond the limit", {800, 682}, 1, true, 40, frame);
    check("wider and lower", {810, 500}, 1, true, 8, {95, 150, 810, 500});
    check("narrower and higher", {700, 610}, 1, true, 5, {150, 95, 700, 610});
    check("larger, negative limit", {802, 602}, 1, true, -1, frame);
    check("NaN scale", {1598, 1198}, nan, true, 8, frame);
    check("no width", {0, 1198}, 2, true, 999, frame);
    check("no height", {1598, -1198}, 2, true, 999, frame);
    EXPECT_EQ(text(visibleContentFrame({9, 9, -4, 0}, {8, 8}, 2, true, 9)), "(5, 9, 4, 0)");
}

}  // namespace pictal
