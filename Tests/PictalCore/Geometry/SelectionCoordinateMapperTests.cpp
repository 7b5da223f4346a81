#include "PictalCore/Geometry/SelectionCoordinateMapper.h"
#include "PictalCore/Geometry/SelectionOverlayEdgeModel.h"
#include "Tests/Support/GeometryText.h"

#include <gtest/gtest.h>

namespace pictal {

TEST(SelectionCoordinateMapper, FlipsBetweenGlobalAndLocal) {
    constexpr CGRect container{1440, -180, 1920, 1080};
    const auto local = [&](const CGRect& rect) {
        const auto result = SelectionCoordinateMapper::localRect(rect, container);
        return result ? text(*result) : "none";
    };
    const auto global = [&](const CGRect& rect) {
        return text(SelectionCoordinateMapper::globalRect(rect, container));
    };
    EXPECT_EQ(local({1440, 800, 100, 100}), "(0, 0, 100, 100)");
    EXPECT_EQ(global({0, 0, 100, 100}), "(1440, 800, 100, 100)");
    EXPECT_EQ(local({3350, -180, 10, 20}), "(1910, 1060, 10, 20)");
    EXPECT_EQ(global({1910, 1060, 10, 20}), "(3350, -180, 10, 20)");
    EXPECT_EQ(local({1400, 850, 100, 100}), "(0, 0, 60, 50)") << "cut at two edges";
    EXPECT_EQ(local({1450.5, 880.25, 10, 10}), "(10, 9, 11, 11)") << "rounded outward";
    EXPECT_EQ(local({0, 0, 1440, 900}), "none") << "touching";
    EXPECT_EQ(local({0, 0, 100, 100}), "none") << "apart";
    EXPECT_EQ(global({-10, -20, 30, 40}), "(1430, 880, 30, 40)") << "not cut outside";
    EXPECT_EQ(global({20, 20, -30, -40}), "(1430, 880, 30, 40)") << "from its far corner";
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

}  // namespace pictal
