#include "PictalCore/Annotation/AnnotationRenderer.h"
#include "Tests/Support/PictureProbe.h"

#include <cmath>
#include <limits>
#include <numbers>

#include <gtest/gtest.h>

namespace pictal {
namespace {

using kernels::pixelOf;

constexpr std::uint32_t white = 0xFFFFFFFF;
constexpr RGBAColor red(1, 0, 0, 1);
constexpr RGBAColor green(0, 1, 0, 1);
constexpr RGBAColor blue(0, 0, 1, 1);
constexpr RGBAColor nothing(0, 0, 0, 0);

AnnotationStyle styled(RGBAColor stroke, RGBAColor fill, CGFloat lineWidth, CGFloat opacity = 1) {
    return {stroke, fill, lineWidth, opacity, 18, nothing, 2, AnnotationMosaicMode::block};
}

CGImage page(std::int64_t width, std::int64_t height, std::uint32_t color = white) {
    return pictureOf(width, height, [=](auto, auto) { return color; });
}

CGImage rendered(const CGImage& image, const std::vector<ScreenshotAnnotation>& annotations) {
    return AnnotationRenderer().render(image, annotations).value();
}

/// How much of a 100 × 100 canvas the annotations cover, and where; y from the top.
PictureProbe drawn(const std::vector<ScreenshotAnnotation>& annotations) {
    return PictureProbe(rendered(page(100, 100, 0), annotations));
}

TEST(AnnotationRenderer, NoAnnotationsGiveTheImageItself) {
    const CGImage image = page(3, 2);
    EXPECT_TRUE(rendered(image, {}).isSameImage(image));
    EXPECT_EQ(AnnotationRenderer()
                  .render(CGImage(), std::vector{ScreenshotAnnotation::line({}, {}, {})})
                  .error(),
              AnnotationRendererError::cannotCreateContext);
}

TEST(AnnotationRenderer, WhatDrawsNothingLeavesEveryPixel) {
    const CGImage image = pictureOf(64, 64, [](std::int64_t x, std::int64_t y) {
        return kernels::premultiplied(pixelOf(x * 4 & 255, y * 4 & 255, 77, (x + y) * 2 & 255));
    });
    const std::vector<CGPoint> points{{10, 10}, {20, 20}};
    const CGRect rect(5, 5, 30, 30);
    constexpr CGFloat nan = std::numeric_limits<CGFloat>::quiet_NaN();
    const auto misfit = [&](AnnotationTool tool, AnnotationGeometry geometry) {
        return ScreenshotAnnotation{tool, std::move(geometry), styled(red, blue, 4), "text"};
    };
    struct Case {
        const char* name;
        ScreenshotAnnotation annotation;
    };
    for (const Case& c :
         {Case{"line without width",
               ScreenshotAnnotation::line({0, 0}, {50, 50}, styled(red, blue, 0))},
          Case{"line of an invisible colour",
               ScreenshotAnnotation::line({0, 0}, {50, 50}, styled(nothing, blue, 4))},
          Case{"opacity 0", ScreenshotAnnotation::rectangle(rect, styled(red, blue, 4, 0))},
          Case{"opacity NaN", ScreenshotAnnotation::rectangle(rect, styled(red, blue, 4, nan))},
          Case{"empty brush", ScreenshotAnnotation::brush({}, styled(red, blue, 4))},
          Case{"brush without width", ScreenshotAnnotation::brush(points, styled(red, blue, 0))},
          Case{"point as a rectangle",
               misfit(AnnotationTool::rectangle, {AnnotationGeometry::Point{{9, 9}}})},
          Case{"rectangle as a line",
               misfit(AnnotationTool::line, {AnnotationGeometry::Rect{rect}})},
          Case{"points as an arrow",
               misfit(AnnotationTool::arrow, {AnnotationGeometry::Points{points}})},
          Case{"rectangle as a text",
               misfit(AnnotationTool::text, {AnnotationGeometry::Rect{rect}})},
          Case{"NaN coordinates",
               ScreenshotAnnotation::line({nan, 0}, {50, 50}, styled(red, blue, 4))}}) {
        EXPECT_TRUE(picturesAgree(rendered(image, {c.annotation}), image)) << c.name;
    }
}

TEST(AnnotationRenderer, ARectanglesStrokeLiesInsideItsEdges) {
    for (const CGRect& rect : {CGRect(10, 10, 20, 20), CGRect(30, 30, -20, -20)}) {
        for (const AnnotationTool tool : {AnnotationTool::rectangle, AnnotationTool::highlight}) {
            const PictureProbe probe(
                rendered(page(40, 40),
                         {{tool, {AnnotationGeometry::Rect{rect}}, styled(blue, red, 4, 0.5)}}));
            // y from the bottom: row 39 − y.
            EXPECT_EQ(pixelText(probe.pixel(20, 20)), "#FF7F7FFF") << "red at half over white";
            EXPECT_EQ(pixelText(probe.pixel(20, 39 - 12)), "#7F3FBFFF") << "blue at half over that";
            EXPECT_EQ(pixelText(probe.pixel(13, 20)), "#7F3FBFFF");
            EXPECT_EQ(pixelText(probe.pixel(14, 20)), "#FF7F7FFF");
            EXPECT_EQ(probe.pixel(9, 20), white);
            EXPECT_EQ(probe.pixel(20, 39 - 30), white);
            EXPECT_EQ(pixelText(probe.pixel(26, 20)), "#7F3FBFFF");
            EXPECT_EQ(probe.green(20, 39 - 29), probe.green(20, 39 - 10)) << "even on all sides";
        }
    }
}

TEST(AnnotationRenderer, OutlinesAreRoundAndTooNarrowOnesAreLeftOut) {
    const PictureProbe outline =
        drawn({ScreenshotAnnotation::rectangle(CGRect(10, 10, 80, 80), styled(red, nothing, 20))});
    const double corners = 4 * 100 * (1 - std::numbers::pi / 4);  // round joins of radius 10
    EXPECT_NEAR(outline.coverage(), 80 * 80 - 40 * 40 - corners, 2);
    EXPECT_EQ(outline.alpha(10, 10), 0);
    EXPECT_EQ(outline.alpha(30, 30), 0) << "the inner corner is sharp";
    EXPECT_EQ(outline.alpha(29, 29), 255);

    const PictureProbe narrow =
        drawn({ScreenshotAnnotation::rectangle(CGRect(10, 10, 80, 15), styled(red, green, 20))});
    EXPECT_EQ(narrow.coverage(), 80 * 15);
    EXPECT_EQ(pixelText(narrow.pixel(50, 80)), "#00FF00FF");
}

TEST(AnnotationRenderer, EllipsesAreFilledAndStrokedEvenly) {
    const PictureProbe disc =
        drawn({ScreenshotAnnotation::ellipse(CGRect(10, 20, 80, 60), styled(red, green, 0))});
    EXPECT_NEAR(disc.coverage(), std::numbers::pi * 40 * 30, 2);
    // The parallel curves of an ellipse: its perimeter × the width, whatever its shape.
    const PictureProbe ring =
        drawn({ScreenshotAnnotation::ellipse(CGRect(5, 25, 90, 50), styled(red, nothing, 6))});
    const double a = 42, b = 22;
    const double perimeter =
        std::numbers::pi * (3 * (a + b) - std::sqrt((3 * a + b) * (a + 3 * b)));
    EXPECT_NEAR(ring.coverage(), perimeter * 6, 4);
    EXPECT_EQ(ring.extents(), (detail::PixelRect{5, 25, 95, 75}));
}

TEST(AnnotationRenderer, LinesAreEvenAtEveryAngleAndRoundAtTheirEnds) {
    const double capsule = 60 * 8 + std::numbers::pi * 16;
    for (int degrees = 0; degrees < 360; degrees += 7) {
        const double angle = degrees * std::numbers::pi / 180;
        const CGPoint reach{30 * std::cos(angle), 30 * std::sin(angle)};
        const PictureProbe line = drawn({ScreenshotAnnotation::line(
            {50 - reach.x, 50 - reach.y}, {50 + reach.x, 50 + reach.y}, styled(red, blue, 8))});
        EXPECT_NEAR(line.coverage(), capsule, 1.5) << degrees;
    }
    const PictureProbe dot =
        drawn({ScreenshotAnnotation::line({50, 50}, {50, 50}, styled(red, blue, 12))});
    EXPECT_NEAR(dot.coverage(), std::numbers::pi * 36, 1);
}

TEST(AnnotationRenderer, ArrowHeads) {
    constexpr double halfAngle = std::numbers::pi / 7;
    struct Case {
        const char* name;
        CGFloat lineWidth, length;
    };
    for (const Case& c : {Case{"shortest head", 2, 10}, Case{"four times the line", 5, 20},
                          Case{"no shaft", 0, 10}}) {
        const PictureProbe probe = drawn(
            {ScreenshotAnnotation::arrow({10, 50}, {80, 50}, styled(red, green, c.lineWidth))});
        const double half = c.length * std::sin(halfAngle);
        const auto base = static_cast<std::int64_t>(80 - c.length * std::cos(halfAngle));
        double column = 0;  // the head one third in from its base, where the shaft is hidden
        const auto x = base + static_cast<std::int64_t>(c.length / 3);
        for (std::int64_t y = 0; y < 100; ++y)
            column += probe.green(x, y) / 255.0;
        const double along = 80 - (static_cast<double>(x) + 0.5);
        EXPECT_NEAR(column, 2 * along * std::tan(halfAngle), 0.1) << c.name;
        EXPECT_NEAR(static_cast<double>(probe.extents().bottom), std::ceil(50 + half), 1) << c.name;
        EXPECT_EQ(probe.red(20, 49), c.lineWidth > 0 ? 255 : 0) << c.name;
    }
    const PictureProbe click =
        drawn({ScreenshotAnnotation::arrow({50, 50}, {50, 50}, styled(red, green, 4))});
    EXPECT_NEAR(click.coverage(), std::numbers::pi * 4, 0.5) << "the dot of the shaft, no head";
    const PictureProbe plain =
        drawn({ScreenshotAnnotation::arrow({10, 50}, {80, 50}, styled(red, nothing, 4, 0.5))});
    EXPECT_EQ(plain.pixel(74, 49) >> 24, 192U) << "a translucent head over its shaft is darker";
    EXPECT_EQ(plain.pixel(40, 49) >> 24, 128U);
}

TEST(AnnotationRenderer, BrushStrokesAreOneAreaHoweverTheyTurn) {
    const AnnotationStyle style = styled(red, blue, 10, 0.5);
    const double capsule = 60 * 10 + std::numbers::pi * 25;
    struct Case {
        const char* name;
        std::vector<CGPoint> points;
    };
    std::vector<CGPoint> small;  // a fat brush with steps of a third of a pixel, to and fro
    for (int i = 0; i <= 180; ++i)
        small.push_back({20 + i / 3.0, 50});
    for (int i = 180; i >= 0; --i)
        small.push_back({20 + i / 3.0, 50});
    for (const Case& c : {Case{"a line", {{20, 50}, {80, 50}}},
                          Case{"there and back", {{20, 50}, {80, 50}, {20, 50}}},
                          Case{"back and forth within", {{20, 50}, {80, 50}, {40, 50}, {60, 50}}},
                          Case{"equal points", {{20, 50}, {20, 50}, {80, 50}, {80, 50}}},
                          Case{"small steps", small}}) {
        const PictureProbe probe = drawn({ScreenshotAnnotation::brush(c.points, style)});
        EXPECT_NEAR(probe.coverage(), capsule * 128 / 255, 1) << c.name;
        EXPECT_EQ(probe.alpha(50, 50), 128) << c.name;
    }
    for (const auto& [width, radius] : {std::pair(1.0, 1.0), std::pair(9.0, 4.5)}) {
        const PictureProbe dot =
            drawn({ScreenshotAnnotation::brush({{50, 50}}, styled(red, blue, width))});
        EXPECT_NEAR(dot.coverage(), std::numbers::pi * radius * radius, 0.3) << width;
        EXPECT_EQ(dot.blue(50, 50), 0) << "the dot has the stroke's colour";
    }
    const PictureProbe dots =
        drawn({ScreenshotAnnotation::brush({{50, 50}, {50, 50}}, styled(red, blue, 10))});
    EXPECT_NEAR(dots.coverage(), std::numbers::pi * 25, 0.5);
}

TEST(AnnotationRenderer, LaterMarksCoverEarlierOnesAndOpaquePixelsOutsideStay) {
    const CGImage image = pictureOf(50, 50, [](std::int64_t x, std::int64_t y) {
        return pixelOf(static_cast<std::uint32_t>(x * 5), static_cast<std::uint32_t>(y * 5), 9,
                       255);
    });
    const CGImage result = rendered(
        image, {ScreenshotAnnotation::rectangle(CGRect(10, 10, 20, 20), styled(red, red, 0)),
                ScreenshotAnnotation::rectangle(CGRect(20, 20, 20, 20), styled(red, green, 0))});
    const PictureProbe before(image), after(result);
    EXPECT_EQ(pixelText(after.pixel(25, 25)), "#00FF00FF");
    EXPECT_EQ(pixelText(after.pixel(15, 25)), "#FF0000FF");
    EXPECT_TRUE(result.colorSpace().isSRGB());
    for (std::int64_t y = 0; y < 50; ++y)
        for (std::int64_t x = 0; x < 50; ++x)
            if (x < 10 || x >= 40 || y < 10 || y >= 40) {
                ASSERT_EQ(after.pixel(x, y), before.pixel(x, y)) << x << ", " << y;
            }
}

}  // namespace
}  // namespace pictal
