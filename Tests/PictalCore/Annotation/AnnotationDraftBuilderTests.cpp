#include "PictalCore/Annotation/AnnotationDraftBuilder.h"
#include "Tests/Support/JSONChecks.h"

namespace pictal {
namespace {

using Annotation = ScreenshotAnnotation;
using Tool = AnnotationTool;

std::optional<Annotation> draft(Tool tool, CGPoint start, CGPoint current) {
    return AnnotationDraftBuilder::annotation(tool, start, current, {}, "", 7, AnnotationStyle());
}

TEST(AnnotationDraftBuilder, DragsOutIntegralRectangles) {
    struct Case {
        const char* name;
        CGPoint start, current;
        CGRect want;
    };
    static constexpr Case cases[] = {
        {"left and up", {10.4, 20.6}, {5.2, 30.1}, {5, 20, 6, 11}},
        {"left and down", {50, 50}, {10, 20}, {10, 20, 40, 30}},
        {"right and up", {10, 20}, {50, 50}, {10, 20, 40, 30}},
        {"across the origin", {-0.5, 0.5}, {0.5, -0.5}, {-1, -1, 2, 2}},
        {"click on a corner of a pixel", {7, 8}, {7, 8}, {7, 8, 0, 0}},
    };
    for (const Case& c : cases)
        for (const Tool tool : {Tool::rectangle, Tool::ellipse, Tool::highlight, Tool::mosaic}) {
            const Annotation want{tool, {AnnotationGeometry::Rect{c.want}}, AnnotationStyle()};
            EXPECT_EQ(draft(tool, c.start, c.current), want) << c.name;
        }
}

TEST(AnnotationDraftBuilder, LinesKeepFractionsAndDirection) {
    for (const Tool tool : {Tool::line, Tool::arrow}) {
        const Annotation want{
            tool, {AnnotationGeometry::Line{{1.5, 2.5}, {0.25, 9}}}, AnnotationStyle()};
        EXPECT_EQ(draft(tool, {1.5, 2.5}, {0.25, 9}), want);
    }
}

TEST(AnnotationDraftBuilder, PathsNeedPoints) {
    AnnotationStyle smear = AnnotationStyle::mosaic;
    smear.mosaicMode = AnnotationMosaicMode::smear;
    for (const Tool tool : {Tool::brush, Tool::mosaic}) {
        const auto build = [&](std::span<const CGPoint> points) {
            return AnnotationDraftBuilder::annotation(tool, {9, 9}, {20, 20}, points, "x", 1,
                                                      smear);
        };
        EXPECT_EQ(build({}), std::nullopt);
        for (const std::vector<CGPoint>& points :
             {std::vector<CGPoint>{{1, 2}}, std::vector<CGPoint>{{1, 2}, {3.5, 4}, {1, 2}}})
            EXPECT_EQ(build(points),
                      (Annotation{tool, {AnnotationGeometry::Points{points}}, smear}));
    }
}

TEST(AnnotationDraftBuilder, TextIsTrimmedAndMustSaySomething) {
    const auto build = [](Tool tool, std::string_view text, std::int64_t number) {
        return AnnotationDraftBuilder::annotation(tool, {1.5, 2}, {30, 40}, {}, text, number,
                                                  AnnotationStyle::text);
    };
    const CGPoint start{1.5, 2};
    EXPECT_EQ(build(Tool::text, "  Hello \n", 3),
              Annotation::textAt("Hello", start, AnnotationStyle::text));
    EXPECT_EQ(build(Tool::text, "\u3000a b\u2029", 3)->text, "a b");
    EXPECT_EQ(build(Tool::text, " \n\t\u00A0", 3), std::nullopt);
    EXPECT_EQ(build(Tool::text, "", 3), std::nullopt);
    EXPECT_EQ(build(Tool::number, "x", 3), Annotation::number(3, start, AnnotationStyle::text));
    EXPECT_EQ(build(Tool::number, "", -40)->text, "-40");
}

}  // namespace
}  // namespace pictal
