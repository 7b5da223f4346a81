#include "PictalCore/Geometry/PinnedImageWindowLayout.h"
#include "Tests/Support/GeometryText.h"

#include <limits>
#include <vector>

#include <gtest/gtest.h>

namespace pictal {
namespace {

namespace Pinned = PinnedImageWindowLayout;

constexpr CGFloat nan = std::numeric_limits<CGFloat>::quiet_NaN();
constexpr CGFloat infinity = std::numeric_limits<CGFloat>::infinity();

TEST(PinnedImageWindowLayout, FitsPanels) {
    struct Case {
        const char* name;
        CGSize image, want;
    };
    constexpr Case cases[] = {
        {"as it is", {400, 300}, {400, 300}},
        {"exactly the maximum", {760, 540}, {760, 540}},
        {"half", {1520, 1080}, {760, 540}},
        {"by its height", {400, 1080}, {200, 540}},
        {"long and thin", {3040, 100}, {760, 80}},
        {"small", {50, 40}, {120, 80}},
        {"small on one axis", {300, 40}, {300, 80}},
        {"no height", {400, 0}, {120, 80}},
        {"NaN", {nan, 300}, {120, 80}},
        {"infinite", {infinity, 300}, {120, 80}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(text(Pinned::fittedPanelSize(c.image)), text(c.want)) << c.name;
}

TEST(PinnedImageWindowLayout, KeepsPanelsWithinReach) {
    constexpr CGRect screen{0, 0, 1440, 900};
    constexpr CGRect panel{100, 100, 300, 200};
    struct Case {
        const char* name;
        CGRect frame;
        CGSize offset;
        CGRect want;
        CGRect visible = screen;
    };
    constexpr Case cases[] = {
        {"free", panel, {50, -60}, {150, 40, 300, 200}},
        {"right end", panel, {1300, 0}, {1360, 100, 300, 200}},
        {"left end", panel, {-600, 0}, {-220, 100, 300, 200}},
        {"upper end of y", panel, {0, 5000}, {100, 820, 300, 200}},
        {"lower end of y", panel, {0, -5000}, {100, -120, 300, 200}},
        {"narrow: all of it", {100, 100, 50, 200}, {5000, 0}, {1390, 100, 50, 200}},
        {"narrow, left", {100, 100, 50, 200}, {-5000, 0}, {0, 100, 50, 200}},
        {"the upper bound wins", {0, 0, 60, 60}, {500, 0}, {-10, 0, 60, 60}, {0, 0, 50, 900}},
        {"from its far corner", {400, 300, -300, -200}, {1300, 0}, {1360, 100, 300, 200}},
        {"a screen from there", panel, {1300, 0}, {1360, 100, 300, 200}, {1440, 900, -1440, -900}},
        {"no area", {0, 0, 0, 10}, {5000, 5}, {5000, 5, 0, 10}},
        {"no screen", panel, {5000, 0}, {5100, 100, 300, 200}, {0, 0, 0, 900}},
        {"infinitely far", panel, {infinity, -infinity}, {1360, -120, 300, 200}},
        {"NaN", panel, {nan, 0}, {-220, 100, 300, 200}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(text(Pinned::movedFrame(c.frame, c.offset, c.visible)), text(c.want)) << c.name;
    EXPECT_EQ(text(Pinned::clampedFrame(panel.offsetBy(1330, 795), screen, 9)),
              "(1430, 891, 300, 200)");
}

TEST(PinnedImageWindowLayout, UnitesFrames) {
    const auto united = [](const std::vector<CGRect>& frames) {
        const auto all = Pinned::unionOf(frames);
        return all ? text(*all) : "nothing";
    };
    EXPECT_EQ(united({}), "nothing");
    EXPECT_EQ(united({{0, 0, 0, 10}, {5, 5, -1, 10}, {0, 0, nan, 1}}), "nothing");
    EXPECT_EQ(united({{0, 0, 10, 10}, {20, 20, 10, 10}}), "(0, 0, 30, 30)");
    EXPECT_EQ(united({{90, 90, 0, 10}, {5, -5, 10, 10}, {-100, 0, -10, 10}}), "(5, -5, 10, 10)");
}

}  // namespace
}  // namespace pictal
