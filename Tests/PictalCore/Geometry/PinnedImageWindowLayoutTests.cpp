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
    for (const Case& c :
         {Case{"as it is", {400, 300}, {400, 300}},
          Case{"exactly the maximum", {760, 540}, {760, 540}},
          Case{"half", {1520, 1080}, {760, 540}}, Case{"by its height", {400, 1080}, {200, 540}},
          Case{"long and thin", {3040, 100}, {760, 80}}, Case{"small", {50, 40}, {120, 80}},
          Case{"small on one axis", {300, 40}, {300, 80}}, Case{"no height", {400, 0}, {120, 80}},
          Case{"NaN", {nan, 300}, {120, 80}}, Case{"infinite", {infinity, 300}, {120, 80}}})
        EXPECT_EQ(text(Pinned::fittedPanelSize(c.image)), text(c.want)) << c.name;
}

TEST(PinnedImageWindowLayout, KeepsPanelsWithinReach) {
    constexpr CGRect visible{0, 0, 1440, 900};
    constexpr CGRect panel{100, 100, 300, 200};
    struct Case {
        const char* name;
        CGRect frame;
        CGSize offset;
        CGRect want;
        CGRect visible = {0, 0, 1440, 900};
    };
    for (const Case& c :
         {Case{"free", panel, {50, -60}, {150, 40, 300, 200}},
          Case{"right end", panel, {1300, 0}, {1360, 100, 300, 200}},
          Case{"left end", panel, {-600, 0}, {-220, 100, 300, 200}},
          Case{"both ends of y", panel, {0, 5000}, {100, 820, 300, 200}},
          Case{"lower end of y", panel, {0, -5000}, {100, -120, 300, 200}},
          Case{"narrow: all of it", {100, 100, 50, 200}, {5000, 0}, {1390, 100, 50, 200}},
          Case{"narrow, left", {100, 100, 50, 200}, {-5000, 0}, {0, 100, 50, 200}},
          Case{"the upper bound wins", {0, 0, 60, 60}, {500, 0}, {-10, 0, 60, 60}, {0, 0, 50, 900}},
          Case{"from the far corner",
               {400, 300, -300, -200},
               {1300, 0},
               {1360, 100, 300, 200},
               {1440, 900, -1440, -900}},
          Case{"no area", {0, 0, 0, 10}, {5000, 5}, {5000, 5, 0, 10}},
          Case{"no screen", panel, {5000, 0}, {5100, 100, 300, 200}, {0, 0, 0, 900}},
          Case{"infinitely far", panel, {infinity, -infinity}, {1360, -120, 300, 200}},
          Case{"NaN", panel, {nan, 0}, {-220, 100, 300, 200}}})
        EXPECT_EQ(text(Pinned::movedFrame(c.frame, c.offset, c.visible)), text(c.want)) << c.name;
    EXPECT_EQ(text(Pinned::clampedFrame({1430, 890, 300, 200}, visible, 10)),
              "(1430, 890, 300, 200)");
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
