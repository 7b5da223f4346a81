#include "PictalCore/Annotation/ScreenshotAnnotation.h"
#include "Tests/Support/JSONChecks.h"

#include <algorithm>
#include <limits>

namespace pictal {
namespace {

using Annotation = ScreenshotAnnotation;
using Geometry = AnnotationGeometry;
using enum DecodingError::Kind;

const std::string good = R"({"tool": "text", "geometry": {"point": {"_0": [1, 2]}}, "text": "hi",
    "style": {"stroke": {"red": 0, "green": 0, "blue": 0, "alpha": 1},
        "fill": {"red": 0, "green": 0, "blue": 0, "alpha": 0}, "lineWidth": 2, "opacity": 1,
        "fontSize": 24, "textOutline": {"red": 1, "green": 1, "blue": 1, "alpha": 0.94}}})";

TEST(ScreenshotAnnotation, ConstructorsStandardiseRectanglesAndKeepTexts) {
    const AnnotationStyle style;
    for (const auto make :
         {Annotation::rectangle, Annotation::ellipse, Annotation::mosaic, Annotation::highlight})
        EXPECT_EQ(encodeJSON(make({50, 40, -20, -10}, style).geometry),
                  R"({"rect":{"_0":[[30.0,30.0],[20.0,10.0]]}})");
    EXPECT_EQ(Annotation::textAt("  hi ", {1, 2}, style).text, "  hi ");
    EXPECT_EQ(Annotation::number(std::numeric_limits<std::int64_t>::min(), {}, style).text,
              "-9223372036854775808");
}

TEST(ScreenshotAnnotation, Equality) {
    const AnnotationStyle style = AnnotationStyle::text;
    const auto composed = Annotation::textAt("caf\u00E9", {1, 2}, style);
    EXPECT_EQ(composed, Annotation::textAt("cafe\u0301", {1, 2}, style));
    EXPECT_NE(composed, Annotation::textAt("caf\u00E9", {1, 2}, AnnotationStyle::mosaic));
    EXPECT_NE(composed, Annotation::textAt("caf\u00E9", {2, 1}, style));
    const Annotation bare{AnnotationTool::text, {Geometry::Point{{1, 2}}}, style};
    EXPECT_NE(bare, Annotation::textAt("", {1, 2}, style)) << "absent is not empty";
    EXPECT_NE(Annotation::line({1, 2}, {3, 4}, style), Annotation::arrow({1, 2}, {3, 4}, style));
}

TEST(ScreenshotAnnotation, RoundTrips) {
    const AnnotationStyle style({0.1, 0.2, 0.3, 0.4}, {1, 0, 1, 0.5}, 1.0 / 3, 0.7, 13.5,
                                {0, 1, 0, 1}, 0, AnnotationMosaicMode::smear);
    const std::string odd("\"\\\0\n\u2028 \U0001F600", 12);
    const std::vector<Annotation> all = {
        Annotation::ellipse({}, style),
        Annotation::line({0.1, 0.2}, {1e300, -5e-324}, style),
        Annotation::brush({{1, 2}, {3, 4}, {1, 2}}, AnnotationStyle::highlight),
        Annotation::textAt(odd, {1, 2}, AnnotationStyle::text),
        {AnnotationTool::brush, {Geometry::Rect{{50, 40, -20, -10}}}, style, "ignored"},
    };
    expectRoundTrip(all);
    EXPECT_EQ(encodeJSON(all[0])->find("\"text\":"), std::string::npos);
}

TEST(ScreenshotAnnotation, RefusesWhatIsNoAnnotation) {
    expectDecodingErrors<std::vector<Annotation>>({
        {"[" + patched(good, R"("tool": "text")", R"("tool": "Text")") + "]", dataCorrupted,
         R"(0.tool: Unknown value "Text".)"},
        {"[" + good + "," + patched(good, R"("style")", R"("look")") + "]", keyNotFound,
         R"(1: The key "style" is missing.)"},
        {"[" + patched(good, R"("hi")", "[]") + ", 7]", typeMismatch,
         "0.text: Expected a string but found an array."},
    });
}

TEST(ScreenshotAnnotation, GuideShowsEveryTool) {
    const auto samples = samplesOfGuide("annotations.md");
    ASSERT_EQ(samples.size(), 1u);
    const auto list = decodeJSON<std::vector<Annotation>>(samples[0]);
    ASSERT_TRUE(list) << list.error().description();
    for (const AnnotationTool tool : allCases<AnnotationTool>())
        EXPECT_NE(std::ranges::find(*list, tool, &Annotation::tool), list->end()) << rawValue(tool);
}

}  // namespace
}  // namespace pictal
