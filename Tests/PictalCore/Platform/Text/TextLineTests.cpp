#include "PictalCore/Platform/Graphics/BitmapContext.h"
#include "PictalCore/Platform/Text/Fonts.h"
#include "PictalCore/Platform/Text/TextLine.h"
#include "Tests/Support/PictureProbe.h"

#include <cmath>
#include <limits>
#include <ranges>
#include <string>

namespace pictal {
namespace {

// The tables of Inter 4: 2816 units to the size, 2728 above the baseline and 680 below.
constexpr CGFloat em = 2816;

std::string repeated(std::string_view text, std::size_t count) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i)
        result += text;
    return result;
}

CGFloat widthOf(std::string_view text, CGFloat size = em) {
    return TextLine(text, size).width();
}

std::size_t picturesIn(std::string_view text) {
    return TextLine(text, 24).colorGlyphs(CGRect(-1e6, -1e6, 2e6, 2e6)).size();
}

/// Whether the outlines of a line are those of some glyphs one after another, each set alone.
::testing::AssertionResult showsFromLeft(std::string_view text,
                                         std::initializer_list<std::string_view> glyphs) {
    std::vector<CGPoint> want;
    CGFloat x = 0;
    for (const std::string_view glyph : glyphs) {
        const TextLine alone(glyph, em);
        const Path outlines = alone.outlines();
        for (const CGPoint point : outlines.points())
            want.push_back({point.x + x, point.y});
        x += alone.width();
    }
    const Path path = TextLine(text, em).outlines();
    const auto near = [](CGPoint a, CGPoint b) { return std::hypot(a.x - b.x, a.y - b.y) < 1e-6; };
    if (std::ranges::equal(path.points(), want, near)) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << text << " has " << path.points().size() << " points, not the " << want.size()
           << " of its glyphs, or elsewhere";
}

/// Twice the area that the outlines run around, by the polygon of their points.
CGFloat windingOf(std::string_view text) {
    const Path path = TextLine(text, em).outlines();
    CGFloat sum = 0;
    auto point = path.points().begin();
    CGPoint start, last;
    const auto add = [&](CGPoint next) { sum += last.x * next.y - next.x * last.y, last = next; };
    for (const Path::Verb verb : path.verbs()) {
        if (verb == Path::Verb::move) start = last = *point++;
        if (verb == Path::Verb::close) add(start);
        const int points = verb == Path::Verb::line    ? 1
                           : verb == Path::Verb::quad  ? 2
                           : verb == Path::Verb::cubic ? 3
                                                       : 0;
        for (int i = 0; i < points; ++i)
            add(*point++);
    }
    return sum;
}

TEST(TextLine, MetricsAreThoseOfTheFacesAtEverySize) {
    ASSERT_TRUE(Fonts::areInstalled());
    for (const CGFloat size : {1.0, 24.0, 48.5, 5000.0}) {
        const TextLine line("Hxg", size);
        EXPECT_NEAR(line.ascent(), 2728 / em * size, 1e-9 * size) << size;
        EXPECT_NEAR(line.descent(), 680 / em * size, 1e-9 * size) << size;
        EXPECT_NEAR(line.width(), widthOf("Hxg") / em * size, 1e-9 * size) << size;
        // The capital is 2048 high, and stands on the baseline.
        const CGRect capital = TextLine("H", size).outlines().boundingBox();
        EXPECT_NEAR(capital.minY(), 0, 1e-9) << size;
        EXPECT_NEAR(capital.maxY(), 2048 / em * size, 1e-9 * size) << size;
    }
    EXPECT_DOUBLE_EQ(TextLine("", 24).ascent(), TextLine("x", 24).ascent());
    // Noto Sans CJK reaches 1160 thousandths above its baseline, 288 below.
    EXPECT_NEAR(TextLine("a中", 24).ascent(), 27.84, 1e-9);
    EXPECT_NEAR(TextLine("中", 24).descent(), 6.912, 1e-9);
    EXPECT_GT(TextLine("HHH", 24, FontWeight::bold).width(), TextLine("HHH", 24).width());
    EXPECT_NEAR(widthOf("HHHH"), 4 * widthOf("H"), 1e-9);
    EXPECT_LT(widthOf("AV"), widthOf("A") + widthOf("V")) << "kerning";
}

