#include "PictalCore/Platform/Foundation/Unicode.h"

#include <gtest/gtest.h>

namespace pictal {
namespace {

using namespace std::string_view_literals;

TEST(Unicode, RepairsIllFormedSequences) {
    struct Case {
        const char* name;
        std::string_view text, want;
    };
    for (const Case& c :
         {Case{"well-formed", "añ漢😀", "añ漢😀"},
          Case{"lone continuation", "a\x80z", "a\xEF\xBF\xBDz"},
          Case{"truncated at the end", "a\xE6\xBC", "a\xEF\xBF\xBD"},
          Case{"truncated before ASCII", "\xF0\x9F\x98z", "\xEF\xBF\xBDz"},
          Case{"surrogate", "\xED\xA0\x80", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},
          Case{"overlong", "\xC0\xAF", "\xEF\xBF\xBD\xEF\xBF\xBD"},
          Case{"NUL stays", std::string_view("a\0b", 3), std::string_view("a\0b", 3)}})
        EXPECT_EQ(Unicode::repaired(c.text), c.want) << c.name;
}

TEST(Unicode, TrimsThePropertyWhiteSpace) {
    struct Case {
        const char* name;
        std::string_view text, want;
    };
    for (const Case& c :
         {Case{"ASCII", "  Hello \n", "Hello"}, Case{"all white", " \n\t", ""},
          Case{"empty", "", ""},
          Case{"no-break and ideographic space", "\u00A0\u3000a b\u2028\u2003", "a b"},
          Case{"next line", "\u0085a\u0085", "a"},
          Case{"zero-width space is no white space", "\u200Ba\u200B", "\u200Ba\u200B"},
          Case{"ill-formed bytes are no white space", "\xA0 a \xE2\x80", "\xA0 a \xE2\x80"}})
        EXPECT_EQ(Unicode::trimmingWhiteSpace(c.text), c.want) << c.name;
}

TEST(Unicode, ComparesByCanonicalEquivalence) {
    EXPECT_TRUE(Unicode::canonicallyEquivalent("\u00E9", "e\u0301"));
    EXPECT_TRUE(Unicode::canonicallyEquivalent("\u212B", "A\u030A"));
    EXPECT_TRUE(Unicode::canonicallyEquivalent("q\u0307\u0323", "q\u0323\u0307"));
    EXPECT_FALSE(Unicode::canonicallyEquivalent("S", "s"));
    EXPECT_FALSE(Unicode::canonicallyEquivalent("\uFB01", "fi"));
}

TEST(Unicode, LowercasesByTheRootLocale) {
    EXPECT_EQ(Unicode::lowercased("IÄ ΣΑΣ"), "iä σας");
    EXPECT_EQ(Unicode::lowercased("\u0130"), "i\u0307");
}

TEST(Unicode, TellsLettersMarksAndNumbersFromTheRest) {
    for (const char32_t scalar : U"aZ0é漢ا\u0301\u20DD½Ⅳ٣\U0001D7D8"sv)
        EXPECT_TRUE(Unicode::isAlphanumeric(scalar)) << std::hex << std::uint32_t{scalar};
    for (const char32_t scalar : U" -_./\u00A0\u200D€😀\uFFFD\uE000\u0378\0"sv)
        EXPECT_FALSE(Unicode::isAlphanumeric(scalar)) << std::hex << std::uint32_t{scalar};
}

TEST(Unicode, CutsBetweenCharactersAsPeopleCountThem) {
    struct Case {
        const char* name;
        std::string_view first;  // the first character; "|" follows it
    };
    for (const Case& c :
         {Case{"ASCII", "a"}, Case{"combining marks", "e\u0301\u0323"}, Case{"CR LF", "\r\n"},
          Case{"Hangul jamo", "\u1112\u1161\u11AB"}, Case{"flag", "🇩🇪"},
          Case{"family", "👩\u200D👩\u200D👧"}, Case{"skin tone", "👍🏽"},
          Case{"keycap", "1\uFE0F\u20E3"}, Case{"spacing mark", "\u0BA8\u0BBF"},
          Case{"NUL", std::string_view("\0", 1)}, Case{"lone lead byte", "\xF0"},
          Case{"truncated sequence", "\xE6\xBC"}, Case{"lone continuation", "\x80"}}) {
        const std::string text = std::string(c.first) + "|" + std::string(c.first) + "|";
        EXPECT_EQ(Unicode::prefix(text, 1), c.first) << c.name;
        EXPECT_EQ(Unicode::prefix(text, 3), text.substr(0, text.size() - 1)) << c.name;
        EXPECT_EQ(Unicode::prefix(text, 4), text) << c.name;
        EXPECT_EQ(Unicode::prefix(text, 0), "") << c.name;
    }
    EXPECT_EQ(Unicode::prefix("🇩🇪🇫🇷🇮", 2), "🇩🇪🇫🇷");
    EXPECT_EQ(Unicode::prefix("abc", -1), "");
    EXPECT_EQ(Unicode::prefix("", 1), "");
}

}  // namespace
}  // namespace pictal
