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

/// How much of a 100 × 100 canvas an annotation covers, and where; y from the top.
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
    const AnnotationStyle style = styled(red, blue, 4), thin = styled(red, blue, 0);
    const auto check = [&](const char* name, const Annotation& annotation) {
        EXPECT_TRUE(picturesAgree(rendered(image, {annotation}), image)) << name;
    };
    check("line without width", Annotation::line({0, 0}, {50, 50}, thin));
    check("invisible line", Annotation::line({0, 0}, {50, 50}, styled(nothing, blue, 4)));
    check("opacity 0", Annotation::rectangle(rect, styled(red, blue, 4, 0)));
    check("opacity NaN", Annotation::rectangle(rect, styled(red, blue, 4, NAN)));
    check("empty brush", Annotation::brush({}, style));
    check("brush without width", Annotation::brush(points, thin));
    check("point as a rectangle", {Tool::rectangle, {Geometry::Point{{9, 9}}}, style, "text"});
    check("rectangle as a line", {Tool::line, {Geometry::Rect{rect}}, style, "text"});
    check("points as an arrow", {Tool::arrow, {Geometry::Points{points}}, style, "text"});
    check("rectangle as a text", {Tool::text, {Geometry::Rect{rect}}, style, "text"});
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
            EXPECT_EQ(at(20, 20), "#FF7F7FFF") << "red at half over white";
            EXPECT_EQ(at(14, 20), "#FF7F7FFF");
            EXPECT_EQ(at(20, 27), "#7F3FBFFF") << "blue at half over that";
            EXPECT_EQ(at(13, 20), "#7F3FBFFF");
            EXPECT_EQ(at(26, 20), "#7F3FBFFF");
            EXPECT_EQ(at(9, 20) + at(20, 9), "#FFFFFFFF#FFFFFFFF");
            EXPECT_EQ(at(20, 10), at(20, 29)) << "even on all sides";
        }
}