TEST(TextLine, ControlCharactersAndLineBreaksAreASpaceEach) {
    const auto same = [](std::string_view odd, std::initializer_list<std::string_view> plain) {
        EXPECT_TRUE(showsFromLeft(odd, plain));
    };
    same("H\nI", {"H", " ", "I"});
    same("H\r\nI", {"H", " ", "I"});
    same("H\r\rI", {"H", " ", " ", "I"});
    same("H\n\rI", {"H", " ", " ", "I"});
    same("H\tI", {"H", " ", "I"});
    same(std::string_view("H\0I", 3), {"H", " ", "I"});
    same("H\x7FI", {"H", " ", "I"});
    same("H\u0085I", {"H", " ", "I"});
    same("H\u2028I\u2029", {"H", " ", "I", " "});
    same("H\xFFI", {"H", "\uFFFD", "I"});
    same("H\xED\xA0\x80I", {"H", "\uFFFD\uFFFD\uFFFD", "I"});
    same("I\xE4\xB8", {"I", "\uFFFD"});
}

TEST(TextLine, DirectionsFollowTheTextAndBracketsAreMirrored) {
    EXPECT_TRUE(showsFromLeft("אב", {"ב", "א"}));
    EXPECT_TRUE(showsFromLeft("אב HI", {"H", "I", " ", "ב", "א"}));
    EXPECT_TRUE(showsFromLeft("HI אב", {"H", "I", " ", "ב", "א"}));
    EXPECT_TRUE(showsFromLeft("א 12 ב", {"ב", " ", "1", "2", " ", "א"}));
    EXPECT_TRUE(showsFromLeft("(א", {"א", ")"}));
    EXPECT_TRUE(showsFromLeft("H\u202EIN", {"H", "N", "I"})) << "an override";
    EXPECT_TRUE(showsFromLeft("١٢", {"١", "٢"})) << "Arabic digits run to the right";
}

TEST(TextLine, LettersAreShapedInTheirContext) {
    EXPECT_LT(widthOf("ببب"), 3 * widthOf("ب") - 1) << "joined letters are narrower";
    EXPECT_NEAR(widthOf("ب\u200Cب"), 2 * widthOf("ب"), 1e-9) << "a non-joiner parts them";
    EXPECT_TRUE(showsFromLeft("लिल", {"लि", "ल"}));
    const Path letter = TextLine("ल", em).outlines(), syllable = TextLine("लि", em).outlines();
    ASSERT_GT(syllable.points().size(), letter.points().size());
    EXPECT_GT(syllable.points().back().x, letter.points().back().x + 100)
        << "the letter comes last, behind the sign that is written after it";
    EXPECT_DOUBLE_EQ(syllable.points().back().y, letter.points().back().y);
    EXPECT_NEAR(widthOf("e\u0301"), widthOf("\u00E9"), 1e-9);
}

TEST(TextLine, FullTurnsOfAllFacesAgree) {
    // Inter and Noto Sans CJK have compact outlines, the others TrueType's.
    for (const std::string_view text : {"O", "中", "ب", "ל", "ल"})
        EXPECT_LT(windingOf(text), 0) << text;
}

TEST(TextLine, PicturesAreForWhatIsOneAndAskedForAsOne) {
    const auto check = [](const char* name, std::string_view text, std::size_t pictures,
                          bool outlines) {
        EXPECT_EQ(picturesIn(text), pictures) << name;
        EXPECT_EQ(!TextLine(text, 24).outlines().isEmpty(), outlines) << name;
        EXPECT_EQ(Fonts::charactersWithoutGlyph(text), std::vector<char32_t>()) << name;
    };
    check("a picture by itself", "✅", 1, false);
    check("a skin colour", "👍🏽", 1, false);
    check("a family", "👩‍👩‍👧‍👦", 1, false);
    check("two flags", "🇩🇪🇫🇷", 2, false);
    check("a flag of tags", "🏴󠁧󠁢󠁥󠁮󠁧󠁿", 1, false);
    check("a keycap", "1️⃣", 1, false);
    check("a digit", "1", 0, true);
    check("text as a picture", "☺️©️", 2, false);
    check("text as it is", "☺©", 0, true);
    check("a picture as text", "☺︎", 0, true);
    check("a picture in words", "a✅b", 1, true);
    check("a joiner alone", "\u200D", 0, false);
}

