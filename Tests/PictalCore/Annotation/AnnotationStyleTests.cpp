#include "PictalCore/Annotation/AnnotationStyle.h"
#include "Tests/Support/JSONChecks.h"

#include <cmath>
#include <limits>

namespace pictal {
namespace {

using Kind = DecodingError::Kind;
using Mode = AnnotationMosaicMode;

const std::string good = R"({
    "stroke": {"red": 1, "green": 0, "blue": 0, "alpha": 1},
    "fill": {"red": 0, "green": 0, "blue": 3, "alpha": 0.5},
    "lineWidth": 4, "opacity": 1, "fontSize": 18,
    "textOutline": {"red": 0, "green": 0, "blue": 0, "alpha": 0},
    "textOutlineWidth": 3, "mosaicMode": "smear"})";

TEST(AnnotationStyle, InitialiserClamps) {
    constexpr CGFloat nan = std::numeric_limits<CGFloat>::quiet_NaN();
    constexpr RGBAColor ink = RGBAColor::annotationInk;
    const AnnotationStyle low(ink, ink, -3, -0.5, 0.2, ink, -1, Mode::smear);
    EXPECT_EQ(low, AnnotationStyle(ink, ink, 0, 0, 1, ink, 0, Mode::smear));
    EXPECT_EQ(low.fontSize, 1);
    EXPECT_EQ(AnnotationStyle(ink, ink, 1, 1.4, 2, ink, 3, Mode::block).opacity, 1);
    const AnnotationStyle none(ink, ink, nan, nan, nan, ink, nan, Mode::block);
    EXPECT_EQ(none.lineWidth, 0);
    EXPECT_TRUE(std::isnan(none.opacity));
    EXPECT_EQ(none.fontSize, 1);
    EXPECT_EQ(none.textOutlineWidth, 0);
}

TEST(AnnotationStyle, DecodingClampsLengthsButNotColours) {
    std::string text = patched(good, "\"lineWidth\": 4", "\"lineWidth\": -2");
    text = patched(text, "\"opacity\": 1", "\"opacity\": 3");
    text = patched(text, "\"fontSize\": 18", "\"fontSize\": 0");
    text = patched(text, "\"textOutlineWidth\": 3", "\"textOutlineWidth\": -3");
    const auto style = decodeJSON<AnnotationStyle>(text);
    ASSERT_TRUE(style) << style.error().message();
    EXPECT_EQ(style->lineWidth, 0);
    EXPECT_EQ(style->opacity, 1);
    EXPECT_EQ(style->fontSize, 1);
    EXPECT_EQ(style->textOutlineWidth, 0);
    EXPECT_EQ(style->fill.blue, 3);
    EXPECT_EQ(style->mosaicMode, Mode::smear);
}

TEST(AnnotationStyle, YoungerKeysAreOptional) {
    struct Case {
        const char* name;
        const char* was;
        const char* now;
        CGFloat width;
        Mode mode;
    };
    static constexpr Case cases[] = {
        {"both absent", ", \"alpha\": 0},\n    \"textOutlineWidth\": 3, \"mosaicMode\": \"smear\"",
         ", \"alpha\": 0}", 2, Mode::block},
        {"width null", "\"textOutlineWidth\": 3", "\"textOutlineWidth\": null", 2, Mode::smear},
        {"mode null", "\"smear\"", "null", 3, Mode::block},
        {"old name of block", "\"smear\"", "\"pixelate\"", 3, Mode::block},
    };
    for (const Case& c : cases) {
        const auto style = decodeJSON<AnnotationStyle>(patched(good, c.was, c.now));
        ASSERT_TRUE(style) << c.name << ": " << style.error().message();
        EXPECT_EQ(style->textOutlineWidth, c.width) << c.name;
        EXPECT_EQ(style->mosaicMode, c.mode) << c.name;
        const auto text = encodeJSON(*style);
        ASSERT_TRUE(text) << c.name;
        const auto name =
            c.mode == Mode::block ? R"("mosaicMode":"block")" : R"("mosaicMode":"smear")";
        EXPECT_NE(text->find(name), std::string::npos) << *text;
        EXPECT_NE(text->find("\"textOutlineWidth\":"), std::string::npos) << *text;
    }
}

TEST(AnnotationStyle, RefusesWhatIsNoStyle) {
    struct Case {
        const char* name;
        const char* was;
        const char* now;
        Kind kind;
        const char* message;
    };
    static constexpr Case cases[] = {
        {"mosaic mode", "smear", "blur", Kind::dataCorrupted,
         "mosaicMode: Unknown annotation mosaic mode: blur"},
        {"mosaic mode as given", "smear", R"(\u00e9\n \"Block)", Kind::dataCorrupted,
         "mosaicMode: Unknown annotation mosaic mode: \u00e9\n \"Block"},
        {"mosaic mode is no string", "\"smear\"", "1", Kind::typeMismatch,
         "mosaicMode: Expected a string but found a number."},
        {"no outline", "\"textOutline\":", "\"outline\":", Kind::keyNotFound,
         "The key \"textOutline\" is missing."},
        {"colour", "\"red\": 1", "\"red\": []", Kind::typeMismatch,
         "stroke.red: Expected a number but found an array."},
        {"null width", "\"lineWidth\": 4", "\"lineWidth\": null", Kind::valueNotFound,
         "lineWidth: Expected a value but found null."},
    };
    for (const Case& c : cases)
        expectDecodingError<AnnotationStyle>(patched(good, c.was, c.now), c.kind, c.message,
                                             c.name);
    expectDecodingError<Mode>("\"\"", Kind::dataCorrupted,
                              "Unknown annotation mosaic mode: ", "empty mode");
}

}  // namespace
}  // namespace pictal
