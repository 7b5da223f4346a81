#include "PictalCore/Annotation/ScreenshotAnnotation.h"
#include "Tests/Support/JSONChecks.h"

#include <algorithm>
#include <limits>

namespace pictal {
namespace {

using Annotation = ScreenshotAnnotation;
using Geometry = AnnotationGeometry;
using Kind = DecodingError::Kind;

const std::string good = R"({"tool": "text", "geometry": {"point": {"_0": [1, 2]}}, "text": "hi",
    "style": {"stroke": {"red": 0, "green": 0, "blue": 0, "alpha": 1},
        "fill": {"red": 0, "green": 0, "blue": 0, "alpha": 0}, "lineWidth": 2, "opacity": 1,
        "fontSize": 24, "textOutline": {"red": 1, "green": 1, "blue": 1, "alpha": 0.94}}})";

TEST(AnnotationTool, RawValues) {
    EXPECT_EQ(fromRawValue<AnnotationTool>("Rectangle"), std::nullopt);
    const auto tools = allCases<AnnotationTool>();
    ASSERT_EQ(tools.size(), 9u);
    EXPECT_EQ(tools.front(), AnnotationTool::rectangle);
    EXPECT_EQ(tools.back(), AnnotationTool::highlight);
    for (const AnnotationTool tool : tools)
        EXPECT_EQ(fromRawValue<AnnotationTool>(rawValue(tool)), tool);
}

TEST(ScreenshotAnnotation, ConstructorsStandardiseRectanglesAndKeepTexts) {
    const AnnotationStyle style;
    for (const auto& made : {Annotation::rectangle({50, 40, -20, -10}, style),
                             Annotation::ellipse({50, 40, -20, -10}, style),
                             Annotation::mosaic({50, 40, -20, -10}, style),
                             Annotation::highlight({50, 40, -20, -10}, style)}) {
        const auto* stored = made.geometry.as<Geometry::Rect>();
        ASSERT_TRUE(stored);
        EXPECT_EQ(stored->rect.origin, (CGPoint{30, 30})) << rawValue(made.tool);
        EXPECT_EQ(stored->rect.size, (CGSize{20, 10})) << rawValue(made.tool);
    }
    EXPECT_EQ(Annotation::textAt("  hi ", {1, 2}, style).text, "  hi ");
    EXPECT_EQ(Annotation::number(12, {1, 2}, style).text, "12");
    EXPECT_EQ(Annotation::number(std::numeric_limits<std::int64_t>::min(), {}, style).text,
              "-9223372036854775808");
}

TEST(ScreenshotAnnotation, Equality) {
    const AnnotationStyle style = AnnotationStyle::text;
    const auto composed = Annotation::textAt("caf\u00E9", {1, 2}, style);
    EXPECT_EQ(composed, Annotation::textAt("cafe\u0301", {1, 2}, style));
    EXPECT_NE(composed, Annotation::textAt("cafe", {1, 2}, style));
    EXPECT_NE(composed, Annotation::textAt("caf\u00E9", {1, 2}, AnnotationStyle::mosaic));
    Annotation bare = composed;
    bare.text.reset();
    EXPECT_NE(bare, composed);
    EXPECT_NE(bare, Annotation::textAt("", {1, 2}, style)) << "absent is not empty";
    EXPECT_NE(Annotation::line({1, 2}, {3, 4}, style), Annotation::arrow({1, 2}, {3, 4}, style));
}