TEST(AnnotationRenderer, OutlinesAreRoundAndFillWhatIsTooNarrowForThem) {
    const PictureProbe outline =
        drawn(Annotation::rectangle(CGRect(10, 10, 80, 80), styled(red, nothing, 20)));
    const double corners = 4 * 100 * (1 - pi / 4);  // round joins of radius 10
    EXPECT_NEAR(outline.coverage(), 80 * 80 - 40 * 40 - corners, 2);
    EXPECT_EQ(outline.alpha(10, 10), 0);
    EXPECT_EQ(outline.alpha(30, 30), 0) << "the inner corner is sharp";
    EXPECT_EQ(outline.alpha(29, 29), 255);

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

TEST(AnnotationRenderer, EllipsesAreFilledAndStrokedEvenly) {
    const PictureProbe disc =
        drawn(Annotation::ellipse(CGRect(10, 20, 80, 60), styled(red, green, 0)));
    EXPECT_NEAR(disc.coverage(), pi * 40 * 30, 2);
    // The parallel curves of an ellipse: its perimeter × the width, whatever its shape.
    const PictureProbe ring =
        drawn(Annotation::ellipse(CGRect(5, 25, 90, 50), styled(red, nothing, 6)));
    const double a = 42, b = 22;
    const double perimeter = pi * (3 * (a + b) - std::sqrt((3 * a + b) * (a + 3 * b)));
    EXPECT_NEAR(ring.coverage(), perimeter * 6, 4);
    EXPECT_EQ(ring.extents(), (detail::PixelRect{5, 25, 95, 75}));
}

TEST(AnnotationRenderer, LinesAreEvenAtEveryAngleAndRoundAtTheirEnds) {
    for (int degrees = 0; degrees < 360; degrees += 7) {
        const double angle = degrees * pi / 180, x = 30 * std::cos(angle), y = 30 * std::sin(angle);
        const PictureProbe line =
            drawn(Annotation::line({50 - x, 50 - y}, {50 + x, 50 + y}, styled(red, blue, 8)));
        EXPECT_NEAR(line.coverage(), 60 * 8 + pi * 16, 1.5) << degrees;
    }
    const PictureProbe dot = drawn(Annotation::line({50, 50}, {50, 50}, styled(red, blue, 12)));
    EXPECT_NEAR(dot.coverage(), pi * 36, 1);
}

TEST(AnnotationRenderer, ArrowHeads) {
    const auto check = [](const char* name, CGFloat lineWidth, CGFloat length) {
        constexpr double halfAngle = pi / 7;
        const PictureProbe probe =
            drawn(Annotation::arrow({10, 50}, {80, 50}, styled(red, green, lineWidth)));
        // The head one third in from its base, where the shaft is hidden.
        const int x =
            static_cast<int>(80 - length * std::cos(halfAngle)) + static_cast<int>(length / 3);
        double column = 0;
        for (int y = 0; y < 100; ++y)
            column += probe.green(x, y) / 255.0;
        EXPECT_NEAR(column, 2 * (80 - (x + 0.5)) * std::tan(halfAngle), 0.1) << name;
        EXPECT_NEAR(static_cast<double>(probe.extents().bottom),
                    std::ceil(50 + length * std::sin(halfAngle)), 1)
            << name;
        EXPECT_EQ(probe.red(20, 49), lineWidth > 0 ? 255 : 0) << name;
    };
    check("shortest head", 2, 10);
    check("four times the line", 5, 20);
    check("no shaft", 0, 10);
    const PictureProbe click = drawn(Annotation::arrow({50, 50}, {50, 50}, styled(red, green, 4)));
    EXPECT_NEAR(click.coverage(), pi * 4, 0.5) << "the dot of the shaft, no head";
    const PictureProbe plain =
        drawn(Annotation::arrow({10, 50}, {80, 50}, styled(red, nothing, 4, 0.5)));
    EXPECT_EQ(plain.alpha(74, 49), 192) << "a translucent head over its shaft is darker";
    EXPECT_EQ(plain.alpha(40, 49), 128);
}

TEST(AnnotationRenderer, ArrowHeadsPointForwardAtEveryAngle) {
    for (int degrees = 3; degrees < 360; degrees += 19) {
        const double angle = degrees * pi / 180;
        const CGPoint tip{50 + 20 * std::cos(angle), 50 + 20 * std::sin(angle)};
        // A head of length 40 and no shaft.
        AnnotationStyle style = styled(nothing, green, 10);
        const PictureProbe head = drawn(Annotation::arrow({50, 50}, tip, style));
        const double height = 40 * std::cos(pi / 7), halfBase = 40 * std::sin(pi / 7);
        EXPECT_NEAR(head.coverage(), height * halfBase, 1) << degrees;
        double x = 0, y = 0;
        for (int row = 0; row < 100; ++row)
            for (int column = 0; column < 100; ++column) {
                x += (column + 0.5) * head.alpha(column, row) / 255;
                y += (99.5 - row) * head.alpha(column, row) / 255;
            }
        // A triangle balances at two thirds of its height from the tip.
        EXPECT_NEAR(x / head.coverage(), tip.x - height * 2 / 3 * std::cos(angle), 0.1) << degrees;
        EXPECT_NEAR(y / head.coverage(), tip.y - height * 2 / 3 * std::sin(angle), 0.1) << degrees;
        const auto alphaAt = [&](double along, double aside) {
            return head.alpha(
                static_cast<int>(tip.x - along * std::cos(angle) - aside * std::sin(angle)),
                99 - static_cast<int>(tip.y - along * std::sin(angle) + aside * std::cos(angle)));
        };
        EXPECT_EQ(alphaAt(3, 0), 255) << degrees << ": the tip";
        EXPECT_EQ(alphaAt(height - 3, 12), 255) << degrees << ": the base";
        EXPECT_EQ(alphaAt(height - 3, -12), 255) << degrees << ": the base";
        EXPECT_EQ(alphaAt(height + 3, 0), 0) << degrees << ": behind the base";
    }
}

TEST(AnnotationRenderer, BrushStrokesAreOneAreaHoweverTheyTurn) {
    const auto check = [](const char* name, const std::vector<CGPoint>& points) {
        const PictureProbe probe = drawn(Annotation::brush(points, styled(red, blue, 10, 0.5)));
        EXPECT_NEAR(probe.coverage(), (60 * 10 + pi * 25) * 128 / 255, 1) << name;
        EXPECT_EQ(probe.alpha(50, 50), 128) << name;
    };
    std::vector<CGPoint> small;  // a fat brush with steps of a third of a pixel, to and fro
    for (int i = -180; i <= 180; ++i)
        small.push_back({80 - std::abs(i) / 3.0, 50});
    check("a line", {{20, 50}, {80, 50}});
    check("there and back", {{20, 50}, {80, 50}, {20, 50}});
    check("back and forth within", {{20, 50}, {80, 50}, {40, 50}, {60, 50}});
    check("equal points", {{20, 50}, {20, 50}, {80, 50}, {80, 50}});
    check("small steps", small);
    const auto dot = [](std::size_t count, CGFloat width) {
        return drawn(
            Annotation::brush(std::vector(count, CGPoint{50, 50}), styled(red, blue, width)));
    };
    EXPECT_NEAR(dot(1, 1).coverage(), pi, 0.3) << "no smaller than a radius of 1";
    EXPECT_NEAR(dot(1, 9).coverage(), pi * 4.5 * 4.5, 0.3);
    EXPECT_NEAR(dot(2, 10).coverage(), pi * 25, 0.5);
    EXPECT_EQ(dot(1, 9).blue(50, 50), 0) << "the dot has the stroke's colour";
}

TEST(AnnotationRenderer, LaterMarksCoverEarlierOnesAndOpaquePixelsOutsideStay) {
    const CGImage image =
        pictureOf(50, 50, [](auto x, auto y) { return pixelOf(x * 5, y * 5, 9, 255); });
    const CGImage result =
        rendered(image, {Annotation::rectangle(CGRect(10, 10, 20, 20), styled(red, red, 0)),
                         Annotation::rectangle(CGRect(20, 20, 20, 20), styled(red, green, 0))});
    EXPECT_EQ(pixelText(result.row(25)[25]), "#00FF00FF");
    EXPECT_EQ(pixelText(result.row(25)[15]), "#FF0000FF");
    EXPECT_TRUE(result.colorSpace().isSRGB());
    for (const CGRect& outside :
         {CGRect(0, 0, 50, 10), CGRect(0, 40, 50, 10), CGRect(0, 0, 10, 50), CGRect(40, 0, 10, 50)})
        EXPECT_TRUE(picturesAgree(*result.cropping(outside), *image.cropping(outside)));
}

}  // namespace
}  // namespace pictal
