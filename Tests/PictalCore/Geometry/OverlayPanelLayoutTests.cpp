#include "PictalCore/Geometry/OverlayPanelLayout.h"
#include "Tests/Support/GeometryText.h"

#include <limits>

#include <gtest/gtest.h>

namespace pictal {
namespace {

namespace Layout = OverlayPanelLayout;
using Side = OverlaySidePanelPlacement;
using Bar = OverlayActionBarPlacement;

constexpr CGRect screen{0, 0, 1440, 900};

TEST(OverlayPanelLayout, PlacesTheSidePanel) {
    struct Case {
        const char* name;
        CGRect selection;
        Side placement;
        CGPoint center;
        CGSize panel = {280, 400};
    };
    constexpr Case cases[] = {
        {"left first", {400, 200, 600, 400}, Side::left, {246, 400}},
        {"left, to the point", {306, 200, 600, 400}, Side::left, {152, 400}},
        {"right", {100, 200, 600, 400}, Side::right, {854, 400}},
        {"right, to the point", {100, 200, 1034, 400}, Side::right, {1288, 400}},
        {"neither", {50, 100, 1340, 700}, Side::overlapping, {720, 450}},
        {"too wide", {400, 200, 600, 400}, Side::overlapping, {720, 400}, {2000, 400}},
        {"raised from the lower edge", {400, 800, 600, 90}, Side::left, {246, 688}},
        {"from its far corner", {1000, 600, -600, -400}, Side::left, {246, 400}},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Layout::sidePanelPlacement(c.selection, c.panel, screen), c.placement) << c.name;
        EXPECT_EQ(text(Layout::sidePanelCenter(c.selection, c.panel, screen)), text(c.center))
            << c.name;
    }
    const auto preferred = [](CGRect selection, CGSize panel, Side placement) {
        return text(Layout::sidePanelCenter(selection, panel, screen, Layout::defaultMargin,
                                            Layout::defaultGap, placement));
    };
    EXPECT_EQ(preferred({100, 200, 600, 400}, {280, 400}, Side::left), "(152, 400)");
    EXPECT_EQ(preferred({400, 200, 600, 400}, {2000, 400}, Side::right), "(720, 400)");
}

TEST(OverlayPanelLayout, PlacesTheActionBar) {
    constexpr CGSize bar{300, 44};
    struct Case {
        const char* name;
        CGRect selection;
        Bar placement;
        CGPoint center;
        CGRect container = screen;
    };
    constexpr Case cases[] = {
        {"below", {400, 200, 600, 400}, Bar::below, {850, 636}},
        {"below, to the point", {400, 200, 600, 630}, Bar::below, {850, 866}},
        {"above", {400, 100, 600, 780}, Bar::above, {850, 64}},
        {"above, to the point", {400, 70, 600, 810}, Bar::above, {850, 34}},
        {"neither, upper half", {400, 40, 600, 840}, Bar::screenBottom, {850, 866}},
        {"upper half", {0, 49, 600, 40}, Bar::screenBottom, {450, 66}, {0, 0, 900, 100}},
        {"lower half", {0, -50, 600, 40}, Bar::screenTop, {450, -66}, {0, -100, 900, 100}},
        {"pulled in from the left", {0, 200, 100, 400}, Bar::below, {162, 636}},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Layout::actionBarPlacement(c.selection, bar, c.container), c.placement) << c.name;
        EXPECT_EQ(text(Layout::actionBarCenter(c.selection, bar, c.container)), text(c.center))
            << c.name;
    }
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
    struct Case {
        const char* name;
        CGPoint point;
        CGSize panel;
        CGPoint center;
    };
    constexpr Case cases[] = {
        {"right and below", {100, 100}, {200, 100}, {214, 164}},
        {"left and above", {1300, 850}, {200, 100}, {1186, 786}},
        {"just fitting", {1214, 774}, {200, 100}, {1328, 838}},
        {"outside", {-500, 450}, {200, 100}, {112, 514}},
        {"too wide", {100, 100}, {1500, 100}, {720, 164}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(text(Layout::floatingPanelCenter(c.point, c.panel, screen)), text(c.center))
            << c.name;
    EXPECT_EQ(text(Layout::frame({100, 100}, {40, 20})), "(80, 90, 40, 20)");
}

TEST(OverlayPanelLayout, ClampsCenters) {
    constexpr CGFloat infinity = std::numeric_limits<CGFloat>::infinity();
    constexpr CGFloat nan = std::numeric_limits<CGFloat>::quiet_NaN();
    const auto clamped = [](CGPoint center, CGSize panel) {
        return text(Layout::clampedCenter(center, panel, {-100, 50, 200, 100}, 10));
    };
    EXPECT_EQ(clamped({50, 0}, {180, 80}), "(0, 100)") << "just fitting";
    EXPECT_EQ(clamped({50, 60}, {181, 20}), "(0, 70)") << "too wide";
    EXPECT_EQ(clamped({infinity, -infinity}, {20, 20}), "(80, 70)");
    EXPECT_EQ(clamped({nan, nan}, {20, 20}), "(-80, 70)");
}

}  // namespace
}  // namespace pictal
