#include "PictalCore/Geometry/CaptureDisplaySelector.h"
#include "PictalCore/Geometry/CaptureExclusionPlan.h"
#include "Tests/Support/GeometryText.h"

#include <array>
#include <limits>

#include <gtest/gtest.h>

namespace pictal {
namespace {

TEST(CaptureDisplaySelector, PicksTheDisplayCoveredMost) {
    constexpr CGFloat nan = std::numeric_limits<CGFloat>::quiet_NaN();
    constexpr std::array displays{CGRect{0, 0, 1440, 900}, CGRect{1440, 0, 1920, 1080},
                                  CGRect{0, 1800, 1440, -900}};
    struct Case {
        const char* name;
        CGRect rect;
        std::optional<std::int64_t> want;
    };
    constexpr Case cases[] = {
        {"more on the second", {1300, 100, 400, 300}, 1},
        {"half and half", {1240, 100, 400, 300}, 0},
        {"from its far corner", {1700, 400, -400, -300}, 1},
        {"a display from its far corner", {100, 1000, 10, 10}, 2},
        {"over all of them", {-500, -500, 9000, 9000}, 1},
        {"outside", {-500, 0, 100, 100}, {}},
        {"touching", {-100, 0, 100, 100}, {}},
        {"no area", {100, 100, 0, 10}, {}},
        {"NaN", {100, 100, nan, 10}, {}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(CaptureDisplaySelector::bestDisplayIndex(c.rect, displays), c.want) << c.name;
    EXPECT_FALSE(CaptureDisplaySelector::bestDisplayIndex({0, 0, 9, 9}, {}));
}

TEST(CaptureDisplaySelector, CountsFromTheDisplay) {
    constexpr CGRect display{1440, 0, 1920, 1080};
    const auto local = [&](const CGRect& rect) {
        return text(CaptureDisplaySelector::localRect(rect, display));
    };
    EXPECT_EQ(local({1500, 100, 200, 100}), "(60, 100, 200, 100)");
    EXPECT_EQ(local({1700, 200, -200, -100}), "(60, 100, 200, 100)");
    EXPECT_EQ(local({1400, 1000.5, 100, 100}), "(0, 1000.5, 60, 79.5)") << "cut, not rounded";
    EXPECT_EQ(local({0, 0, 100, 100}), "null");
}

TEST(CaptureExclusionPlan, KeepsTheListAsItIs) {
    const auto plan = CaptureExclusionPlan::overlayWindows({12, 7, 12});
    EXPECT_EQ(plan.excludedWindowIDs(), (std::vector<std::uint32_t>{12, 7, 12}));
    EXPECT_FALSE(plan.excludesCurrentApplication());
    EXPECT_EQ(plan, CaptureExclusionPlan::overlayWindows({12, 7, 12}));
    EXPECT_NE(plan, CaptureExclusionPlan::overlayWindows({12, 12, 7}));
}

}  // namespace
}  // namespace pictal
