#include "PictalCore/Geometry/OverlayPanelLayout.h"
#include "Tests/Support/GeometryText.h"

#include <gtest/gtest.h>

namespace pictal {

namespace Layout = OverlayPanelLayout;
using Side = OverlaySidePanelPlacement;
using Bar = OverlayActionBarPlacement;

constexpr CGRect screen{0, 0, 1440, 900};

TEST(OverlayPanelLayout, PlacesTheSidePanel) {
    constexpr CGSize panel{280, 400};
    const auto check = [&](const char* name, const CGRect& selection, Side placement,
                           CGPoint want) {
        EXPECT_EQ(Layout::sidePanelPlacement(selection, panel, screen), placement) << name;
        EXPECT_EQ(text(Layout::sidePanelCenter(selection, panel, screen)), text(want)) << name;
    };
    // It takes 12 + 280 + 14 = 306 points.
    check("left, to the point", {306, 200, 600, 400}, Side::left, {152, 400});
    check("a point too few there", {305, 200, 600, 400}, Side::right, {1059, 400});
    check("right, to the point", {100, 200, 1034, 400}, Side::right, {1288, 400});
    check("a point too few on both sides", {100, 200, 1035, 400}, Side::overlapping, {617.5, 400});
    check("raised; from its far corner", {1000, 890, -600, -90}, Side::left, {246, 688});
    EXPECT_EQ(Layout::sidePanelCenter({166, 0, 9, 9}, panel, screen, 12, 14, Side::left).x, 152);
}

TEST(OverlayPanelLayout, PlacesTheActionBar) {
    constexpr CGSize bar{300, 44};
    const auto check = [&](const char* name, const CGRect& selection, Bar placement, CGPoint want,
                           const CGRect& container = screen) {
        EXPECT_EQ(Layout::actionBarPlacement(selection, bar, container), placement) << name;
        EXPECT_EQ(text(Layout::actionBarCenter(selection, bar, container)), text(want)) << name;
    };
    // It takes 12 + 44 + 14 = 70 points.
    check("below, to the point", {400, 200, 600, 630}, Bar::below, {850, 866});
    check("a point too few there", {400, 200, 600, 631}, Bar::above, {850, 164});
    check("above, to the point", {400, 70, 600, 810}, Bar::above, {850, 34});
    check("a point too few on both", {400, 69, 600, 811}, Bar::screenBottom, {850, 866});
    constexpr CGRect low{0, -100, 900, 100};
    check("from the upper half", {0, -51, 600, 40}, Bar::screenBottom, {450, -34}, low);
    check("from the lower half", {0, -50, 600, 40}, Bar::screenTop, {450, -66}, low);
    check("pulled in from the left", {0, 200, 100, 400}, Bar::below, {162, 636});
    EXPECT_EQ(Layout::actionBarCenter({400, 178, 600, 422}, bar, screen, 12, 14, Bar::above).y,
              142);
}

TEST(OverlayPanelLayout, FloatsBesideAPoint) {
    const auto center = [](CGPoint point, CGSize panel) {
        return text(Layout::floatingPanelCenter(point, panel, screen));
    };
    EXPECT_EQ(center({1214, 774}, {200, 100}), "(1328, 838)") << "to the point";
    EXPECT_EQ(center({1215, 775}, {200, 100}), "(1101, 711)") << "a point too few";
    EXPECT_EQ(center({-500, 450}, {200, 100}), "(112, 514)") << "outside";
    EXPECT_EQ(center({100, 100}, {1500, 100}), "(720, 164)") << "too wide";
    EXPECT_EQ(text(Layout::clampedCenter({nan, -infinity}, {20, 20}, {-100, 50, 200, 100}, 10)),
              "(-80, 70)");
    EXPECT_EQ(text(Layout::frame({100, 100}, {40, 20})), "(80, 90, 40, 20)");
}

}  // namespace pictal
