#include "PictalCore/Platform/Graphics/detail/PathFlattening.h"
#include "PictalCore/Platform/Graphics/detail/StrokeRasterizer.h"
#include "Tests/Support/CoverageCanvas.h"
#include "Tests/Support/Reference/ExactCoverage.h"
#include "Tests/Support/Reference/StrokeReference.h"

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

/// The greatest difference from the plain way to measure, in levels.
double levelError(const CoverageCanvas& canvas, std::span<const CGPoint> points, CGFloat width) {
    const PixelRect& clip = canvas.clip();
    std::vector<std::vector<double>> rows;
    for (std::int64_t y = clip.top; y < clip.bottom; ++y)
        rows.push_back(test::strokedRow(points, width, y, clip.left, clip.right));
    return maxLevelError(canvas, [&](std::int64_t x, std::int64_t y) {
        return rows[static_cast<std::size_t>(y - clip.top)]
                   [static_cast<std::size_t>(x - clip.left)];
    });
}

// Half a level is rounding, and a nearly level edge may be off by half a fine line, which is half a
// level too.
constexpr double mostLevels = 1.0;

struct Family {
    const char* name;
    std::vector<CGPoint> (*points)(std::mt19937& random);
};

/// Random coordinates and steps, from 0 to `most`.
CGFloat upTo(std::mt19937& random, CGFloat most) {
    return std::uniform_real_distribution<CGFloat>(0, most)(random);
}
template <class At>
std::vector<CGPoint> series(int count, At at) {
    std::vector<CGPoint> points;
    for (int i = 0; i < count; ++i)
        points.push_back(at(i));
    return points;
}

const Family families[] = {
    {"jumps", [](auto& r) { return randomPoints(r, 8, 0, 110); }},
    {"many jumps", [](auto& r) { return randomPoints(r, 60, -20, 130); }},
    {"spiral",
     [](auto&) {
         return series(90, [](int i) -> CGPoint {
             return {64 + (4 + i * 0.2) * std::cos(i * 0.3),
                     20 + (4 + i * 0.2) * std::sin(i * 0.3)};
         });
     }},
    {"wandering",
     [](auto& r) {
         CGFloat x = 50, y = 10, turn = 0.5;
         return series(120, [&](int) -> CGPoint {
             turn += upTo(r, 1) - 0.5;
             return {x += 2 * std::cos(turn), y += 2 * std::sin(turn)};
         });
     }},
    {"horizontal",
     [](auto& r) {
         const CGFloat y = 20 + upTo(r, 1);
         return std::vector<CGPoint>{{30, y}, {70, y}, {120, y}};
     }},
    {"nearly horizontal",
     [](auto& r) {
         return series(30, [&](int i) -> CGPoint { return {20.0 + i * 4, 20 + upTo(r, 0.4)}; });
     }},
    {"nearly vertical",
     [](auto& r) {
         return series(12, [&](int i) -> CGPoint { return {64 + upTo(r, 0.4), i * 4.0}; });
     }},
    {"saw",
     [](auto& r) {
         return series(40, [&](int i) -> CGPoint {
             return {40 + i * 1.3, 20 + (i % 2 == 0 ? 4 : -4) * upTo(r, 1)};
         });
     }},
    {"scrawl in a few pixels",
     [](auto& r) {
         return series(150, [&](int i) -> CGPoint {
             return {60 + i * 0.05 + upTo(r, 0.5), 18 + upTo(r, 0.5)};
         });
     }},
    {"hairpin",
     [](auto& r) { return std::vector<CGPoint>{{40, 10}, {110, 20 + upTo(r, 4)}, {41, 12}}; }},
    {"box",
     [](auto&) {
         return std::vector<CGPoint>{{50, 5}, {90, 5}, {90, 30}, {50, 30}, {50, 5}, {91, 31}};
     }},
};

TEST(StrokeRasterizer, StrokesAreUnionsOfCapsules) {
    std::mt19937 random(1);
    double worst = 0;
    for (const Family& family : families)
        for (const CGFloat width : {0.3, 0.9, 2.0, 4.7, 12.0, 33.0}) {
            const auto points = family.points(random);
            const PixelRect clip{40, 1, 101, 39};
            const double error = levelError(stroked(polyline(points), width, clip), points, width);
            EXPECT_LE(error, mostLevels) << family.name << ", " << width;
            worst = std::max(worst, error);
        }
    EXPECT_GE(worst, 0.5);  // rounding to a level alone
}

