#include "PictalCore/Geometry/PinnedImageWindowLayout.h"
#include "Tests/Support/GeometryText.h"

#include <gtest/gtest.h>

namespace pictal {

namespace Pinned = PinnedImageWindowLayout;

constexpr CGRect screen{0, 0, 1440, 900};

TEST(PinnedImageWindowLayout, FitsPanels) {
    const auto fitted = [](CGSize image) { return text(Pinned::fittedPanelSize(image)); };
    EXPECT_EQ(fitted({400, 300}), "(400, 300)");
    EXPECT_EQ(fitted({760, 540}), "(760, 540)") << "exactly the maximum";
    EXPECT_EQ(fitted({1520, 1080}), "(760, 540)");
    EXPECT_EQ(fitted({400, 1080}), "(200, 540)") << "by its height";
    EXPECT_EQ(fitted({3040, 100}), "(760, 80)") << "long and thin";
    EXPECT_EQ(fitted({50, 40}), "(120, 80)");
    EXPECT_EQ(fitted({300, 40}), "(300, 80)") << "small on one axis";
    for (const CGSize none : {CGSize{400, 0}, CGSize{nan, 300}, CGSize{infinity, 300}})
        EXPECT_EQ(fitted(none), "(120, 80)") << text(none);
}

TEST(PinnedImageWindowLayout, KeepsPanelsWithinReach) {
    constexpr CGRect panel{100, 100, 300, 200};
    const auto check = [&](const char* name, const CGRect& frame, CGSize offset, const CGRect& want,
                           const CGRect& visible = screen) {
        EXPECT_EQ(text(Pinned::movedFrame(frame, offset, visible)), text(want)) << name;
    };
    check("free", panel, {50, -60}, {150, 40, 300, 200});
    check("right end", panel, {1300, 0}, {1360, 100, 300, 200});
    check("left end", panel, {-600, 0}, {-220, 100, 300, 200});
    check("upper end of y", panel, {0, 5000}, {100, 820, 300, 200});
    check("lower end of y", panel, {0, -5000}, {100, -120, 300, 200});
    check("narrow: all of it", {100, 100, 50, 200}, {5000, 0}, {1390, 100, 50, 200});
    check("narrow, left", {100, 100, 50, 200}, {-5000, 0}, {0, 100, 50, 200});
    check("the upper bound wins", {0, 0, 60, 60}, {500, 0}, {-10, 0, 60, 60}, {0, 0, 50, 900});
    check("from its far corner", {400, 300, -300, -200}, {1300, 0}, {1360, 100, 300, 200});
    check("a screen so", panel, {1300, 0}, {1360, 100, 300, 200}, {1440, 900, -1440, -900});
    check("no area", {0, 0, 0, 10}, {5000, 5}, {5000, 5, 0, 10});
    check("no screen", panel, {5000, 0}, {5100, 100, 300, 200}, {0, 0, 0, 900});
    check("infinitely far", panel, {infinity, -infinity}, {1360, -120, 300, 200});
    check("NaN", panel, {nan, 0}, {-220, 100, 300, 200});
    EXPECT_EQ(text(Pinned::clampedFrame(panel.offsetBy(1330, 795), screen, 9)),
              "(1430, 891, 300, 200)");
}

TEST(PinnedImageWindowLayout, UnitesFrames) {
    const auto united = [](const std::vector<CGRect>& frames) {
        return text(Pinned::unionOf(frames).value_or(CGRect::null()));
    };
    EXPECT_EQ(Pinned::unionOf({}), std::nullopt);
    EXPECT_EQ(united({{0, 0, 0, 10}, {5, 5, -1, 10}, {0, 0, nan, 1}}), "null");
    EXPECT_EQ(united({{0, 0, 10, 10}, {20, 20, 10, 10}}), "(0, 0, 30, 30)");
    EXPECT_EQ(united({{90, 90, 0, 10}, {5, -5, 10, 10}, {-100, 0, -10, 10}}), "(5, -5, 10, 10)");
}

}  // namespace pictal
