#include "PictalCore/Platform/Graphics/detail/StrokeRasterizer.h"
#include "Tests/Support/CoverageCanvas.h"
#include "Tests/Support/Reference/ExactCoverage.h"

#include <cmath>
#include <numbers>
#include <random>

namespace pictal::detail {
namespace {

using test::CoverageCanvas;
using test::randomPoints;

constexpr PixelRect square{0, 0, 48, 48};

CoverageCanvas stroked(const Path& path, CGFloat width, const PixelRect& clip = square) {
    CoverageCanvas canvas(clip);
    rasterizeStroke(flattenedForStroke(path, {}, width, clip), width, clip, canvas);
    return canvas;
}

Path polyline(std::span<const CGPoint> points) {
    Path path;
    path.moveTo(points[0]);
    for (const CGPoint& point : points.subspan(points.size() > 1 ? 1 : 0))
        path.lineTo(point);
    return path;
}

double levelError(const CoverageCanvas& canvas, std::span<const CGPoint> points, CGFloat width) {
    const auto distance = [&](CGPoint p) {
        return test::distanceToPolyline(p, points) - width / 2;
    };
    return maxLevelError(canvas,
                         [&](auto x, auto y) { return test::sampledCoverage(distance, x, y); });
}

TEST(StrokeRasterizer, PolylinesAreUnionsOfCapsules) {
    std::mt19937 random(1);
    double worst = 0;
    for (std::size_t i = 0; i < 20; ++i) {
        const auto points = randomPoints(random, 3 + i % 5, -5, 53);
        const CGFloat width = 0.5 + static_cast<int>(i % 9) * 1.7;
        worst = std::max(worst, levelError(stroked(polyline(points), width), points, width));
    }
    EXPECT_LE(worst, 1.7);
    EXPECT_GE(worst, 0.5);  // rounding to a level alone
}

TEST(StrokeRasterizer, ShapesThatAreHardToDraw) {
    const auto check = [](const char* name, CGFloat width, const std::vector<CGPoint>& points) {
        EXPECT_LE(levelError(stroked(polyline(points), width), points, width), 1.7) << name;
    };
    check("hairpin", 8, {{10, 10}, {40, 20}, {10, 11}});
    check("reversal", 9, {{8, 30}, {40, 17}, {20, 25.125}});
    check("fat, small steps", 30, {{20, 20}, {21, 20.5}, {21.5, 22}, {21, 23}, {23, 25}});
    check("level, between lines", 3, {{5, 20.3}, {20, 20.3}, {40, 20.3}});
    check("nearly level", 1.3, {{5, 20.3}, {20, 20.31}, {44, 20.45}, {45, 20.45}});
    check("tips", 24, {{10, 38}, {24, 14.203}, {38, 38}});
    check("dots close by", 0.3, {{10, 10}, {10.1, 10.1}, {10.2, 10.05}});
    check("crossing", 5, {{5, 5}, {40, 40}, {40, 5}, {5, 40}});
    check("line", 7.5, {{8.2, 12.9}, {39, 30}});
    check("dot", 20, {{24.3, 24.9}});
    check("beyond the canvas", 10, {{-1e9, 20}, {1e9, 21}, {24, 24}});
}

TEST(StrokeRasterizer, GoingBackChangesNothing) {
    const CGPoint there[] = {{9, 12}, {30, 33.5}, {41, 7}};
    const CGPoint back[] = {{9, 12}, {30, 33.5}, {41, 7}, {30, 33.5}, {9, 12}};
    EXPECT_EQ(difference(stroked(polyline(back), 6), stroked(polyline(there), 6)), 0);
}

TEST(StrokeRasterizer, LinesAreEvenAtAllAngles) {
    constexpr CGFloat width = 5;
    for (int degrees = 0; degrees < 180; degrees += 5) {
        const CGFloat angle = degrees * std::numbers::pi / 180;
        const CGPoint u{15 * std::cos(angle), 15 * std::sin(angle)};
        const CGPoint points[] = {{24.3 - u.x, 24.1 - u.y}, {24.3, 24.1}, {24.3 + u.x, 24.1 + u.y}};
        const CGPoint ends[] = {points[0], points[2]};
        const CGFloat area = 30 * width + std::numbers::pi * width * width / 4;
        EXPECT_NEAR(stroked(polyline(points), width).area(), area, 0.1) << degrees;
        EXPECT_NEAR(stroked(polyline(ends), width).area(), area, 0.1) << degrees;
    }
}

TEST(StrokeRasterizer, RectanglesHaveRoundOuterCorners) {
    Path path;
    path.addRect({10, 10, 24, 20});
    const CGPoint outline[] = {{10, 10}, {34, 10}, {34, 30}, {10, 30}, {10, 10}};
    EXPECT_LE(levelError(stroked(path, 8), outline, 8), 1.2);
}

TEST(StrokeRasterizer, ContoursAreOneArea) {
    Path cross = polyline(std::vector<CGPoint>{{5, 24}, {43, 24}});
    cross.addPath(polyline(std::vector<CGPoint>{{24, 5}, {24, 43}}));
    // Edges at a quarter pixel round alike along their length, hence 0.2 px.
    EXPECT_NEAR(stroked(cross, 4.5).area(),
                2 * 38 * 4.5 - 4.5 * 4.5 + std::numbers::pi * 4.5 * 4.5 / 2, 0.2);
}

TEST(StrokeRasterizer, AClipOnlyCrops) {
    std::mt19937 random(4);
    const auto points = randomPoints(random, 60, -60, 100);
    const CoverageCanvas whole = stroked(polyline(points), 3.3, {-40, -40, 80, 80});
    for (const PixelRect clip : {PixelRect{3, 5, 4, 6}, {-7, 11, 30, 29}, {20, -40, 80, 1}})
        EXPECT_EQ(difference(stroked(polyline(points), 3.3, clip), whole), 0);
}

TEST(StrokeRasterizer, OddWidths) {
    const CGPoint points[] = {{10, 10}, {20, 30}, {40, 12}};
    for (const CGFloat width : {0.0, -3.0, std::nan(""), HUGE_VAL})
        EXPECT_EQ(stroked(polyline(points), width).area(), 0) << width;
    for (const CGFloat width : {1e3, 1e9, 1e18, 1e300})
        for (const std::size_t count : {2U, 3U}) {
            const Path path = polyline(std::span(points).first(count));
            EXPECT_EQ(stroked(path, width).solidPixels(), 48 * 48) << width << ", " << count;
        }
}

}  // namespace
}  // namespace pictal::detail