TEST(TextLine, APictureFillsItsPlaceInTheLine) {
    // Noto's pictures are 136 × 128 pixels for a size of 109, and an emoji advances by 2550 of
    // 2048.
    const CGFloat size = 109;
    const TextLine line("H✅✅", size);
    const auto pictures = line.colorGlyphs(CGRect(0, -size, 10 * size, 2 * size));
    ASSERT_EQ(pictures.size(), 2U);
    EXPECT_TRUE(pictures[0].image.isSameImage(pictures[1].image)) << "decoded once";
    EXPECT_EQ(pictures[0].image.width(), 136);
    EXPECT_NEAR(pictures[0].rect.width(), 136, 0.2);
    EXPECT_NEAR(pictures[0].rect.height(), 128, 0.2);
    EXPECT_NEAR(pictures[1].rect.minX() - pictures[0].rect.minX(), 2550 / 2048.0 * size, 1e-6);
    EXPECT_NEAR(line.width(), widthOf("H", size) + 2 * 2550 / 2048.0 * size, 1e-6);
    EXPECT_NEAR(pictures[0].rect.minX(), widthOf("H", size), 1);
    EXPECT_LT(pictures[0].rect.minY(), 0) << "it reaches below the baseline";
    EXPECT_TRUE(line.colorGlyphs(CGRect(8 * size, 0, size, size)).empty()) << "out of sight";
}

TEST(TextLine, WhatLiesOutOfSightIsLeftOutAndNothingElse) {
    const TextLine line("fÅj\u0302\u0302gy中مQ", 20);
    for (CGFloat x = -30; x < line.width() + 30; x += 3.7) {
        const CGRect visible(x, -9, 11, 23);
        const auto drawn = [&](const Path& path) {
            auto canvas = BitmapContext::make(11, 23, CGColorSpace::sRGB());
            canvas->concatenate(AffineTransform::translation(-visible.minX(), -visible.minY()));
            canvas->fill(path);
            return std::move(*canvas).makeImage();
        };
        EXPECT_TRUE(picturesAgree(drawn(line.outlines(visible)), drawn(line.outlines()))) << x;
    }
    const std::string words = repeated("word ", 10'000);
    const TextLine longLine(words, 20);
    EXPECT_LT(longLine.outlines(CGRect(5000, -20, 100, 40)).verbs().size(), 3000U);
    EXPECT_TRUE(longLine.outlines(CGRect(0, 200, 1e9, 40)).isEmpty());
}

TEST(TextLine, AHundredThousandScalarsAreSetAndNoHalfCharacter) {
    const std::size_t limit = TextLine::maximumScalars;
    EXPECT_NEAR(widthOf(repeated("H", limit + 1)), widthOf("H") * static_cast<double>(limit), 1e-3);
    const std::string mark = "\u0301";
    const auto outlined = [](const std::string& text) {
        return TextLine(text, em)
            .outlines(CGRect(widthOf("H") * 99'990, 0, 1e9, em))
            .verbs()
            .size();
    };
    const std::string all = repeated("H", limit - 1);
    EXPECT_GT(outlined(all + "H"), outlined(all));
    EXPECT_EQ(outlined(all + "H" + mark), outlined(all)) << "the last letter loses no accent";
    EXPECT_EQ(outlined(all + "👍🏽"), outlined(all));
    EXPECT_TRUE(TextLine("e" + repeated(mark, 200'000), 24).outlines().isEmpty());
}

TEST(TextLine, ASizeThatIsNoneSetsNothing) {
    for (const CGFloat size : {0.0, -3.0, CGFloat(NAN), CGFloat(HUGE_VAL), -CGFloat(HUGE_VAL)}) {
        const TextLine line("Hello ✅", size);
        EXPECT_EQ(line.width() + line.ascent() + line.descent(), 0) << size;
        EXPECT_TRUE(line.outlines().isEmpty()) << size;
        EXPECT_TRUE(line.colorGlyphs(CGRect(-1e9, -1e9, 2e9, 2e9)).empty()) << size;
    }
    EXPECT_NEAR(widthOf("H", 1e30), widthOf("H") / em * 1e30, 1e20);
    EXPECT_TRUE(TextLine("✅", 1e308).colorGlyphs(CGRect(0, 0, NAN, 1)).empty());
}

TEST(Fonts, TellWhichCharactersNoFontShows) {
    const auto check = [](const char* name, std::string_view text, std::u32string_view missing) {
        const auto have = Fonts::charactersWithoutGlyph(text);
        EXPECT_EQ(std::u32string(have.begin(), have.end()), missing) << name;
    };
    // U+0378 is no character, U+10FFFD nobody's.
    check("nothing", "", U"");
    check("all there", "Abc, 中文 مرحبا 👍🏽 \u00A0\u200B\n", U"");
    check("each once", "a\u0378b\U0010FFFDc\u0378", U"\u0378\U0010FFFD");
    check("under an accent", "\u0378\u0301", U"\u0378");
    check("ill-formed text has a glyph of its own", "\xFF", U"");
}

}  // namespace
}  // namespace pictal
