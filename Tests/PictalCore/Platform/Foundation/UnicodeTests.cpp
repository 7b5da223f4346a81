#include "PictalCore/Platform/Foundation/Unicode.h"

#include <gtest/gtest.h>

namespace pictal {

using namespace std::string_view_literals;

TEST(Unicode, RepairsIllFormedSequences) {
    EXPECT_EQ(Unicode::repaired("añ漢😀"), "añ漢😀");
    EXPECT_EQ(Unicode::repaired("a\x80z"), "a\xEF\xBF\xBDz") << "lone continuation";
    EXPECT_EQ(Unicode::repaired("a\xE6\xBC"), "a\xEF\xBF\xBD") << "truncated at the end";
    EXPECT_EQ(Unicode::repaired("\xF0\x9F\x98z"), "\xEF\xBF\xBDz") << "truncated before ASCII";
    EXPECT_EQ(Unicode::repaired("\xED\xA0\x80"), "\uFFFD\uFFFD\uFFFD") << "surrogate";
    EXPECT_EQ(Unicode::repaired("\xC0\xAF"), "\uFFFD\uFFFD") << "overlong";
    EXPECT_EQ(Unicode::repaired("a\0b"sv), "a\0b"sv);
}

TEST(Unicode, TrimsThePropertyWhiteSpace) {
    EXPECT_EQ(Unicode::trimmingWhiteSpace("  Hello \n"), "Hello");
    EXPECT_EQ(Unicode::trimmingWhiteSpace(" \n\t"), "");
    EXPECT_EQ(Unicode::trimmingWhiteSpace("\u00A0\u3000a b\u2028\u2003"), "a b");
    EXPECT_EQ(Unicode::trimmingWhiteSpace("\u0085a\u0085"), "a");
    for (const char* none : {"", "\u200Ba\u200B", "\xA0 a \xE2\x80"})
        EXPECT_EQ(Unicode::trimmingWhiteSpace(none), none);
}

TEST(Unicode, ComparesByCanonicalEquivalence) {
    EXPECT_TRUE(Unicode::canonicallyEquivalent("\u00E9", "e\u0301"));
    EXPECT_TRUE(Unicode::canonicallyEquivalent("\u212B", "A\u030A"));
    EXPECT_TRUE(Unicode::canonicallyEquivalent("q\u0307\u0323", "q\u0323\u0307"));
    EXPECT_FALSE(Unicode::canonicallyEquivalent("S", "s"));
    EXPECT_FALSE(Unicode::canonicallyEquivalent("\uFB01", "fi"));
}

TEST(Unicode, KnowsThePropertiesOfCharacters) {
    EXPECT_EQ(Unicode::lowercased("IÄ ΣΑΣ"), "iä σας");
    EXPECT_EQ(Unicode::lowercased("\u0130"), "i\u0307");
    for (const char32_t scalar : U"aZ0é漢ا\u0301\u20DD½Ⅳ٣\U0001D7D8"sv)
        EXPECT_TRUE(Unicode::isAlphanumeric(scalar)) << std::hex << std::uint32_t{scalar};
    for (const char32_t scalar : U" -_./\u00A0\u200D€😀\uFFFD\uE000\u0378\0"sv)
        EXPECT_FALSE(Unicode::isAlphanumeric(scalar)) << std::hex << std::uint32_t{scalar};
}

TEST(Unicode, CutsBetweenCharactersAsPeopleCountThem) {
    for (const std::string_view first :
         {"a"sv, "e\u0301\u0323"sv, "\r\n"sv, "\u1112\u1161\u11AB"sv, "🇩🇪"sv,
          "👩\u200D👩\u200D👧"sv, "👍🏽"sv, "1\uFE0F\u20E3"sv, "\u0BA8\u0BBF"sv, "\0"sv, "\xF0"sv,
          "\xE6\xBC"sv, "\x80"sv}) {
        const std::string text = std::string(first) + "|" + std::string(first) + "|";
        EXPECT_EQ(Unicode::prefix(text, 1), first);
        EXPECT_EQ(Unicode::prefix(text, 3), text.substr(0, text.size() - 1));
        EXPECT_EQ(Unicode::prefix(text, 4), text);
        EXPECT_EQ(Unicode::prefix(text, 0), "");
        const std::size_t size = first.size() + 1;
        EXPECT_EQ(Unicode::prefixOfBytes(text, size), text.substr(0, size));
        EXPECT_EQ(Unicode::prefixOfBytes(text, 2 * size - 2), text.substr(0, size)) << text;
    }
    EXPECT_EQ(Unicode::prefix("🇩🇪🇫🇷🇮", 2), "🇩🇪🇫🇷");
    EXPECT_EQ(Unicode::prefix("abc", -1), "");
    EXPECT_EQ(Unicode::prefix("", 1), "");
}

}  // namespace pictal
