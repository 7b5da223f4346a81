#include "PictalCore/Shortcuts/Shortcut.h"
#include "Tests/Support/ShortcutPrinting.h"

#include <limits>
#include <unordered_set>

#include <gtest/gtest.h>

namespace pictal {

TEST(Shortcut, DisplaysModifiersInFixedOrderBeforeTheLabel) {
    const auto shown = [](std::int64_t modifiers, const char* label) {
        return Shortcut{1, label, ShortcutModifiers(modifiers)}.displayString();
    };
    EXPECT_EQ(shown(9, "S"), "⌃⌘S");
    EXPECT_EQ(shown(14, "4"), "⌥⇧⌘4");
    EXPECT_EQ(shown(16, "A"), "A") << "an unknown bit";
    EXPECT_EQ(shown(-1, ""), "⌃⌥⇧⌘");
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
    EXPECT_NE(composed, (Shortcut{1, "\u00E9", ShortcutModifiers(25)}));
}

TEST(Shortcut, SurvivesJSON) {
    EXPECT_EQ(encodeJSON(Shortcut::defaultRegionCapture()),
              R"({"keyCode":1,"keyLabel":"S","modifiers":9})");
    const ShortcutModifiers lowest(std::numeric_limits<std::int64_t>::min());
    const Shortcut odd{65535, "\"\\\n漢", lowest};
    EXPECT_EQ(decodeJSON<Shortcut>(encodeJSON(odd).value()), odd);
    EXPECT_EQ(decodeJSON<Shortcut>(R"({"modifiers":9.0,"x":[],"keyLabel":"S","keyCode":1})"),
              Shortcut::defaultRegionCapture());
}

TEST(Shortcut, RefusesOtherJSON) {
    const auto message = [](const char* text) {
        return decodeJSON<ShortcutAssignment>(text).error().description();
    };
    for (const char* text : {R"({"a":{"keyCode":65536,"keyLabel":"S","modifiers":9}})",
                             R"({"a":{"keyCode":-1,"keyLabel":"S","modifiers":9}})"})
        EXPECT_EQ(message(text), "a.keyCode: The number is not in 0...65535.");
    EXPECT_EQ(message(R"({"a":{"keyCode":1,"keyLabel":"S","modifiers":"9"}})"),
              "a.modifiers: Expected a whole number but found a string.");
}

}  // namespace pictal
