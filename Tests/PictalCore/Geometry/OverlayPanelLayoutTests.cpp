#include "PictalCore/Geometry/OverlayPanelLayout.h"
#include "Tests/Support/GeometryText.h"

#include <limits>

#include <gtest/gtest.h>

namespace pictal {
namespace {

using Side = OverlaySidePanelPlacement;
using Bar = OverlayActionBarPlacement;

constexpr CGRect screen{0, 0, 1440, 900};
constexpr CGFloat margin = OverlayPanelLayout::defaultMargin;
constexpr CGFloat gap = OverlayPanelLayout::defaultGap;

TEST(OverlayPanelLayout, PlacesTheSidePanel) {
    struct Case {
        const char* name;
        CGRect selection;
        CGSize panel;
        Side placement;
        CGPoint center;
    };
    for (const Case& c :
         {Case{"left first", {400, 200, 600, 400}, {280, 400}, Side::left, {246, 400}},
          Case{"left, to the point", {306, 200, 600, 400}, {280, 400}, Side::left, {152, 400}},
          Case{"right", {100, 200, 600, 400}, {280, 400}, Side::right, {854, 400}},
          Case{"right, to the point", {100, 200, 1034, 400}, {280, 400}, Side::right, {1288, 400}},
          Case{"neither", {50, 100, 1340, 700}, {280, 400}, Side::overlapping, {720, 450}},
          Case{"wider than the screen",
               {400, 200, 600, 400},
               {2000, 400},
               Side::overlapping,
               {720, 400}},
          Case{"raised from the lower edge",
               {400, 800, 600, 90},
               {280, 400},
               Side::left,
               {246, 688}},
          Case{"from its far corner",
               {1000, 600, -600, -400},
               {280, 400},
               Side::left,
               {246, 400}}}) {
        EXPECT_EQ(OverlayPanelLayout::sidePanelPlacement(c.selection, c.panel, screen), c.placement)
            << c.name;
        EXPECT_EQ(text(OverlayPanelLayout::sidePanelCenter(c.selection, c.panel, screen)),
                  text(c.center))
            << c.name;
    }
    EXPECT_EQ(text(OverlayPanelLayout::sidePanelCenter({100, 200, 600, 400}, {280, 400}, screen,
                                                       margin, gap, Side::left)),
              "(152, 400)")
        << "preferred, though it does not fit";
    EXPECT_EQ(text(OverlayPanelLayout::sidePanelCenter({400, 200, 600, 400}, {2000, 400}, screen,
                                                       margin, gap, Side::right)),
              "(720, 400)");
}

TEST(OverlayPanelLayout, PlacesTheActionBar) {
    constexpr CGSize bar{300, 44};
    struct Case {
        const char* name;
        CGRect selection;
        Bar placement;
        CGPoint center;
    };
    for (const Case& c :
         {Case{"below", {400, 200, 600, 400}, Bar::below, {850, 636}},
          Case{"below, to the point", {400, 200, 600, 630}, Bar::below, {850, 866}},
          Case{"above", {400, 100, 600, 780}, Bar::above, {850, 64}},
          Case{"above, to the point", {400, 70, 600, 810}, Bar::above, {850, 34}},
          Case{"screen bottom", {400, 40, 600, 840}, Bar::screenBottom, {850, 866}},
          Case{"pulled in from the left", {0, 200, 100, 400}, Bar::below, {162, 636}}}) {
        EXPECT_EQ(OverlayPanelLayout::actionBarPlacement(c.selection, bar, screen), c.placement)
            << c.name;
        EXPECT_EQ(text(OverlayPanelLayout::actionBarCenter(c.selection, bar, screen)),
                  text(c.center))
            << c.name;
    }
    // In a low container neither side has room; the half in which the selection starts decides.
    constexpr CGRect low{0, 0, 1440, 100};
    EXPECT_EQ(OverlayPanelLayout::actionBarPlacement({400, 50, 600, 40}, bar, low), Bar::screenTop);
    EXPECT_EQ(OverlayPanelLayout::actionBarPlacement({400, 49, 600, 40}, bar, low),
              Bar::screenBottom);
    for (const auto& [placement, y] :
         {std::pair{Bar::below, 636.0}, std::pair{Bar::above, 164.0 - 22},
          std::pair{Bar::screenTop, 34.0}, std::pair{Bar::screenBottom, 866.0}})
        EXPECT_EQ(OverlayPanelLayout::actionBarCenter({400, 178, 600, 422}, bar, screen, margin,
                                                      gap, placement)
                      .y,
                  y);
}

TEST(OverlayPanelLayout, FloatsBesideAPoint) {
    struct Case {
        const char* name;
        CGPoint point;
        CGSize panel;
        CGPoint center;
    };
    for (const Case& c : {Case{"right and below", {100, 100}, {200, 100}, {214, 164}},
                          Case{"left and above", {1300, 850}, {200, 100}, {1186, 786}},
                          Case{"just fitting", {1214, 774}, {200, 100}, {1328, 838}},
                          Case{"outside", {-500, 450}, {200, 100}, {112, 514}},
                          Case{"too wide", {100, 100}, {1500, 100}, {720, 164}}})
        EXPECT_EQ(text(OverlayPanelLayout::floatingPanelCenter(c.point, c.panel, screen)),
                  text(c.center))
            << c.name;
    EXPECT_EQ(text(OverlayPanelLayout::frame({100, 100}, {40, 20})), "(80, 90, 40, 20)");
}

TEST(OverlayPanelLayout, ClampsCenters) {
    constexpr CGFloat infinity = std::numeric_limits<CGFloat>::infinity();
    constexpr CGFloat nan = std::numeric_limits<CGFloat>::quiet_NaN();
    const auto clamped = [](CGPoint center, CGSize panel) {
        return text(OverlayPanelLayout::clampedCenter(center, panel, {-100, 50, 200, 100}, 10));
    };
    EXPECT_EQ(clamped({0, 100}, {20, 20}), "(0, 100)");
    EXPECT_EQ(clamped({-1000, 1000}, {20, 20}), "(-80, 130)");
    EXPECT_EQ(clamped({50, 0}, {180, 80}), "(0, 100)") << "just fitting";
    EXPECT_EQ(clamped({50, 60}, {181, 20}), "(0, 70)") << "too wide";
    EXPECT_EQ(clamped({infinity, -infinity}, {20, 20}), "(80, 70)");
    EXPECT_EQ(clamped({nan, nan}, {20, 20}), "(-80, 70)");
}

}  // namespace
}  // namespace pictal
