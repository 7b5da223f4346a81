#include "PictalCore/Annotation/AnnotationRenderer.h"
#include "Tests/Support/PictureProbe.h"

#include <cmath>
#include <numbers>

namespace pictal {
namespace {

using Annotation = ScreenshotAnnotation;
using Geometry = AnnotationGeometry;
using Tool = AnnotationTool;
using kernels::pixelOf;
using std::numbers::pi;

constexpr std::uint32_t white = 0xFFFFFFFF;
constexpr RGBAColor red(1, 0, 0, 1);
constexpr RGBAColor green(0, 1, 0, 1);
constexpr RGBAColor blue(0, 0, 1, 1);
constexpr RGBAColor nothing(0, 0, 0, 0);

AnnotationStyle styled(RGBAColor stroke, RGBAColor fill, CGFloat lineWidth, CGFloat opacity = 1) {
    return {stroke, fill, lineWidth, opacity, 18, nothing, 2, AnnotationMosaicMode::block};
}

CGImage rendered(const CGImage& image, const std::vector<Annotation>& annotations) {
    return AnnotationRenderer().render(image, annotations).value();
}

/// On a canvas of 100 × 100; y from the top.
PictureProbe drawn(const Annotation& annotation, std::uint32_t page = 0) {
    return PictureProbe(
        rendered(pictureOf(100, 100, [=](auto, auto) { return page; }), {annotation}));
}

TEST(AnnotationRenderer, WhatDrawsNothingLeavesEveryPixel) {
    const CGImage image = pictureOf(64, 64, [](auto x, auto y) {
        return kernels::premultiplied(pixelOf(x * 4, y * 4, 77, (x + y) * 2));
    });
    const std::vector<CGPoint> points{{10, 10}, {20, 20}};
    const CGRect rect(5, 5, 30, 30);
    const AnnotationStyle style = styled(red, blue, 4);
    const auto check = [&](const char* name, const Annotation& annotation) {
        EXPECT_TRUE(picturesAgree(rendered(image, {annotation}), image)) << name;
    };
    check("line without width", Annotation::line({0, 0}, {50, 50}, styled(red, blue, 0)));
    check("invisible line", Annotation::line({0, 0}, {50, 50}, styled(nothing, blue, 4)));
    for (const CGFloat opacity : {0.0, std::nan("")})
        check("no opacity", Annotation::rectangle(rect, styled(red, blue, 4, opacity)));
    check("empty brush", Annotation::brush({}, style));
    check("brush without width", Annotation::brush({{9, 9}}, styled(red, blue, 0)));
    check("point as a rectangle", {Tool::rectangle, {Geometry::Point{{9, 9}}}, style, "text"});
    check("point as an ellipse", {Tool::ellipse, {Geometry::Point{{9, 9}}}, style, "text"});
    check("points as an arrow", {Tool::arrow, {Geometry::Points{points}}, style, "text"});
    check("rectangle as a brush", {Tool::brush, {Geometry::Rect{rect}}, style, "text"});
    check("NaN coordinates", Annotation::line({NAN, 0}, {50, 50}, style));
    EXPECT_TRUE(rendered(image, {}).isSameImage(image));
    EXPECT_EQ(
        AnnotationRenderer().render(CGImage(), std::vector{Annotation::line({}, {}, {})}).error(),
        AnnotationRendererError::cannotCreateContext);
}

TEST(AnnotationRenderer, ARectanglesStrokeLiesInsideItsEdges) {
    for (const CGRect& rect : {CGRect(10, 70, 20, 20), CGRect(30, 90, -20, -20)})
        for (const Tool tool : {Tool::rectangle, Tool::highlight}) {
            const PictureProbe probe =
                drawn({tool, {Geometry::Rect{rect}}, styled(blue, red, 4, 0.5)}, white);
            const auto at = [&](int x, int y) { return pixelText(probe.pixel(x, y)); };
            EXPECT_EQ(at(20, 20) + at(14, 20), "#FF7F7FFF#FF7F7FFF") << "red at half over white";
            EXPECT_EQ(at(20, 27) + at(13, 20), "#7F3FBFFF#7F3FBFFF") << "blue at half over that";
            EXPECT_EQ(at(26, 20) + at(20, 29), at(13, 20) + at(20, 10)) << "even on all sides";
            EXPECT_EQ(at(9, 20) + at(20, 9), "#FFFFFFFF#FFFFFFFF");
        }
}

TEST(AnnotationRenderer, OutlinesAreRoundAndFillWhatIsTooNarrowForThem) {
    const PictureProbe outline =
        drawn(Annotation::rectangle(CGRect(10, 10, 80, 80), styled(red, nothing, 20)));
    // Joins of radius 10 outside; the inner corners are sharp.
    EXPECT_NEAR(outline.coverage(), 80 * 80 - 40 * 40 - 4 * 100 * (1 - pi / 4), 2);
    EXPECT_EQ(outline.alpha(10, 10) + outline.alpha(30, 30), 0);

    const auto check = [](const char* name, CGRect rect, CGFloat lineWidth, double boxArea) {
        for (const auto make : {Annotation::rectangle, Annotation::ellipse}) {
            const double area = make == Annotation::ellipse ? boxArea * pi / 4 : boxArea;
            const PictureProbe flat = drawn(make(rect, styled(red, green, lineWidth)));
            EXPECT_EQ(flat.green(50, 51), 0) << name << ": the outline hides the fill";
            const PictureProbe faint = drawn(make(rect, styled(red, nothing, lineWidth, 0.5)));
            EXPECT_NEAR(faint.coverage(), area * 128 / 255, 0.01 * area + 0.1) << name;
        }
    };
    check("hardly too flat", {20, 46, 60, 3.99}, 4, 60 * 3.99);
    check("upward and to the left", {60, 90, -20, -80}, 24, 20 * 80);
    check("wider than both sides", {40, 45, 20, 10}, 60, 20 * 10);
    check("infinitely wide", {40, 45, 20, 10}, HUGE_VAL, 20 * 10);
    check("no height at all", {20, 50, 60, 0}, 4, 0);
}

TEST(AnnotationRenderer, AnEllipsesOutlineIsEvenInsideItsEdges) {
    const PictureProbe ring =
        drawn(Annotation::ellipse(CGRect(5, 25, 90, 50), styled(red, nothing, 6)));
    const double a = 42, b = 22,
                 perimeter = pi * (3 * (a + b) - std::sqrt((3 * a + b) * (a + 3 * b)));
    EXPECT_NEAR(ring.coverage(), perimeter * 6, 4);
    EXPECT_EQ(ring.extents(), (detail::PixelRect{5, 25, 95, 75}));
}

/// The middle of what is painted, y from the bottom.
CGPoint centroid(const PictureProbe& probe) {
    CGPoint sum;
    for (int y = 0; y < 100; ++y)
        for (int x = 0; x < 100; ++x)
            sum = {sum.x + (x + 0.5) * probe.alpha(x, y), sum.y + (99.5 - y) * probe.alpha(x, y)};
    return {sum.x / probe.coverage() / 255, sum.y / probe.coverage() / 255};
}

TEST(AnnotationRenderer, ArrowHeadsPointForwardAtEveryAngle) {
    const std::pair<CGFloat, CGFloat> lengths[]{{0, 10}, {2, 10}, {5, 20}, {10, 40}};  // by width
    for (int degrees = 3; degrees < 360; degrees += 19)
        for (const auto& [lineWidth, length] : lengths) {
            const double angle = degrees * pi / 180;
            const CGPoint tip{50 + 20 * std::cos(angle), 50 + 20 * std::sin(angle)};
            const PictureProbe head =
                drawn(Annotation::arrow({50, 50}, tip, styled(nothing, green, lineWidth)));
            const double height = length * std::cos(pi / 7), halfBase = length * std::sin(pi / 7);
            EXPECT_NEAR(head.coverage(), height * halfBase, 1) << degrees << ", " << lineWidth;
            // A triangle balances at two thirds of its height from the tip, on its axis.
            const CGPoint middle = centroid(head);
            EXPECT_NEAR(middle.x, tip.x - height * 2 / 3 * std::cos(angle), 0.1) << degrees;
            EXPECT_NEAR(middle.y, tip.y - height * 2 / 3 * std::sin(angle), 0.1) << degrees;
            EXPECT_GE(head.alpha(static_cast<int>(tip.x - 3 * std::cos(angle)),
                                 99 - static_cast<int>(tip.y - 3 * std::sin(angle))),
                      128)
                << degrees << ": the point of it";
        }
}

TEST(AnnotationRenderer, ShaftsAndLinesAreRoundAtTheirEnds) {
    const auto area = [](const Annotation& annotation) { return drawn(annotation).coverage(); };
    const AnnotationStyle style = styled(red, green, 8);
    EXPECT_NEAR(area(Annotation::line({20, 30}, {56, 78}, style)), 60 * 8 + pi * 16, 1);
    EXPECT_NEAR(area(Annotation::line({50, 50}, {50, 50}, style)), pi * 16, 1);
    EXPECT_NEAR(area(Annotation::arrow({50, 50}, {50, 50}, style)), pi * 16, 1) << "no head";
    const PictureProbe plain =
        drawn(Annotation::arrow({10, 50}, {80, 50}, styled(red, nothing, 4, 0.5)));
    EXPECT_EQ(plain.alpha(74, 49), 192) << "a translucent head over its shaft is darker";
    EXPECT_EQ(plain.alpha(40, 49), 128);
    EXPECT_EQ(drawn(Annotation::arrow({10, 50}, {80, 50}, style)).red(20, 49), 255);
}

TEST(AnnotationRenderer, BrushStrokesAreOneAreaHoweverTheyTurn) {
    const auto check = [](const char* name, const std::vector<CGPoint>& points) {
        const PictureProbe probe = drawn(Annotation::brush(points, styled(red, blue, 10, 0.5)));
        EXPECT_NEAR(probe.coverage(), (60 * 10 + pi * 25) * 128 / 255, 1) << name;
        EXPECT_EQ(probe.alpha(50, 50), 128) << name;
    };
    check("a line", {{20, 50}, {80, 50}});
    check("there and back", {{20, 50}, {80, 50}, {20, 50}});
    check("equal points", {{20, 50}, {20, 50}, {80, 50}, {80, 50}});
    const auto dot = [](std::size_t count, CGFloat width) {
        return drawn(
            Annotation::brush(std::vector(count, CGPoint{50, 50}), styled(red, blue, width)));
    };
    EXPECT_NEAR(dot(1, 1).coverage(), pi, 0.3) << "no smaller than a radius of 1";
    EXPECT_NEAR(dot(1, 9).coverage(), pi * 4.5 * 4.5, 0.3);
    EXPECT_NEAR(dot(2, 10).coverage(), pi * 25, 0.5);
    EXPECT_EQ(dot(1, 9).blue(50, 50), 0) << "the dot has the stroke's colour";
}

TEST(AnnotationRenderer, LaterMarksCoverEarlierOnesAndThePictureStaysAroundThem) {
    const CGImage image =
        pictureOf(50, 50, [](auto x, auto y) { return pixelOf(x * 5, y * 5, 9, 255); });
    const CGImage result =
        rendered(image, {Annotation::rectangle(CGRect(10, 10, 20, 20), styled(red, red, 0)),
                         Annotation::rectangle(CGRect(20, 20, 20, 20), styled(red, green, 0))});
    EXPECT_EQ(pixelText(result.row(25)[25]) + pixelText(result.row(25)[15]), "#00FF00FF#FF0000FF");
    EXPECT_TRUE(result.colorSpace().isSRGB());
    for (const CGRect& outside : {CGRect(0, 0, 50, 10), CGRect(40, 0, 10, 50)})
        EXPECT_TRUE(picturesAgree(*result.cropping(outside), *image.cropping(outside)));
}

}  // namespace
}  // namespace pictal
