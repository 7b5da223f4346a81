#include "PictalCore/Geometry/OverlayPanelLayout.h"
#include "Tests/Support/GeometryText.h"

#include <gtest/gtest.h>

namespace pictal {

namespace Layout = OverlayPanelLayout;
using Side = OverlaySidePanelPlacement;
using Bar = OverlayActionBarPlacement;

constexpr CGRect screen{0, 0, 1440, 900};

TEST(OverlayPanelLayout, PlacesTheSidePanel) {
    const auto check = [](const char* name, const CGRect& selection, Side placement, CGPoint want,
                          CGSize panel = {280, 400}) {
        EXPECT_EQ(Layout::sidePanelPlacement(selection, panel, screen), placement) << name;
        EXPECT_EQ(text(Layout::sidePanelCenter(selection, panel, screen)), text(want)) << name;
    };
    check("left first", {400, 200, 600, 400}, Side::left, {246, 400});
    check("left, to the point", {306, 200, 600, 400}, Side::left, {152, 400});
    check("right", {100, 200, 600, 400}, Side::right, {854, 400});
    check("right, to the point", {100, 200, 1034, 400}, Side::right, {1288, 400});
    check("neither", {50, 100, 1340, 700}, Side::overlapping, {720, 450});
    check("too wide", {400, 200, 600, 400}, Side::overlapping, {720, 400}, {2000, 400});
    check("raised from the lower edge", {400, 800, 600, 90}, Side::left, {246, 688});
    check("from its far corner", {1000, 600, -600, -400}, Side::left, {246, 400});

    const auto preferred = [](CGRect selection, CGSize panel, Side placement) {
        return text(Layout::sidePanelCenter(selection, panel, screen, Layout::defaultMargin,
                                            Layout::defaultGap, placement));
    };
    EXPECT_EQ(preferred({100, 200, 600, 400}, {280, 400}, Side::left), "(152, 400)");
    EXPECT_EQ(preferred({400, 200, 600, 400}, {2000, 400}, Side::right), "(720, 400)");
}

TEST(OverlayPanelLayout, PlacesTheActionBar) {
    constexpr CGSize bar{300, 44};
    const auto check = [&](const char* name, const CGRect& selection, Bar placement, CGPoint want,
                           const CGRect& container = screen) {
        EXPECT_EQ(Layout::actionBarPlacement(selection, bar, container), placement) << name;
        EXPECT_EQ(text(Layout::actionBarCenter(selection, bar, container)), text(want)) << name;
    };
    check("below", {400, 200, 600, 400}, Bar::below, {850, 636});
    check("below, to the point", {400, 200, 600, 630}, Bar::below, {850, 866});
    check("above", {400, 100, 600, 780}, Bar::above, {850, 64});
    check("above, to the point", {400, 70, 600, 810}, Bar::above, {850, 34});
    check("neither", {400, 40, 600, 840}, Bar::screenBottom, {850, 866});
    check("upper half", {0, 49, 600, 40}, Bar::screenBottom, {450, 66}, {0, 0, 900, 100});
    check("lower half", {0, -50, 600, 40}, Bar::screenTop, {450, -66}, {0, -100, 900, 100});
    check("pulled in from the left", {0, 200, 100, 400}, Bar::below, {162, 636});

    const auto y = [&](Bar placement) {
        return Layout::actionBarCenter({400, 178, 600, 422}, bar, screen, Layout::defaultMargin,
                                       Layout::defaultGap, placement)
            .y;
    };
    EXPECT_EQ(y(Bar::below), 636);
    EXPECT_EQ(y(Bar::above), 142);
    EXPECT_EQ(y(Bar::screenTop), 34);
    EXPECT_EQ(y(Bar::screenBottom), 866);
}

TEST(OverlayPanelLayout, FloatsBesideAPoint) {
    const auto center = [](CGPoint point, CGSize panel) {
        return text(Layout::floatingPanelCenter(point, panel, screen));
    };
    EXPECT_EQ(center({100, 100}, {200, 100}), "(214, 164)") << "right and below";
    EXPECT_EQ(center({1300, 850}, {200, 100}), "(1186, 786)") << "left and above";
    EXPECT_EQ(center({1214, 774}, {200, 100}), "(1328, 838)") << "just fitting";
    EXPECT_EQ(center({-500, 450}, {200, 100}), "(112, 514)") << "outside";
    EXPECT_EQ(center({100, 100}, {1500, 100}), "(720, 164)") << "too wide";
}

TEST(OverlayPanelLayout, ClampsCenters) {
    const auto clamped = [](CGPoint center, CGSize panel) {
        return text(Layout::clampedCenter(center, panel, {-100, 50, 200, 100}, 10));
    };
    EXPECT_EQ(clamped({50, 0}, {180, 80}), "(0, 100)") << "just fitting";
    EXPECT_EQ(clamped({50, 60}, {181, 20}), "(0, 70)") << "too wide";
    EXPECT_EQ(clamped({infinity, -infinity}, {20, 20}), "(80, 70)");
    EXPECT_EQ(clamped({nan, nan}, {20, 20}), "(-80, 70)");
    EXPECT_EQ(text(Layout::frame({100, 100}, {40, 20})), "(80, 90, 40, 20)");
}

}  // namespace pictal
