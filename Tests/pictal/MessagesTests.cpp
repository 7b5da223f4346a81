#include "pictal/Messages.h"

#include <gtest/gtest.h>

namespace pictal::program {

TEST(Messages, EscapesWhatATerminalWouldObey) {
    const std::pair<std::string_view, const char*> cases[] = {
        {"Grüße, 世界 😀 \\ \"", "Grüße, 世界 😀 \\ \""},
        {"a\nb\tc\r", R"(a\nb\tc\x0D)"},
        {"\x1B[2J\x7F", R"(\x1B[2J\x7F)"},
        {std::string_view("\0", 1), R"(\x00)"},
        {"\u0080\u009F\u00A0", "\\u0080\\u009F\u00A0"},
        {"\u200E\u2028\u202E\u2069", R"(\u200E\u2028\u202E\u2069)"},
        {"\xFF\xC3(", R"(\xFF\xC3()"},
        {"\xC0\xAF", R"(\xC0\xAF)"},                  // "/" in two bytes
        {"\xED\xA0\x80", R"(\xED\xA0\x80)"},          // half of a surrogate pair
        {"\xF4\x90\x80\x80", R"(\xF4\x90\x80\x80)"},  // behind the last character
        {"\xE4\xB8", R"(\xE4\xB8)"}};
    for (const auto& [text, want] : cases)
        EXPECT_EQ(escaped(text), want);
}

TEST(Messages, QuotesEightyCharacters) {
    const auto repeated = [](std::string_view text, int count) {
        std::string result;
        while (count-- > 0)
            result += text;
        return result;
    };
    EXPECT_EQ(inQuotes(repeated("世", 80)), "\"" + repeated("世", 80) + "\"");
    EXPECT_EQ(inQuotes(repeated("世", 81)), "\"" + repeated("世", 80) + "…\"");
    EXPECT_EQ(inQuotes(""), "\"\"");
    EXPECT_EQ(
        messageLine("a\n \"" + repeated("世", 200) + "\" is \"b\", not \"" + repeated("c", 99)),
        "a\\n \"" + repeated("世", 80) + "…\" is \"b\", not \"" + repeated("c", 99));
}

}  // namespace pictal::program
