#include "PictalCore/Geometry/SelectionCoordinateMapper.h"
#include "PictalCore/Geometry/SelectionOverlayEdgeModel.h"
#include "Tests/Support/GeometryText.h"

#include <gtest/gtest.h>

namespace pictal {
namespace {

TEST(SelectionCoordinateMapper, FlipsBetweenGlobalAndLocal) {
    constexpr CGRect container{1440, -180, 1920, 1080};
    const auto local = [&](const CGRect& rect) {
        return SelectionCoordinateMapper::localRect(rect, container).value_or(CGRect::null());
    };
    struct Case {
        const char* name;
        CGRect global, local;
    };
    constexpr Case cases[] = {
        {"at the top left", {1440, 800, 100, 100}, {0, 0, 100, 100}},
        {"at the bottom right", {3350, -180, 10, 20}, {1910, 1060, 10, 20}},
        {"all of it", container, {0, 0, 1920, 1080}},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(text(local(c.global)), text(c.local)) << c.name;
        EXPECT_EQ(text(SelectionCoordinateMapper::globalRect(c.local, container)), text(c.global))
            << c.name;
    }

    EXPECT_EQ(text(local({1400, 850, 100, 100})), "(0, 0, 60, 50)") << "cut at two edges";
    EXPECT_EQ(text(local({1450.5, 880.25, 10, 10})), "(10, 9, 11, 11)") << "rounded outward";
    EXPECT_EQ(text(local({0, 0, 1440, 900})), "null") << "touching";
    EXPECT_EQ(text(local({0, 0, 100, 100})), "null") << "apart";
    EXPECT_EQ(text(SelectionCoordinateMapper::globalRect({-10, -20, 30, 40}, container)),
              "(1430, 880, 30, 40)")
        << "not cut outside";
    EXPECT_EQ(text(SelectionCoordinateMapper::globalRect({20, 20, -30, -40}, container)),
              "(1430, 880, 30, 40)")
        << "from its far corner";
}

TEST(SelectionOverlayEdgeModel, GrowsTheAccent) {
    constexpr SelectionOverlayEdgeModel model{
        {10, 10, 100, 50}, SelectionOverlayEdgeModel::regionCornerRadius, 2};
    EXPECT_EQ(text(model.accentStrokeRect()), "(8, 8, 104, 54)");
    EXPECT_EQ(model.accentCornerRadius(), 8);
    EXPECT_EQ(text(model.dimCutoutRect()), "(10, 10, 100, 50)");
    EXPECT_EQ(model, SelectionOverlayEdgeModel({110, 60, -100, -50}, 6, 2));
    EXPECT_NE(model, SelectionOverlayEdgeModel({10, 10, 100, 50}, 6, 2.5));
}

}  // namespace
}  // namespace pictal
