#include "PictalCore/Geometry/PinnedImageWindowLayout.h"
#include "Tests/Support/GeometryText.h"

#include <gtest/gtest.h>

namespace pictal {

namespace Pinned = PinnedImageWindowLayout;

TEST(PinnedImageWindowLayout, FitsPanels) {
    const auto fitted = [](CGSize image) { return text(Pinned::fittedPanelSize(image)); };
    EXPECT_EQ(fitted({400, 300}), "(400, 300)");
    EXPECT_EQ(fitted({400, 1080}), "(200, 540)") << "by its height";
    EXPECT_EQ(fitted({3040, 100}), "(760, 80)") << "long and thin";
    EXPECT_EQ(fitted({50, 300}), "(120, 300)") << "small on one axis";
    for (const CGSize none :
         {CGSize{400, 0}, CGSize{0, 300}, CGSize{nan, 300}, CGSize{infinity, 300}})
        EXPECT_EQ(fitted(none), "(120, 80)") << text(none);
}

TEST(PinnedImageWindowLayout, KeepsPanelsWithinReach) {
    constexpr CGRect panel{100, 100, 300, 200};
    const auto check = [&](const char* name, const CGRect& frame, CGSize offset, const CGRect& want,
                           const CGRect& visible = {-40, 20, 1480, 880}) {
        EXPECT_EQ(text(Pinned::movedFrame(frame, offset, visible)), text(want)) << name;
    };
    check("free", panel, {50, -60}, {150, 40, 300, 200});
    check("right end, upper end", panel, {1300, 5000}, {1360, 820, 300, 200});
    check("left end, lower end", panel, {-600, -5000}, {-260, -100, 300, 200});
    check("small: all of it", {100, 100, 50, 40}, {5000, -5000}, {1390, 20, 50, 40});
    check("the upper bound wins", {0, 0, 60, 60}, {500, 0}, {-10, 0, 60, 60}, {0, 0, 50, 900});
    check("all from the far corner", {400, 300, -300, -200}, {1300, 0}, {1360, 100, 300, 200},
          {1440, 900, -1440, -900});
    check("no width", {0, 0, 0, 10}, {5000, 5}, {5000, 5, 0, 10});
    check("no screen", panel, {5000, 0}, {5100, 100, 300, 200}, {0, 0, 9, 0});
    check("infinitely far", panel, {infinity, -infinity}, {1360, -100, 300, 200});
    check("NaN", panel, {nan, 0}, {-260, 100, 300, 200});
}

TEST(PinnedImageWindowLayout, UnitesFrames) {
    constexpr std::array frames{CGRect{90, 90, 0, 10},    CGRect{90, 90, 9, 0},
                                CGRect{5, -5, 10, 10},    CGRect{20, 20, 10, 10},
                                CGRect{-100, 0, -10, 10}, CGRect{0, 0, nan, 1}};
    EXPECT_EQ(text(Pinned::unionOf(frames).value()), "(5, -5, 25, 35)");
    EXPECT_EQ(Pinned::unionOf(std::span(frames).first(2)), std::nullopt);
}

}  // namespace pictal
