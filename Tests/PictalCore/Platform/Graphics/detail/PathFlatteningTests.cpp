#include "PictalCore/Platform/Graphics/detail/PathFlattening.h"
#include "Tests/Support/Reference/ExactCoverage.h"

#include <cmath>

#include <gtest/gtest.h>

namespace pictal::detail {
namespace {

constexpr PixelRect visible{-2000, -2000, 2000, 2000};

Path circle(CGFloat radius) {
    Path path;
    path.addEllipse({-radius, -radius, 2 * radius, 2 * radius});
    return path;
}

/// The farthest that the middle of a chord, or a point, is from the circle around the origin.
CGFloat deviation(const FlatPath& flat, CGFloat radius) {
    CGFloat greatest = 0;
    const auto points = flat.contour(0).points;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const CGPoint a = points[i - 1], b = points[i];
        greatest = std::max({greatest, std::abs(std::hypot(b.x, b.y) - radius),
                             std::abs(std::hypot(a.x + b.x, a.y + b.y) / 2 - radius)});
    }
    return greatest;
}

TEST(PathFlattening, ChordsOfACircleStayWithinTheTolerance) {
    for (const CGFloat radius : {0.4, 22.0, 1000.0}) {
        // At most the tolerance, and not needlessly fine.
        const CGFloat fill = deviation(flattenedForFill(circle(radius), {}, visible), radius);
        EXPECT_LE(fill, 0.001) << radius;
        const CGFloat stroke =
            deviation(flattenedForStroke(circle(radius), {}, 1, visible), radius);
        EXPECT_LE(stroke, 0.01) << radius;
        if (radius < 1) continue;  // the number of chords is a small whole number
        EXPECT_GE(fill, 0.0007) << radius;
        EXPECT_GE(stroke, 0.007) << radius;
    }
    const AffineTransform turnAndScale{60, 80, -80, 60, 0, 0};
    EXPECT_LE(deviation(flattenedForFill(circle(1), turnAndScale, visible), 100), 0.001);
}

TEST(PathFlattening, CubicsFollowTheirCurve) {
    Path path;
    path.moveTo({0, 0});
    path.curveTo({900, 100}, {-700, 300}, {200, 250});
    std::vector<CGPoint> curve;  // itself within 0.0001 px
    for (int i = 0; i <= 8000; ++i) {
        const CGFloat t = i / 8000.0, s = 1 - t, w1 = 3 * s * s * t, w2 = 3 * s * t * t;
        curve.push_back(
            {w1 * 900 + w2 * -700 + t * t * t * 200, w1 * 100 + w2 * 300 + t * t * t * 250});
    }
    const FlatPath flat = flattenedForFill(path, {}, visible);
    const auto points = flat.contour(0).points;
    CGFloat worst = 0;
    for (std::size_t i = 1; i < points.size(); i += 7) {
        const CGPoint a = points[i - 1], b = points[i];
        worst =
            std::max(worst, test::distanceToPolyline({(a.x + b.x) / 2, (a.y + b.y) / 2}, curve));
    }
    EXPECT_LE(worst, 0.0011);
    EXPECT_GE(worst, 0.0005);
}

TEST(PathFlattening, SpendsNoChordsOutOfSight) {
    for (const CGFloat radius : {1e9, 1e18, 1e99}) {
        Path large;
        large.addEllipse({-radius, 0, 2 * radius, 2 * radius});
        EXPECT_LT(flattenedForFill(large, {}, visible).points().size(), 3000U) << radius;
        EXPECT_LT(flattenedForStroke(large, {}, 50, visible).points().size(), 3000U) << radius;
        EXPECT_LT(flattenedForStroke(large, {}, radius, visible).points().size(), 60'000U)
            << radius;
    }
}

TEST(PathFlattening, IsNothingWhereACoordinateIsNotFinite) {
    for (const CGFloat bad : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
        Path path;
        path.addRect({0, 0, 10, 10});
        path.moveTo({1, 1});
        path.quadCurveTo({2, bad}, {3, 3});
        EXPECT_TRUE(flattenedForFill(path, {}, visible).isEmpty());
        EXPECT_TRUE(flattenedForStroke(path, {}, 1, visible).isEmpty());
    }
    Path path;
    path.addRect({0, 0, 1e200, 1e200});
    EXPECT_FALSE(flattenedForFill(path, {}, visible).isEmpty());
    EXPECT_TRUE(flattenedForFill(path, AffineTransform::scale(1e200, 1), visible).isEmpty());
}

TEST(PathFlattening, KeepsContoursApart) {
    Path path;
    path.moveTo({5, 5});  // leads nowhere
    path.moveTo({1, 1});
    path.lineTo({1, 1});  // a dot
    path.addRect({0, 0, 2, 2});
    path.lineTo({-1, 0});
    const FlatPath flat = flattenedForStroke(path, {}, 1, visible);
    ASSERT_EQ(flat.contourCount(), 3U);
    EXPECT_EQ(flat.contour(0).points.size(), 1U);
    EXPECT_EQ(flat.contour(1).points.size(), 4U);
    EXPECT_TRUE(flat.contour(1).closed);
    EXPECT_EQ(flat.contour(2).points.front(), (CGPoint{0, 0}));
    EXPECT_FALSE(flat.contour(2).closed);
}

}  // namespace
}  // namespace pictal::detail
