#include "PictalCore/Platform/Graphics/detail/FillRasterizer.h"
#include "PictalCore/Platform/Graphics/detail/PathFlattening.h"
#include "Tests/Support/CoverageCanvas.h"
#include "Tests/Support/Reference/ExactCoverage.h"

#include <cmath>
#include <numbers>
#include <random>

namespace pictal::detail {
namespace {

using test::CoverageCanvas;
using test::randomPoints;

CoverageCanvas filled(const Path& path, const PixelRect& clip, FillRule rule = FillRule::nonZero) {
    CoverageCanvas canvas(clip);
    rasterizeFill(flattenedForFill(path, {}, clip), rule, clip, canvas);
    return canvas;
}

Path polygon(const std::vector<CGPoint>& points) {
    Path path;
    for (const CGPoint& point : points)
        point == points.front() ? path.moveTo(point) : path.lineTo(point);
    path.close();
    return path;
}

constexpr PixelRect square{0, 0, 32, 32};

/// How far `canvas` is from a convex polygon.
double levelError(const CoverageCanvas& canvas, const std::vector<CGPoint>& points) {
    return maxLevelError(canvas,
                         [&](auto x, auto y) { return test::polygonCoverage(points, x, y); });
}

TEST(FillRasterizer, TrianglesAreExact) {
    std::mt19937 random(1);
    double worst = 0;
    for (int i = 0; i < 300; ++i) {
        const auto corners = randomPoints(random, 3, -14, 46);
        worst = std::max(worst, levelError(filled(polygon(corners), square), corners));
    }
    // Rounding to a level, and next to nothing from the 1/65536 px of the corners.
    EXPECT_LE(worst, 0.51);
    EXPECT_GE(worst, 0.49);
}

TEST(FillRasterizer, DiscsAreWithinOneLevel) {
    std::mt19937 random(2);
    std::uniform_real_distribution<CGFloat> unit(0, 1);
    for (const CGFloat radius : {0.2, 0.5, 1.0, 3.7, 12.0, 60.0}) {
        const CGPoint c{16 + unit(random), (radius > 32 ? -40 : 16) + unit(random)};
        Path path;
        path.addEllipse({c.x - radius, c.y - radius, 2 * radius, 2 * radius});
        const CoverageCanvas canvas = filled(path, square);
        const auto distance = [&](CGPoint p) { return std::hypot(p.x - c.x, p.y - c.y) - radius; };
        // 0.5 for rounding, 0.26 for the chords, the rest is the reference's own.
        const double error = maxLevelError(
            canvas, [&](auto x, auto y) { return test::sampledCoverage(distance, x, y); });
        EXPECT_LE(error, 1.0) << "radius " << radius;
        if (radius > 15) continue;  // larger than the canvas
        EXPECT_NEAR(canvas.area(), std::numbers::pi * radius * radius, 0.02 + 0.01 * radius);
    }
}

TEST(FillRasterizer, RulesDifferWhereContoursOverlap) {
    Path twice;
    twice.addRect({2, 2, 20, 20});
    twice.addRect({8, 8.5, 8, 8});
    const CoverageCanvas nonZero = filled(twice, square);
    EXPECT_EQ(nonZero.at(10, 10), 255);
    EXPECT_EQ(nonZero.at(10, 8), 255);
    const CoverageCanvas evenOdd = filled(twice, square, FillRule::evenOdd);
    EXPECT_EQ(evenOdd.at(10, 10), 0);
    EXPECT_EQ(evenOdd.at(10, 8), 128);
    EXPECT_EQ(evenOdd.at(4, 10), 255);
    twice.addRect({8, 8.5, 8, 8});
    EXPECT_EQ(filled(twice, square, FillRule::evenOdd).at(10, 10), 255);
}

TEST(FillRasterizer, DirectionAndClosingDoNotMatter) {
    Path open;
    open.moveTo({3.3, 4});
    open.lineTo({20, 9.7});
    open.lineTo({11, 30});
    const Path turned = polygon({{11, 30}, {20, 9.7}, {3.3, 4}});
    EXPECT_EQ(difference(filled(open, square), filled(turned, square)), 0);
}

TEST(FillRasterizer, ShapesWithACommonEdgeLeaveNoGap) {
    std::mt19937 random(3);
    for (const CGFloat reach : {10.0, 100.0, 1e6, 1e9, 1e12})
        for (int i = 0; i < 20; ++i) {
            // The line through both points parts the plane: add what lies on either side.
            const auto p = randomPoints(random, 2, 16 - reach, 16 + reach);
            const CGPoint d{p[1].x - p[0].x, p[1].y - p[0].y};
            const CGFloat far = (4 * reach + 1000) / std::hypot(d.x, d.y);
            const CGPoint u{d.x * far, d.y * far};
            const CGPoint a{p[0].x - u.x, p[0].y - u.y}, b{p[0].x + u.x, p[0].y + u.y};
            const auto side = [&](CGFloat s) {
                return filled(
                    polygon({a, b, {b.x - s * u.y, b.y + s * u.x}, {a.x - s * u.y, a.y + s * u.x}}),
                    square);
            };
            const CoverageCanvas one = side(2), other = side(-2);
            const auto rest = [&](auto x, auto y) { return 1 - other.at(x, y) / 255.0; };
            EXPECT_LE(maxLevelError(one, rest), 1.001) << "reach " << reach << ", case " << i;
        }
}

TEST(FillRasterizer, EdgesFarBeyondTheCanvasPassWhereTheyShould) {
    // Filled is what is below the edge from a to b, which is at `middle` where x is 16.
    const auto check = [](const char* name, CGPoint a, CGPoint b, CGFloat middle, CGFloat slope) {
        const CGFloat low = std::max(a.y, b.y) * 2 + 1e30;
        const CoverageCanvas canvas = filled(polygon({a, b, {b.x, low}, {a.x, low}}), square);
        const CGFloat left = middle - 16 * slope, right = middle + 16 * slope;
        EXPECT_LE(levelError(canvas, {{0, left}, {32, right}, {32, 400}, {0, 400}}), 0.51) << name;
    };
    check("gentle, 1e9", {-1e9, -1e8 + 12.25}, {1e9, 1e8 + 12.25}, 13.85, 0.1);
    check("diagonal, 1e18", {-0x1p60, -0x1p60}, {0x1p60, 0x1p60}, 16, 1);
    check("one end near", {0, 8}, {0x1p61, 0x1p60}, 16, 0.5);
    check("level, 1e30", {-1e30, 20.5}, {1e30, 20.5}, 20.5, 0);
    check("steep, 1e12", {-1e11, -1e12}, {1e11, 1e12}, 160, 10);
    Path everything;
    everything.addRect({-0x1p1022, -0x1p1022, 0x1p1023, 0x1p1023});
    EXPECT_EQ(filled(everything, square).solidPixels(), 32 * 32);
}

TEST(FillRasterizer, AClipOnlyCrops) {
    std::mt19937 random(4);
    for (const CGFloat reach : {20.0, 300.0, 1e10}) {
        Path path;
        for (int i = 0; i < 12; ++i)
            path.addPath(polygon(randomPoints(random, 5, 16 - reach, 16 + reach)));
        path.addEllipse({-70, 3, 90, 25});
        const CoverageCanvas whole = filled(path, {-40, -40, 80, 80}, FillRule::evenOdd);
        for (const PixelRect clip : {PixelRect{3, 5, 4, 6}, {-7, 11, 30, 29}, {20, -40, 80, 1}})
            EXPECT_EQ(difference(filled(path, clip, FillRule::evenOdd), whole), 0) << reach;
    }
}

TEST(FillRasterizer, ReachesTheEndOfTheLargestCanvas) {
    for (const auto& [right, bottom] :
         {std::pair(32, 120'000), {8'000'000, 120'000}, {8'000'000, 8'000'000}}) {
        const std::vector<CGPoint> corners = {
            {0, 0}, {right + 3.0, bottom - 20.3}, {right - 20.7, bottom + 3.0}};
        const PixelRect clip{right - 32, bottom - 16, right, bottom};
        EXPECT_LE(levelError(filled(polygon(corners), clip), corners), 0.52) << right << bottom;
    }
}

TEST(FillRasterizer, ReportsWholeSpansAsSolid) {
    Path path;
    path.addRoundedRect({10, 10, 300, 100}, 20);
    const CoverageCanvas canvas = filled(path, {0, 0, 320, 120});
    // All of the 30,000 but what is within 20 px of the round corners' rows at most.
    EXPECT_GE(canvas.solidPixels(), 29'000);
    EXPECT_EQ(filled(Path(), square).area(), 0);
    EXPECT_EQ(filled(path, {5, 5, 5, 9}).solidPixels(), 0);
}

}  // namespace
}  // namespace pictal::detail
