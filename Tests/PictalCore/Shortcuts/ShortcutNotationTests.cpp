#include "PictalCore/Shortcuts/ShortcutNotation.h"
#include "Tests/Support/ShortcutPrinting.h"

#include <sstream>

#include <gtest/gtest.h>

namespace pictal {

using Error = ShortcutNotationError;

TEST(ShortcutNotation, KnowsEveryKey) {
    std::istringstream keys(
        "a 0 A  s 1 S  d 2 D  f 3 F  h 4 H  g 5 G  z 6 Z  x 7 X  c 8 C  v 9 V  b 11 B  "
        "q 12 Q  w 13 W  e 14 E  r 15 R  t 17 T  1 18 1  2 19 2  3 20 3  4 21 4  5 23 5  "
        "6 22 6  7 26 7  8 28 8  9 25 9  o 31 O  u 32 U  i 34 I  p 35 P  l 37 L  j 38 J  "
        "k 40 K  n 45 N  m 46 M  tab 48 Tab  space 49 Space  escape 53 Escape  "
        "Esc 53 Escape  comma 43 ,  , 43 ,");
    int count = 0;
    std::string name;
    for (Shortcut key; keys >> name >> key.keyCode >> key.keyLabel; ++count)
        for (const std::int64_t modifiers : {0, 15}) {
            key.modifiers = ShortcutModifiers(modifiers);
            const std::string shown = key.displayString();
            EXPECT_EQ(ShortcutNotation::parse(modifiers ? shown : name), key) << name;
        }
    EXPECT_EQ(count, 40);
}

TEST(ShortcutNotation, TakesWhatPeopleType) {
    const auto check = [](const char* text, const char* want) {
        const auto shortcut = ShortcutNotation::parse(text);
        ASSERT_TRUE(shortcut) << text << ": " << shortcut.error().description();
        EXPECT_EQ(shortcut->displayString(), want) << text;
    };
    check("ctrl+cmd+s", "⌃⌘S");
    check("Shift+COMMAND+4", "⇧⌘4");
    check("alt-control-space", "⌃⌥Space");
    check(" opt + ⇧+, ", "⌥⇧,");
    check("⌃ ⌘\u00A0s", "⌃⌘S");
    check("⌘⇧+esc", "⇧⌘Escape");
    check("cmd+⌘+s", "⌘S");
    check("OPTION s", "⌥S");
}

TEST(ShortcutNotation, RefusesTheRest) {
    const auto check = [](const char* text, const Error& want) {
        EXPECT_EQ(ShortcutNotation::parse(text).error(), want) << text;
    };
    for (const char* none : {"", " \t", "ctrl+cmd", "⌘", "ctrl++s", "+s", "cmd+s+", "cmd--"})
        check(none, Error::missingKey());
    check("cmd+Y", Error::unknownKey("y"));
    check("cmd+0", Error::unknownKey("0"));
    check("⌘s⌃", Error::unknownKey("s⌃"));
    check("cmd+\xFF", Error::unknownKey("\uFFFD"));
    check("hyper+s", Error::unknownModifier("hyper"));
    check("s+cmd+a", Error::unknownModifier("s"));
    EXPECT_EQ(Error::unknownModifier("hyper").description(),
              "unknown modifier \"hyper\"; the modifiers are control ctrl ⌃ option opt alt ⌥ shift "
              "⇧ command cmd ⌘");
    EXPECT_EQ(Error::unknownKey("y").description(),
              "unknown key \"y\"; the keys are a b c d e f g h i j k l m n o p q r s t u v w x z "
              "1 2 3 4 5 6 7 8 9 space tab escape esc comma ,");
}

}  // namespace pictal
