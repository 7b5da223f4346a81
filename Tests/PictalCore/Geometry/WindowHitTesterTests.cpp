#include "PictalCore/Geometry/WindowCaptureSelectionRect.h"
#include "PictalCore/Geometry/WindowHitTester.h"
#include "Tests/Support/GeometryText.h"

#include <limits>
#include <type_traits>

#include <gtest/gtest.h>

namespace pictal {
namespace {

constexpr CGFloat nan = std::numeric_limits<CGFloat>::quiet_NaN();

TEST(WindowHitTester, TakesTheFrontmostLargeEnough) {
    const std::vector<WindowCandidate> windows{{1, {0, 0, 50, 50}, "badge", "Dock", 10},
                                               {2, {600, 400, -600, -400}, "notes", "Editor", 11},
                                               {3, {0, 0, 800, 600}, "page", "Browser", 12}};
    struct Case {
        const char* name;
        CGPoint point;
        CGSize minimum;
        std::uint32_t want;
    };
    constexpr Case cases[] = {
        {"all count", {10, 10}, {0, 0}, 1},
        {"exactly the minimum", {10, 10}, {50, 50}, 1},
        {"too small on one axis", {10, 10}, {50, 51}, 2},
        {"the right edge is outside", {600, 10}, {100, 100}, 3},
        {"the lower edge is inside", {0, 0}, {100, 100}, 2},
        {"nothing there", {900, 10}, {100, 100}, 0},
        {"all too small", {10, 10}, {1000, 1}, 0},
        {"NaN point", {nan, 10}, {0, 0}, 0},
        {"NaN minimum", {10, 10}, {nan, 0}, 0},
    };
    for (const Case& c : cases) {
        const WindowCandidate* hit = WindowHitTester::hitTest(c.point, windows, c.minimum);
        EXPECT_EQ(hit ? hit->id : 0, c.want) << c.name;
        EXPECT_TRUE(!hit || hit == &windows[hit->id - 1]) << c.name << ": a copy";
    }
    EXPECT_EQ(WindowHitTester::hitTest({0, 0}, std::span<WindowCandidate>{}, {0, 0}), nullptr);
}

template <class List>
concept CanBeHit =
    requires(List list) { WindowHitTester::hitTest({}, std::forward<List>(list), {}); };
static_assert(CanBeHit<std::vector<WindowCandidate>&>);
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
    struct Case {
        const char* name;
        CGSize pixels;
        CGFloat scale;
        bool expands;
        CGFloat inset;
        CGRect want;
    };
    constexpr Case cases[] = {
        {"same size", {1600, 1200}, 2, true, 8, frame},
        {"half a point smaller on each side", {1598, 1198}, 2, false, 8, {100.5, 100.5, 799, 599}},
        {"a quarter is nothing", {1599, 1199}, 2, true, 8, frame},
        {"smaller on one axis", {1600, 1198}, 2, true, 8, {100, 100.5, 800, 599}},
        {"smaller, a little wider", {1601, 1190}, 2, false, 8, {99.75, 102.5, 800.5, 595}},
        {"exactly the limit", {784, 600}, 1, true, 8, {108, 100, 784, 600}},
        {"too small", {782, 600}, 1, true, 8, frame},
        {"too low", {784, 582}, 1, true, 8, frame},
        {"larger", {1760, 1320}, 2, true, 48, {60, 70, 880, 660}},
        {"larger, not allowed", {1760, 1320}, 2, false, 48, frame},
        {"larger, beyond the limit", {1760, 1320}, 2, true, 32, frame},
        {"wider and lower", {810, 500}, 1, true, 8, {95, 150, 810, 500}},
        {"narrower and higher", {700, 610}, 1, true, 8, {150, 95, 700, 610}},
        {"larger, negative limit", {802, 602}, 1, true, -1, frame},
        {"no scale", {1598, 1198}, 0, true, 8, frame},
        {"NaN scale", {1598, 1198}, nan, true, 8, frame},
        {"no width", {0, 1198}, 2, true, 999, frame},
        {"no height", {1598, -1198}, 2, true, 999, frame},
        {"NaN limit", {1598, 1198}, 2, true, nan, frame},
    };
    for (const Case& c : cases)
        for (const CGRect& window : {frame, CGRect{900, 700, -800, -600}})
            EXPECT_EQ(text(WindowCaptureSelectionRect::visibleContentFrame(
                          window, c.pixels, c.scale, c.expands, c.inset)),
                      text(c.want))
                << c.name;
    const auto noArea =
        WindowCaptureSelectionRect::visibleContentFrame({9, 9, -4, 0}, {8, 8}, 2, true, 9);
    EXPECT_EQ(text(noArea), "(5, 9, 4, 0)");
}

}  // namespace
}  // namespace pictal
