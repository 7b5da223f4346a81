#include "PictalCore/Annotation/AnnotationDraftBuilder.h"
#include "Tests/Support/JSONChecks.h"

namespace pictal {
namespace {

using Annotation = ScreenshotAnnotation;
using Tool = AnnotationTool;

std::optional<Annotation> draft(Tool tool, CGPoint start, CGPoint current,
                                const AnnotationStyle& style = {},
                                std::span<const CGPoint> points = {}, std::string_view text = " ") {
    return AnnotationDraftBuilder::annotation(tool, start, current, points, text, -40, style);
}

TEST(AnnotationDraftBuilder, DragsOutIntegralRectanglesAndFractionalLines) {
    const auto check = [](CGPoint start, CGPoint current, const CGRect& want) {
        for (const Tool tool : {Tool::rectangle, Tool::ellipse, Tool::highlight, Tool::mosaic})
            EXPECT_EQ(draft(tool, start, current),
                      (Annotation{tool, {AnnotationGeometry::Rect{want}}, {}}));
        for (const Tool tool : {Tool::line, Tool::arrow})
            EXPECT_EQ(draft(tool, start, current),
                      (Annotation{tool, {AnnotationGeometry::Line{start, current}}, {}}));
    };
    check({10.4, 20.6}, {5.2, 30.1}, {5, 20, 6, 11});
    check({50, 50}, {10, 20}, {10, 20, 40, 30});
    check({7, 8}, {7, 8}, {7, 8, 0, 0});
}

TEST(AnnotationDraftBuilder, PathsNeedPoints) {
    AnnotationStyle smear = AnnotationStyle::mosaic;
    smear.mosaicMode = AnnotationMosaicMode::smear;
    const std::vector<CGPoint> points{{1, 2}, {3.5, 4}, {1, 2}};
    for (const Tool tool : {Tool::brush, Tool::mosaic}) {
        EXPECT_EQ(draft(tool, {9, 9}, {20, 20}, smear), std::nullopt);
        EXPECT_EQ(draft(tool, {9, 9}, {20, 20}, smear, points),
                  (Annotation{tool, {AnnotationGeometry::Points{points}}, smear}));
    }
}

TEST(AnnotationDraftBuilder, TextsAreTrimmedAndMustSaySomething) {
    const AnnotationStyle style = AnnotationStyle::text;
    const auto typed = [&](std::string_view text) {
        return draft(Tool::text, {1.5, 2}, {30, 40}, style, {}, text);
    };
    EXPECT_EQ(typed("\u3000a b\u2029"), Annotation::textAt("a b", {1.5, 2}, style));
    EXPECT_EQ(typed(" \n\t\u00A0"), std::nullopt);
    EXPECT_EQ(draft(Tool::number, {1.5, 2}, {30, 40}), Annotation::number(-40, {1.5, 2}, {}));
}

}  // namespace
}  // namespace pictal
