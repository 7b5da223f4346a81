#include "PictalCore/Geometry/WindowCaptureSelectionRect.h"
#include "PictalCore/Geometry/WindowHitTester.h"
#include "Tests/Support/GeometryText.h"

#include <gtest/gtest.h>

namespace pictal {

TEST(WindowHitTester, TakesTheFrontmostLargeEnough) {
    const std::vector<WindowCandidate> windows{{1, {0, 0, 50, 50}, "badge", "Dock", 10},
                                               {2, {600, 400, -600, -400}, "notes", "Editor", 11},
                                               {3, {0, 0, 800, 600}, "page", "Browser", 12}};
    const auto check = [&](const char* name, CGPoint point, CGSize minimum, std::uint32_t want) {
        const WindowCandidate* hit = WindowHitTester::hitTest(point, windows, minimum);
        EXPECT_EQ(hit, want == 0 ? nullptr : &windows[want - 1]) << name;
    };
    check("exactly the minimum", {10, 10}, {50, 50}, 1);
    check("too small on one axis", {10, 10}, {50, 51}, 2);
    check("the right edge is outside", {600, 10}, {100, 100}, 3);
    check("the lower edge is inside", {0, 0}, {100, 100}, 2);
    check("nothing there", {900, 10}, {100, 100}, 0);
    check("all too small", {10, 10}, {1000, 1}, 0);
    check("NaN point", {nan, 10}, {0, 0}, 0);
    check("NaN minimum", {10, 10}, {nan, 0}, 0);
    EXPECT_EQ(WindowHitTester::hitTest({0, 0}, std::span<WindowCandidate>{}, {0, 0}), nullptr);
}

template <class List>
concept CanBeHit =
    requires(List list) { WindowHitTester::hitTest({}, std::forward<List>(list), {}); };
static_assert(!CanBeHit<std::vector<WindowCandidate>>, "its window would be gone");

TEST(WindowCandidate, StoresTheFrameStandardised) {
    WindowCandidate window{7, {30, 40, -20, -30}, "t", "o", -1};
    EXPECT_EQ(window.appKitFrame.size.width, 20);
    EXPECT_EQ(window, WindowCandidate(7, {10, 10, 20, 30}, "t", "o", -1));
    window.ownerPID = 3;
    EXPECT_NE(window, WindowCandidate(7, {10, 10, 20, 30}, "t", "o", -1));
}

TEST(WindowCaptureSelectionRect, FollowsTheImageWithinLimits) {
    constexpr CGRect frame{100, 100, 800, 600};
    const auto check = [&](const char* name, CGSize pixels, CGFloat scale, bool expands,
                           CGFloat inset, const CGRect& want) {
        for (const CGRect& window : {frame, CGRect{900, 700, -800, -600}})
            EXPECT_EQ(text(WindowCaptureSelectionRect::visibleContentFrame(window, pixels, scale,
                                                                           expands, inset)),
                      text(want))
                << name;
    };
    check("same size", {1600, 1200}, 2, true, 8, frame);
    check("half a point less a side", {1598, 1198}, 2, false, 8, {100.5, 100.5, 799, 599});
    check("a quarter is nothing", {1599, 1199}, 2, true, 8, frame);
    check("smaller on one axis", {1600, 1198}, 2, true, 8, {100, 100.5, 800, 599});
    check("lower, a little wider", {1601, 1190}, 2, false, 8, {99.75, 102.5, 800.5, 595});
    check("exactly the limit", {784, 600}, 1, true, 8, {108, 100, 784, 600});
    check("too small", {782, 600}, 1, true, 8, frame);
    check("too low", {784, 582}, 1, true, 8, frame);
    check("larger", {1760, 1320}, 2, true, 48, {60, 70, 880, 660});
    check("larger, not allowed", {1760, 1320}, 2, false, 48, frame);
    check("larger, beyond the limit", {1760, 1320}, 2, true, 32, frame);
    check("wider and lower", {810, 500}, 1, true, 8, {95, 150, 810, 500});
    check("narrower and higher", {700, 610}, 1, true, 8, {150, 95, 700, 610});
    check("larger, negative limit", {802, 602}, 1, true, -1, frame);
    check("no scale", {1598, 1198}, 0, true, 8, frame);
    check("NaN scale", {1598, 1198}, nan, true, 8, frame);
    check("no width", {0, 1198}, 2, true, 999, frame);
    check("no height", {1598, -1198}, 2, true, 999, frame);
    check("NaN limit", {1598, 1198}, 2, true, nan, frame);
    EXPECT_EQ(
        text(WindowCaptureSelectionRect::visibleContentFrame({9, 9, -4, 0}, {8, 8}, 2, true, 9)),
        "(5, 9, 4, 0)");
}

}  // namespace pictal
