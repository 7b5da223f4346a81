#include "PictalCore/Platform/Graphics/detail/FlatPath.h"
#include "Tests/Support/Reference/ExactCoverage.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace pictal::detail {
namespace {

constexpr PixelRect visible{-2000, -2000, 2000, 2000};

/// The farthest that the middle of a chord, or a point, is from the circle around the origin.
CGFloat deviation(const FlatPath& flat, CGFloat radius) {
    CGFloat greatest = 0;
    const auto points = flat.contour(0).points;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const CGPoint a = points[i - 1];
        const CGPoint b = points[i];
        greatest = std::max({greatest, std::abs(std::hypot(b.x, b.y) - radius),
                             std::abs(std::hypot(a.x + b.x, a.y + b.y) / 2 - radius)});
    }
    return greatest;
}

TEST(FlatPath, ChordsOfACircleStayWithinTheTolerance) {
    for (const CGFloat radius : {0.4, 22.0, 1000.0}) {
        Path circle;
        circle.addEllipse({-radius, -radius, 2 * radius, 2 * radius});
        // At most the tolerance, and not needlessly fine.
        const CGFloat fill = deviation(flattenedForFill(circle, {}, visible), radius);
        EXPECT_LE(fill, 0.001) << radius;
        const CGFloat stroke = deviation(flattenedForStroke(circle, {}, 1, visible), radius);
        EXPECT_LE(stroke, 0.01) << radius;
        if (radius < 1) continue;  // the number of chords is a small whole number
        EXPECT_GE(fill, 0.0007) << radius;
        EXPECT_GE(stroke, 0.007) << radius;
    }
}

TEST(FlatPath, TransformsArcsExactly) {
    Path unit;
    unit.addEllipse({-1, -1, 2, 2});
    const AffineTransform turnAndScale{60, 80, -80, 60, 0, 0};
    EXPECT_LE(deviation(flattenedForFill(unit, turnAndScale, visible), 100), 0.001);
}

TEST(FlatPath, CubicsFollowTheirCurve) {
    const CGPoint p[] = {{0, 0}, {900, 100}, {-700, 300}, {200, 250}};
    Path path;
    path.moveTo(p[0]);
    path.curveTo(p[1], p[2], p[3]);
    std::vector<CGPoint> curve;  // itself within 0.0001 px
    for (int i = 0; i <= 8000; ++i) {
        const CGFloat t = i / 8000.0;
        const CGFloat s = 1 - t;
        const CGFloat w[] = {s * s * s, 3 * s * s * t, 3 * s * t * t, t * t * t};
        curve.push_back({w[0] * p[0].x + w[1] * p[1].x + w[2] * p[2].x + w[3] * p[3].x,
                         w[0] * p[0].y + w[1] * p[1].y + w[2] * p[2].y + w[3] * p[3].y});
    }
    const FlatPath flat = flattenedForFill(path, {}, visible);
    const auto points = flat.contour(0).points;
    CGFloat worst = 0;
    for (std::size_t i = 1; i < points.size(); i += 7) {
        const CGPoint middle{(points[i - 1].x + points[i].x) / 2,
                             (points[i - 1].y + points[i].y) / 2};
        worst = std::max(worst, test::distanceToPolyline(middle, curve));
    }
    EXPECT_LE(worst, 0.0011);
    EXPECT_GE(worst, 0.0005);
}

TEST(FlatPath, SpendsNoChordsOutOfSight) {
    for (const CGFloat radius : {1e9, 1e18, 1e99}) {
        Path circle;
        circle.addEllipse({-radius, 0, 2 * radius, 2 * radius});
        EXPECT_LT(flattenedForFill(circle, {}, visible).points().size(), 3000U) << radius;
        EXPECT_LT(flattenedForStroke(circle, {}, 50, visible).points().size(), 3000U) << radius;
        EXPECT_LT(flattenedForStroke(circle, {}, radius, visible).points().size(), 60'000U)
            << radius;
    }
}

TEST(FlatPath, IsNothingWhereACoordinateIsNotFinite) {
    constexpr CGFloat infinity = std::numeric_limits<CGFloat>::infinity();
    for (const CGFloat bad : {std::nan(""), infinity, -infinity}) {
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

TEST(FlatPath, KeepsContoursApart) {
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