TEST(ScreenshotAnnotation, RoundTrips) {
    const AnnotationStyle style(RGBAColor(0.1, 0.2, 0.3, 0.4), RGBAColor(1, 0, 1, 0.5), 1.0 / 3,
                                0.7, 13.5, RGBAColor(0, 1, 0, 1), 0, AnnotationMosaicMode::smear);
    Annotation stored{
        AnnotationTool::brush, {Geometry::Rect{{50, 40, -20, -10}}}, style, "ignored"};
    const std::vector<Annotation> all = {
        Annotation::rectangle({1, 2, 3, 4}, style),
        Annotation::ellipse({}, style),
        Annotation::line({0.1, 0.2}, {1e300, -5e-324}, style),
        Annotation::arrow({1, 2}, {1, 2}, style),
        Annotation::brush({}, style),
        Annotation::brush({{1, 2}, {3, 4}, {1, 2}}, style),
        Annotation::mosaic({1, 2, 3, 4}, AnnotationStyle::mosaic),
        Annotation::textAt(std::string("\"\\\0\n\u2028 \U0001F600", 12), {1, 2},
                           AnnotationStyle::text),
        Annotation::number(-3, {1, 2}, style),
        Annotation::highlight({1, 2, 3, 4}, AnnotationStyle::highlight),
        std::move(stored),
    };
    for (const Annotation& annotation : all)
        expectRoundTrip(annotation, rawValue(annotation.tool));
    expectRoundTrip(all, "list");
    const auto bare = encodeJSON(all[0]);
    EXPECT_EQ(bare->find("\"text\":"), std::string::npos) << *bare;
}

TEST(ScreenshotAnnotation, RefusesWhatIsNoAnnotation) {
    struct Case {
        const char* name;
        std::string text;
        Kind kind;
        const char* message;
    };
    const std::string deep = std::string(10000, '[') + std::string(10000, ']');
    for (const auto& [name, text, kind, message] :
         {Case{"unknown tool", patched(good, "\"text\", ", "\"stamp\", "), Kind::dataCorrupted,
               "tool: Unknown value \"stamp\"."},
          Case{"no tool", patched(good, "\"tool\"", "\"Tool\""), Kind::keyNotFound,
               "The key \"tool\" is missing."},
          Case{"no style", patched(good, "\"style\"", "\"look\""), Kind::keyNotFound,
               "The key \"style\" is missing."},
          Case{"geometry comes before style",
               patched(patched(good, "\"style\"", "\"look\""), "\"point\"", "\"spot\""),
               Kind::typeMismatch, "geometry: Invalid number of keys found, expected one."},
          Case{"text is a number", patched(good, "\"hi\"", "12"), Kind::typeMismatch,
               "text: Expected a string but found a number."},
          Case{"inside the style", patched(good, "\"alpha\": 0.94", "\"beta\": 0.94"),
               Kind::keyNotFound, "style.textOutline: The key \"alpha\" is missing."},
          Case{"deep in a key that is ignored",
               patched(good, "\"text\": \"hi\"", "\"note\": " + deep), Kind::dataCorrupted,
               "The text is nested deeper than 64 levels."},
          Case{"same key twice", patched(good, "\"text\": \"hi\"", R"("tool": "text")"),
               Kind::dataCorrupted, "The key \"tool\" occurs twice in one object."}})
        expectDecodingError<Annotation>(text, kind, message, name);
    expectDecodingError<std::vector<Annotation>>(
        "[" + good + "," + patched(good, "\"hi\"", "[]") + ", 7]", Kind::typeMismatch,
        "1.text: Expected a string but found an array.", "second of a list");
    expectDecodingError<std::vector<Annotation>>(
        good, Kind::typeMismatch, "Expected an array but found an object.", "no list");
}

TEST(ScreenshotAnnotation, GuideShowsEveryToolAndGeometry) {
    const auto samples = samplesOfGuide("annotations.md");
    ASSERT_EQ(samples.size(), 1u);
    const auto list = decodeJSON<std::vector<Annotation>>(samples[0]);
    ASSERT_TRUE(list) << list.error().message();
    for (const AnnotationTool tool : allCases<AnnotationTool>())
        EXPECT_NE(std::ranges::find(*list, tool, &Annotation::tool), list->end()) << rawValue(tool);
}

}  // namespace
}  // namespace pictal
