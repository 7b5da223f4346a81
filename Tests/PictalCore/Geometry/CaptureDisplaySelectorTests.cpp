#include "PictalCore/Geometry/CaptureDisplaySelector.h"
#include "Tests/Support/GeometryText.h"

#include <gtest/gtest.h>

namespace pictal {

TEST(CaptureDisplaySelector, PicksTheDisplayCoveredMost) {
    constexpr std::array displays{CGRect{0, 0, 1440, 900}, CGRect{1440, 0, 1920, 1080},
                                  CGRect{0, 1800, 1440, -900}};
    const auto best = [&](const CGRect& rect) {
        return CaptureDisplaySelector::bestDisplayIndex(rect, displays).value_or(-1);
    };
    EXPECT_EQ(best({1240, 100, 400, 300}), 0) << "half and half";
    EXPECT_EQ(best({1700, 400, -400, -300}), 1) << "from its far corner";
    EXPECT_EQ(best({100, 1000, 10, 10}), 2) << "a display from its far corner";
    EXPECT_EQ(best({-100, 0, 100, 100}), -1) << "touching";
    EXPECT_EQ(best({100, 100, nan, 10}), -1);
}

TEST(CaptureDisplaySelector, CountsFromTheDisplay) {
    const auto local = [](const CGRect& rect) {
        return text(CaptureDisplaySelector::localRect(rect, {1440, 20, 1920, 1080}));
    };
    EXPECT_EQ(local({1700, 220, -200, -100}), "(60, 100, 200, 100)");
    EXPECT_EQ(local({1400, 1020.5, 100, 100}), "(0, 1000.5, 60, 79.5)") << "cut, not rounded";
    EXPECT_EQ(local({0, 0, 100, 100}), "null");
}

}  // namespace pictal
