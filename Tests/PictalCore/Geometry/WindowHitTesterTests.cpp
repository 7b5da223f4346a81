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

TEST(WindowCaptureSelectionRect, FollowsTheImageWithinLimits) {
    const auto visible = [](CGSize pixels, CGFloat scale, bool expands, CGFloat limit,
                            const CGRect& window = {900, 700, -800, -600}) {
        return text(
            WindowCaptureSelectionRect::visibleContentFrame(window, pixels, scale, expands, limit));
    };
    const std::string frame = "(100, 100, 800, 600)";
    EXPECT_EQ(visible({1598, 1198}, 2, false, 8), "(100.5, 100.5, 799, 599)");
    EXPECT_EQ(visible({1599, 1199}, 2, true, 8), frame) << "a quarter is nothing";
    EXPECT_EQ(visible({1600, 1198}, 2, true, 8), "(100, 100.5, 800, 599)") << "lower alone";
    EXPECT_EQ(visible({1598, 1200}, 2, true, 8), "(100.5, 100, 799, 600)") << "narrower alone";
    EXPECT_EQ(visible({1601, 1190}, 2, false, 8), "(99.75, 102.5, 800.5, 595)");
    EXPECT_EQ(visible({784, 584}, 1, true, 8), "(108, 108, 784, 584)") << "exactly the limit";
    EXPECT_EQ(visible({782, 600}, 1, true, 8), frame) << "too narrow";
    EXPECT_EQ(visible({784, 582}, 1, true, 8), frame) << "too low";
    EXPECT_EQ(visible({1760, 1320}, 2, true, 40), "(60, 70, 880, 660)") << "exactly the limit";
    EXPECT_EQ(visible({1601.1, 1190}, 2, false, 8), frame) << "wider, not allowed";
    EXPECT_EQ(visible({1590, 1201.1}, 2, false, 8), frame) << "higher, not allowed";
    EXPECT_EQ(visible({882, 600}, 1, true, 40), frame) << "too wide";
    EXPECT_EQ(visible({800, 682}, 1, true, 40), frame) << "too high";
    EXPECT_EQ(visible({810, 500}, 1, true, 8), "(95, 150, 810, 500)") << "wider and lower";
    EXPECT_EQ(visible({700, 610}, 1, true, 5), "(150, 95, 700, 610)") << "narrower and higher";
    EXPECT_EQ(visible({802, 602}, 1, true, -1), frame) << "negative limit";
    EXPECT_EQ(visible({1598, 1198}, nan, true, 8), frame);
    EXPECT_EQ(visible({0, 1198}, 2, true, 999), frame);
    EXPECT_EQ(visible({8, 8}, 2, true, 9, {9, 9, -4, 0}), "(5, 9, 4, 0)") << "no window";
    EXPECT_EQ(visible({1598, -1198}, 2, true, 999), frame);
}

}  // namespace pictal