TEST(StrokeRasterizer, ShapesThatAreHardToDraw) {
    const auto check = [](const char* name, CGFloat width, const std::vector<CGPoint>& points) {
        EXPECT_LE(levelError(stroked(polyline(points), width), points, width), mostLevels) << name;
    };
    check("reversal", 9, {{8, 30}, {40, 17}, {20, 25.125}});
    check("fat, small steps", 30, {{20, 20}, {21, 20.5}, {21.5, 22}, {21, 23}, {23, 25}});
    check("level, between lines", 3, {{5, 20.3}, {20, 20.3}, {40, 20.3}});
    check("nearly level", 1.3, {{5, 20.3}, {20, 20.31}, {44, 20.45}, {45, 20.45}});
    check("tips", 24, {{10, 38}, {24, 14.203}, {38, 38}});
    check("tips that turn twice", 20, {{24, 40}, {20, 14.5}, {24, 14.5}, {28, 40}});
    check("dots close by", 0.3, {{10, 10}, {10.1, 10.1}, {10.2, 10.05}});
    check("line", 7.5, {{8.2, 12.9}, {39, 30}});
    check("dot", 20, {{24.3, 24.9}});
    check("both sides of a gap", 6, {{10, -5}, {14, 50}, {22.5, 50}, {17.5, -5}});
    check("large radius", 9000, {{-4400, 20}, {-4480, 30}, {-4485, 90}});
}

TEST(StrokeRasterizer, FarPointsOfAnAxisDoNotBlurIt) {
    // A line through (24, 24) of slope 1/2, its ends ever farther away.
    const CGPoint near[] = {{-376, -176}, {424, 224}, {-376, -176}};
    const CoverageCanvas want = stroked(polyline(near), 5);
    for (const CGFloat far : {1e6, 1e8, 1e9}) {
        const CGPoint points[] = {
            {24 - far, 24 - far / 2}, {24 + far, 24 + far / 2}, {24 - far, 24 - far / 2}};
        EXPECT_LE(difference(stroked(polyline(points), 5), want), 1) << far;
    }
    const CGPoint beyond[] = {{-1e100, 1e90}, {1e100, 1e90}, {1e100, 1e100}};
    EXPECT_EQ(stroked(polyline(beyond), 5).area(), 0);
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
    EXPECT_LE(levelError(stroked(path, 8), outline, 8), mostLevels);
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
    Path path = polyline(randomPoints(random, 60, -60, 100));
    path.addEllipse({-31, -20, 90, 70});
    path.addPath(polyline(randomPoints(random, 300, 30, 32)));
    for (const CGFloat width : {0.8, 3.3, 17.0, 61.0}) {
        const CoverageCanvas whole = stroked(path, width, {-70, -40, 80, 80});
        for (const PixelRect clip : {PixelRect{3, 5, 4, 6},
                                     {-7, 11, 30, 29},
                                     {20, -40, 80, 1},
                                     {-66, 7, 64, 33},
                                     {63, -5, 66, 70}})
            EXPECT_EQ(difference(stroked(path, width, clip), whole), 0) << width;
    }
}

TEST(StrokeRasterizer, WidePensHideWhatLiesBehind) {
    std::mt19937 random(6);
    const auto points = randomPoints(random, 200, 0, 1.5);
    const PixelRect clip{-60, -70, 70, 70};
    for (const CGFloat width : {90.0, 130.0})
        EXPECT_LE(levelError(stroked(polyline(points), width, clip), points, width), mostLevels);
}

TEST(StrokeRasterizer, FineStrokesAddUp) {
    // Each covers 1/500 of the pixels that it crosses, too little for a level.
    Path path;
    for (int i = 0; i < 100; ++i)
        path.addPath(
            polyline(std::vector<CGPoint>{{20.005 + i * 0.01, 0}, {20.005 + i * 0.01, 48}}));
    EXPECT_EQ(stroked(path, 0.002).at(20, 20), 51);
    EXPECT_EQ(stroked(path, 1e-9).area(), 0);
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
