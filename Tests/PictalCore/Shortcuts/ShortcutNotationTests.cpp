#include "PictalCore/Shortcuts/ShortcutNotation.h"
#include "Tests/Support/ShortcutPrinting.h"

#include <gtest/gtest.h>

namespace pictal {
namespace {

using Error = ShortcutNotationError;

TEST(ShortcutNotation, KnowsEveryKey) {
    struct Case {
        const char* name;
        std::uint16_t keyCode;
        const char* label;
    };
    for (const Case& c : {Case{"a", 0, "A"},
                          {"s", 1, "S"},
                          {"d", 2, "D"},
                          {"f", 3, "F"},
                          {"h", 4, "H"},
                          {"g", 5, "G"},
                          {"z", 6, "Z"},
                          {"x", 7, "X"},
                          {"c", 8, "C"},
                          {"v", 9, "V"},
                          {"b", 11, "B"},
                          {"q", 12, "Q"},
                          {"w", 13, "W"},
                          {"e", 14, "E"},
                          {"r", 15, "R"},
                          {"t", 17, "T"},
                          {"1", 18, "1"},
                          {"2", 19, "2"},
                          {"3", 20, "3"},
                          {"4", 21, "4"},
                          {"5", 23, "5"},
                          {"6", 22, "6"},
                          {"7", 26, "7"},
                          {"8", 28, "8"},
                          {"9", 25, "9"},
                          {"o", 31, "O"},
                          {"u", 32, "U"},
                          {"i", 34, "I"},
                          {"p", 35, "P"},
                          {"l", 37, "L"},
                          {"j", 38, "J"},
                          {"k", 40, "K"},
                          {"n", 45, "N"},
                          {"m", 46, "M"},
                          {"tab", 48, "Tab"},
                          {"space", 49, "Space"},
                          {"escape", 53, "Escape"},
                          {"Esc", 53, "Escape"},
                          {"comma", 43, ","},
                          {",", 43, ","}}) {
        const Shortcut want{c.keyCode, c.label, {}};
        EXPECT_EQ(ShortcutNotation::parse(c.name), want) << c.name;
        const Shortcut modified{c.keyCode, c.label, ShortcutModifiers(15)};
        EXPECT_EQ(ShortcutNotation::parse(modified.displayString()), modified) << c.name;
    }
}

TEST(ShortcutNotation, TakesWhatPeopleType) {
    struct Case {
        const char* text;
        std::int64_t modifiers;
        const char* label;
    };
    for (const Case& c : {Case{"ctrl+cmd+s", 9, "S"},
                          {"⌃⌘S", 9, "S"},
                          {"Shift+COMMAND+4", 12, "4"},
                          {"alt-control-space", 3, "Space"},
                          {" opt + ⇧+, ", 6, ","},
                          {"cmd shift 4", 12, "4"},
                          {"⌃ ⌘\u00A0s", 9, "S"},
                          {"⌘⇧+esc", 12, "Escape"},
                          {"cmd+⌘+s", 8, "S"},
                          {"OPTION+S", 2, "S"}}) {
        const auto shortcut = ShortcutNotation::parse(c.text);
        ASSERT_TRUE(shortcut) << c.text << ": " << shortcut.error().description();
        EXPECT_EQ(shortcut->modifiers.rawValue, c.modifiers) << c.text;
        EXPECT_EQ(shortcut->keyLabel, c.label) << c.text;
    }
}

TEST(ShortcutNotation, RefusesTheRest) {
    struct Case {
        const char* text;
        Error want;
    };
    for (const Case& c : {Case{"", Error::missingKey()},
                          {" \t", Error::missingKey()},
                          {"ctrl+cmd", Error::missingKey()},
                          {"⌘", Error::missingKey()},
                          {"ctrl++s", Error::missingKey()},
                          {"+s", Error::missingKey()},
                          {"cmd+s+", Error::missingKey()},
                          {"cmd--", Error::missingKey()},
                          {"cmd+Y", Error::unknownKey("y")},
                          {"cmd+0", Error::unknownKey("0")},
                          {"⌘s⌃", Error::unknownKey("s⌃")},
                          {"cmd+\xFF", Error::unknownKey("\uFFFD")},
                          {"hyper+s", Error::unknownModifier("hyper")},
                          {"s+cmd+a", Error::unknownModifier("s")}})
        EXPECT_EQ(ShortcutNotation::parse(c.text).error(), c.want) << c.text;
    EXPECT_EQ(Error::unknownModifier("hyper").description(),
              "unknown modifier \"hyper\"; the modifiers are control ctrl ⌃ option opt alt ⌥ shift "
              "⇧ command cmd ⌘");
    EXPECT_EQ(Error::unknownKey("y").description(),
              "unknown key \"y\"; the keys are a b c d e f g h i j k l m n o p q r s t u v w x z "
              "1 2 3 4 5 6 7 8 9 space tab escape esc comma ,");
}

}  // namespace
}  // namespace pictal
