#include "PictalCore/Shortcuts/Shortcut.h"
#include "Tests/Support/ShortcutPrinting.h"

#include <limits>
#include <unordered_set>

#include <gtest/gtest.h>

namespace pictal {
namespace {

using enum DecodingError::Kind;

TEST(Shortcut, DisplaysModifiersInFixedOrderBeforeTheLabel) {
    struct Case {
        const char* name;
        std::int64_t modifiers;
        const char *label, *want;
    };
    for (const Case& c :
         {Case{"control and command", 9, "S", "⌃⌘S"}, Case{"three modifiers", 14, "4", "⌥⇧⌘4"},
          Case{"none", 0, "A", "A"}, Case{"all, no label", 15, "", "⌃⌥⇧⌘"},
          Case{"unknown bits only", 16, "A", "A"}, Case{"all bits", -1, "", "⌃⌥⇧⌘"}})
        EXPECT_EQ((Shortcut{1, c.label, ShortcutModifiers(c.modifiers)}.displayString()), c.want)
            << c.name;
    const ShortcutModifiers listed{ShortcutModifiers::command, ShortcutModifiers::control};
    EXPECT_EQ(listed.rawValue, 9);
    EXPECT_EQ(listed.displaySymbols(), (std::vector<std::string>{"⌃", "⌘"}));
}

TEST(Shortcut, EqualityAndHashSeeLabelsAsCharacters) {
    const Shortcut composed{1, "\u00E9", ShortcutModifiers(9)};
    const Shortcut decomposed{1, "e\u0301", ShortcutModifiers(9)};
    EXPECT_EQ(composed, decomposed);
    const std::unordered_set<Shortcut> different{
        composed,
        decomposed,
        {1, "\u00C9", ShortcutModifiers(9)},
        {2, "\u00E9", ShortcutModifiers(9)},
        {1, "\u00E9", ShortcutModifiers(25)},
    };
    EXPECT_EQ(different.size(), 4U);
    EXPECT_NE((Shortcut{1, "S", ShortcutModifiers(9)}), (Shortcut{1, "s", ShortcutModifiers(9)}));
}

TEST(Shortcut, SurvivesJSON) {
    EXPECT_EQ(encodeJSON(Shortcut::defaultRegionCapture()),
              R"({"keyCode":1,"keyLabel":"S","modifiers":9})");
    for (const Shortcut& shortcut :
         {Shortcut{}, Shortcut{65535, "\"\\\n漢", ShortcutModifiers(16)},
          Shortcut{0, "", ShortcutModifiers(std::numeric_limits<std::int64_t>::min())}}) {
        const auto text = encodeJSON(shortcut);
        ASSERT_TRUE(text);
        EXPECT_EQ(decodeJSON<Shortcut>(*text), shortcut) << *text;
    }
    EXPECT_EQ(encodeJSON(ShortcutModifiers(16)), "16");
    EXPECT_EQ(decodeJSON<Shortcut>(R"({"modifiers":9.0,"x":[],"keyLabel":"S","keyCode":1})"),
              Shortcut::defaultRegionCapture());
}

TEST(Shortcut, RefusesOtherJSON) {
    struct Case {
        const char* text;
        DecodingError::Kind kind;
        const char* message;
    };
    for (const Case& c :
         {Case{R"({"keyCode":70000,"keyLabel":"S","modifiers":9})", dataCorrupted,
               "keyCode: The number is not in 0...65535."},
          Case{R"({"keyCode":-1,"keyLabel":"S","modifiers":9})", dataCorrupted,
               "keyCode: The number is not in 0...65535."},
          Case{R"({"keyCode":1,"modifiers":9})", keyNotFound, "The key \"keyLabel\" is missing."},
          Case{R"({"keyCode":1,"keyLabel":null,"modifiers":9})", valueNotFound,
               "keyLabel: Expected a value but found null."},
          Case{R"({"keyCode":1,"keyLabel":"S","modifiers":"9"})", typeMismatch,
               "modifiers: Expected a whole number but found a string."},
          Case{"[1,\"S\",9]", typeMismatch, "Expected an object but found an array."}}) {
        const auto result = decodeJSON<Shortcut>(c.text);
        ASSERT_FALSE(result) << c.text;
        EXPECT_EQ(result.error().kind, c.kind) << c.text;
        EXPECT_EQ(result.error().message(), c.message);
    }
    EXPECT_EQ(decodeJSON<ShortcutModifiers>("9.5").error().kind, typeMismatch);
    EXPECT_EQ(decodeJSON<ShortcutAssignment>(R"({"a":{"keyCode":1}})").error().message(),
              "a: The key \"keyLabel\" is missing.");
}

}  // namespace
}  // namespace pictal
