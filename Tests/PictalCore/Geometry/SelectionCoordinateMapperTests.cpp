#include "PictalCore/Geometry/SelectionCoordinateMapper.h"
#include "PictalCore/Geometry/SelectionOverlayEdgeModel.h"
#include "Tests/Support/GeometryText.h"

#include <gtest/gtest.h>

namespace pictal {

TEST(SelectionCoordinateMapper, FlipsBetweenGlobalAndLocal) {
    constexpr CGRect container{1440, -180, 1920, 1080};
    const auto local = [&](const CGRect& rect) {
        return text(SelectionCoordinateMapper::localRect(rect, container).value_or(CGRect::null()));
    };
    EXPECT_EQ(local({3350, -180, 10, 20}), "(1910, 1060, 10, 20)");
    EXPECT_EQ(local({1400, 850, 100, 100}), "(0, 0, 60, 50)") << "cut at two edges";
    EXPECT_EQ(local({1450.5, 880.25, 10, 10}), "(10, 9, 11, 11)") << "rounded outward";
    EXPECT_EQ(local({0, 0, 1440, 900}), "null") << "touching";
    const CGRect global = SelectionCoordinateMapper::globalRect({20.5, 20, -30, -40}, container);
    EXPECT_EQ(text(global), "(1430, 880, 31, 40)") << "from its far corner, not cut";
}

TEST(SelectionOverlayEdgeModel, GrowsTheAccent) {
    constexpr SelectionOverlayEdgeModel model{{10, 10, 100, 50}, 6, 2};
    EXPECT_EQ(text(model.accentStrokeRect()), "(8, 8, 104, 54)");
    EXPECT_EQ(model.accentCornerRadius(), 8);
}

}  // namespace pictal
