#include "PictalCore/Annotation/AnnotationStyle.h"
#include "Tests/Support/JSONChecks.h"

#include <cmath>
#include <utility>

namespace pictal {
namespace {

using enum DecodingError::Kind;
using Mode = AnnotationMosaicMode;

const std::string good = R"({"stroke": {"red": 1, "green": 0, "blue": 0, "alpha": 1},
    "fill": {"red": 0, "green": 0, "blue": 3, "alpha": 0.5}, "lineWidth": -2, "opacity": 3,
    "fontSize": 0.2, "textOutline": {"red": 0, "green": 0, "blue": 0, "alpha": 0.25},
    "textOutlineWidth": -1, "mosaicMode": "smear"})";

TEST(AnnotationStyle, ClampsLengthsButNotDecodedColours) {
    constexpr RGBAColor ink = RGBAColor::annotationInk;
    EXPECT_EQ(AnnotationStyle(ink, ink, -3, -0.5, 0.2, ink, -1, Mode::smear),
              AnnotationStyle(ink, ink, 0, 0, 1, ink, 0, Mode::smear));
    AnnotationStyle none(ink, ink, NAN, NAN, NAN, ink, NAN, Mode::block);
    EXPECT_TRUE(std::isnan(none.opacity));
    none.opacity = 1;
    EXPECT_EQ(none, AnnotationStyle(ink, ink, 0, 1.4, 1, ink, 0, Mode::block));

    AnnotationStyle want({1, 0, 0, 1}, {0, 0, 0, 0.5}, 0, 1, 1, {0, 0, 0, 0.25}, 0, Mode::smear);
    want.fill.blue = 3;
    EXPECT_EQ(decodeJSON<AnnotationStyle>(good), want);
}

TEST(AnnotationStyle, YoungerKeysAreOptional) {
    const auto check = [](const char* was, const char* now, CGFloat width, Mode mode) {
        const auto style = decodeJSON<AnnotationStyle>(patched(good, was, now));
        ASSERT_TRUE(style) << now << ": " << style.error().description();
        EXPECT_EQ(std::pair(style->textOutlineWidth, style->mosaicMode), std::pair(width, mode))
            << was << " -> " << now;
    };
    check("textOutlineWidth", "x", 2, Mode::smear);
    check("-1", "null", 2, Mode::smear);
    check("mosaicMode", "x", 0, Mode::block);
    check(R"("smear")", "null", 0, Mode::block);
    check("smear", "pixelate", 0, Mode::block);
}

TEST(AnnotationStyle, NamesAnUnknownMosaicMode) {
    expectDecodingErrors<AnnotationStyle>({
        {patched(good, "smear", R"(e\u0301\n \"Block)"), dataCorrupted,
         "mosaicMode: Unknown annotation mosaic mode: e\u0301\n \"Block"},
    });
}

}  // namespace
}  // namespace pictal
