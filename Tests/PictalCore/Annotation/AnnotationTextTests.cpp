#include "PictalCore/Annotation/AnnotationNumberAppearance.h"
#include "PictalCore/Annotation/AnnotationRenderer.h"
#include "Tests/Support/PictureProbe.h"

#include <cmath>
#include <numbers>
#include <string>

namespace pictal {
namespace {

using Annotation = ScreenshotAnnotation;
using kernels::pixelOf;
using std::numbers::pi;

constexpr RGBAColor red(1, 0, 0, 1);
constexpr RGBAColor blue(0, 0, 1, 1);
constexpr RGBAColor black(0, 0, 0, 1);
constexpr RGBAColor nothing(0, 0, 0, 0);

AnnotationStyle inked(RGBAColor ink, CGFloat size, RGBAColor outline = nothing,
                      CGFloat outlineWidth = 2, CGFloat opacity = 1) {
    AnnotationStyle style(ink, nothing, 4, opacity, 1, outline, 0, AnnotationMosaicMode::block);
    // By assignment, so that nothing is clamped.
    style.fontSize = size;
    style.textOutlineWidth = outlineWidth;
    return style;
}

/// On a canvas of 200 × 100 that is transparent; y from the top.
PictureProbe drawn(const Annotation& annotation) {
    const CGImage page = pictureOf(200, 100, [](auto, auto) { return 0; });
    return PictureProbe(AnnotationRenderer().render(page, std::array{annotation}).value());
}
PictureProbe written(std::string_view text, const AnnotationStyle& style,
                     CGPoint point = {10, 80}) {
    return drawn(Annotation::textAt(std::string(text), point, style));
}

int strongest(const PictureProbe& probe) {
    int most = 0;
    for (int y = 0; y < 100; ++y)
        for (int x = 0; x < 200; ++x)
            most = std::max(most, probe.alpha(x, y));
    return most;
}

TEST(AnnotationText, HangsFromItsPoint) {
    // At 48, Inter's ascent is 46.5 and its capitals are 34.91 high: an H stands 33.5 above the
    // lower edge and ends at 68.41.
    const PictureProbe h = written("H", inked(red, 48));
    EXPECT_EQ(h.extents().top, 31);
    EXPECT_EQ(h.extents().bottom, 67);
    const auto stem = h.extents().left + 3;
    EXPECT_EQ(pixelText(h.pixel(stem, 50)), "#FF0000FF");
    EXPECT_NEAR(h.alpha(stem, 66), 127.5, 1.5) << "half a pixel row at the foot";
    EXPECT_NEAR(h.alpha(stem, 31), 0.41 * 255, 2) << "and less at the top";
    EXPECT_EQ(h.alpha((h.extents().left + h.extents().right) / 2, 40), 0) << "between the stems";
    EXPECT_GE(h.extents().left, 10);

    const PictureProbe moved = written("H", inked(red, 48), {30.5, 70.25});
    EXPECT_NEAR(moved.coverage(), h.coverage(), 0.5) << "wherever it falls between pixels";
    EXPECT_NEAR(written("H", inked(red, 24)).coverage(), h.coverage() / 4, 0.5);
    EXPECT_NEAR(written("H", inked(RGBAColor(1, 0, 0, 0.5), 48, nothing, 2, 0.5)).coverage(),
                h.coverage() * 64 / 255, 3);
}

TEST(AnnotationText, TheOutlineLiesUnderTheInkHalfOutside) {
    const PictureProbe plain = written("H", inked(red, 48));
    const PictureProbe outlined = written("H", inked(red, 48, blue, 6));
    const detail::PixelRect in = plain.extents(), out = outlined.extents();
    EXPECT_NEAR(static_cast<double>(in.left - out.left), 3, 1);
    EXPECT_EQ(out.top, 28) << "3 above 68.41";
    EXPECT_EQ(out.bottom, 70) << "3 below 33.5";
    for (int y = 0; y < 100; ++y)
        for (int x = 0; x < 200; ++x)
            ASSERT_TRUE(plain.alpha(x, y) < 255 || outlined.pixel(x, y) == plain.pixel(x, y))
                << x << ", " << y;
    EXPECT_EQ(pixelText(outlined.pixel(in.left - 1, 50)), "#0000FFFF");
    // Translucent ink shows the outline's inner half, and what is further in by itself.
    const PictureProbe faint = written("H", inked(RGBAColor(1, 0, 0, 0.5), 96, blue, 4), {10, 99});
    const auto left = written("H", inked(red, 96), {10, 99}).extents().left;
    EXPECT_EQ(pixelText(faint.pixel(left + 1, 50)), "#80007FFF");
    EXPECT_EQ(pixelText(faint.pixel(left + 5, 50)), "#80000080");
}

TEST(AnnotationText, TheOutlinesWidthHasAFloorAndNoneShowsNone) {
    const auto same = [](const char* name, const AnnotationStyle& have,
                         const AnnotationStyle& want) {
        const CGImage page = pictureOf(200, 100, [](auto, auto) { return 0; });
        const auto image = [&](const AnnotationStyle& style) {
            return AnnotationRenderer()
                .render(page, std::array{Annotation::textAt("Outline", {10, 80}, style)})
                .value();
        };
        EXPECT_TRUE(picturesAgree(image(have), image(want))) << name;
    };
    same("a thousandth of the size", inked(nothing, 40, blue, 0.001),
         inked(nothing, 40, blue, .04));
    same("above the floor", inked(nothing, 40, blue, -1), inked(nothing, 40, nothing, 2));
    same("no width", inked(red, 40, blue, 0), inked(red, 40, nothing, 2));
    same("NaN width", inked(red, 40, blue, NAN), inked(red, 40, nothing, 2));
    same("opacity 0", inked(red, 40, blue, 3, 0), inked(nothing, 40, nothing, 3));
    EXPECT_GT(written("Outline", inked(nothing, 40, blue, 0.001)).coverage(), 1);
}

TEST(AnnotationText, GlyphsThatOverlapAreOneArea) {
    // Joined letters of several faces, whose outlines reach into one another.
    for (const std::string_view text : {"مسمبس", "हिन्दी", "中A\u0338O\u0338"}) {
        EXPECT_EQ(strongest(written(text, inked(RGBAColor(0, 0, 0, 0.5), 40))), 128) << text;
        EXPECT_EQ(strongest(written(text, inked(nothing, 40, RGBAColor(0, 0, 1, 0.5), 5))), 128)
            << text;
    }
}

TEST(AnnotationText, PicturesHaveTheInksAlphaAndNoOutline) {
    const PictureProbe whole = written("✅", inked(red, 40));
    EXPECT_EQ(strongest(whole), 255);
    EXPECT_GT(whole.green(14, 50), whole.red(14, 50) + 50) << "its own colours, not the ink's";
    // 136 pixels for a size of 109, square corners softened.
    EXPECT_NEAR(static_cast<double>(whole.extents().right - whole.extents().left), 40 * 136 / 109.0,
                4);
    const AnnotationStyle faint = inked(RGBAColor(1, 0, 0, 0.5), 40, nothing, 2, 0.5);
    EXPECT_EQ(strongest(written("✅", faint)), 64);
    const PictureProbe outlined = written("✅", inked(red, 40, blue, 8));
    EXPECT_EQ(outlined.coverage(), whole.coverage());
    EXPECT_EQ(outlined.extents(), whole.extents());
    EXPECT_EQ(written("✅", inked(nothing, 40)).coverage(), 0);
}

TEST(AnnotationText, WhatIsNoTextDrawsNothing) {
    const auto check = [](const char* name, const Annotation& annotation) {
        EXPECT_EQ(drawn(annotation).coverage(), 0) << name;
    };
    const AnnotationStyle style = inked(red, 24, blue, 2);
    const AnnotationGeometry point{AnnotationGeometry::Point{{20, 80}}};
    const AnnotationGeometry rect{AnnotationGeometry::Rect{CGRect(20, 20, 60, 60)}};
    check("empty", Annotation::textAt("", {20, 80}, style));
    check("absent", {AnnotationTool::text, point, style, std::nullopt});
    check("in a rectangle", {AnnotationTool::text, rect, style, "text"});
    check("no number", {AnnotationTool::number, point, style, std::nullopt});
    check("a number in a rectangle", {AnnotationTool::number, rect, style, "1"});
    for (const CGFloat bad : {CGFloat(NAN), CGFloat(HUGE_VAL), -CGFloat(HUGE_VAL)}) {
        check("x", Annotation::textAt("text ✅", {bad, 80}, style));
        check("y", Annotation::textAt("text ✅", {20, bad}, style));
        check("number", Annotation::number(1, {bad, 20}, style));
        check("size", Annotation::textAt("text ✅", {20, 80}, inked(red, bad, blue)));
    }
    check("size 0", Annotation::textAt("text", {20, 80}, inked(red, 0, blue)));
    check("size -3", Annotation::textAt("text", {20, 80}, inked(red, -3, blue)));
    check("no colour", Annotation::textAt("text", {20, 80}, inked(nothing, 24)));
    check("far away", Annotation::textAt("text ✅", {1e15, -1e15}, style));
    // A stem that is larger than the canvas, and one of no size to speak of.
    EXPECT_EQ(written("I", inked(red, 50'000), {-7000, 25'000}).coverage(), 200 * 100);
    EXPECT_LT(written("HHH", inked(red, 1)).coverage(), 3);
    EXPECT_LE(strongest(written("H✅", inked(red, 1e30, blue, 1e30))), 255);
}

Annotation badge(std::string text, const AnnotationStyle& style, CGPoint center = {100, 50}) {
    return {AnnotationTool::number, {AnnotationGeometry::Point{center}}, style, std::move(text)};
}
AnnotationStyle filled(RGBAColor fill, CGFloat size, CGFloat opacity = 1) {
    return {red, fill, 4, opacity, size, blue, 9, AnnotationMosaicMode::block};
}

TEST(AnnotationNumber, DiscsHaveADiameterByTheirSize) {
    const auto check = [](CGFloat size, CGFloat diameter) {
        const PictureProbe probe = drawn(badge("1", filled(blue, size)));
        EXPECT_NEAR(probe.coverage(), pi * diameter * diameter / 4, 1) << size;
        EXPECT_NEAR(drawn(badge("", filled(blue, size))).coverage(), probe.coverage(), 1e-9);
    };
    check(18, 26.1);
    check(10, 22);
    check(1, 22);
    check(60, 87);
}

TEST(AnnotationNumber, NumeralsStandInTheMiddle) {
    // At 60, the disc is 87 wide and the numeral's size 40.02. Inter's digits are as high as its
    // capitals, 2048 of 2816, which is also what its ascent has more than its descent: exactly
    // centred.
    const CGFloat height = 2048 / 2816.0 * 40.02;
    for (const char* text : {"8", "10", "100"}) {
        const detail::PixelRect box = drawn(badge(text, filled(nothing, 60))).extents();
        EXPECT_NEAR(static_cast<double>(box.bottom - box.top), height, 2.5) << text;
        EXPECT_NEAR(static_cast<double>(box.bottom + box.top) / 2, 50, 0.6) << text;
        EXPECT_NEAR(static_cast<double>(box.left + box.right) / 2, 100, 2.1) << text;
    }
    const PictureProbe least = drawn(badge("8", filled(nothing, 1)));
    EXPECT_NEAR(static_cast<double>(least.extents().bottom - least.extents().top),
                2048 / 2816.0 * 10.12, 2.1);
}

TEST(AnnotationNumber, NumeralsAreBlackOrWhiteByTheirDisc) {
    const auto middleOf = [](RGBAColor fill, CGFloat opacity) {
        // The middle of an I is its stem.
        return pixelText(drawn(badge("I", filled(fill, 60, opacity))).pixel(100, 50));
    };
    EXPECT_EQ(middleOf(blue, 1), "#FFFFFFFF");
    EXPECT_EQ(middleOf(red, 1), "#000000FF");
    EXPECT_EQ(middleOf(RGBAColor(1, 1, 1, 0), 1), "#000000FF") << "without a disc";
    EXPECT_EQ(middleOf(nothing, 0.5), "#80808080");
    // Half black under half white: 128 + 128 × 127 / 255.
    EXPECT_EQ(middleOf(black, 0.5), "#808080C0");
    EXPECT_EQ(middleOf(black, 0), "#00000000");
    const PictureProbe plain = drawn(badge("I", filled(black, 60)));
    EXPECT_EQ(pixelText(plain.pixel(70, 50)), "#000000FF");
    EXPECT_EQ(plain.blue(100, 50) - plain.red(100, 50), 0) << "no outline, whatever the style's";
}

TEST(AnnotationNumberAppearance, ForegroundContrastsMore) {
    const auto isBlack = [](RGBAColor fill) {
        const RGBAColor color = AnnotationNumberAppearance::foreground(fill);
        EXPECT_TRUE(color == black || color == RGBAColor(1, 1, 1, 1));
        return color == black;
    };
    EXPECT_FALSE(isBlack(blue));
    EXPECT_TRUE(isBlack(red));
    EXPECT_FALSE(isBlack(nothing));
    EXPECT_TRUE(isBlack({1, 1, 1, 1}));
    EXPECT_TRUE(isBlack({0.5, 0.5, 0.5, 1}));
    EXPECT_FALSE(isBlack({0.4, 0.4, 0.4, 0.2}));
    EXPECT_TRUE(isBlack({1, 1, 1, 0})) << "the alpha does not count";
    // √0.0525 − 0.05 as a grey is 0.46029 by the inverse of sRGB's curve.
    EXPECT_FALSE(isBlack({0.4601, 0.4601, 0.4601, 1}));
    EXPECT_TRUE(isBlack({0.4605, 0.4605, 0.4605, 1}));
    EXPECT_TRUE(isBlack({0, 0.6, 0, 1})) << "0.7152 × 0.3185";
    EXPECT_FALSE(isBlack({0.6, 0, 0.6, 1})) << "0.2848 × 0.3185";
    RGBAColor odd = red;
    odd.green = NAN;
    EXPECT_FALSE(isBlack(odd));
}

}  // namespace
}  // namespace pictal
