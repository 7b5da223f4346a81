#include "PictalCore/Shortcuts/ShortcutConflictDetector.h"
#include "PictalCore/Shortcuts/ShortcutNotation.h"
#include "Tests/Support/ShortcutPrinting.h"

#include <regex>

#include <gtest/gtest.h>

namespace pictal {
namespace {

using enum ShortcutConflictSeverity;
using enum ShortcutConflictKind;

Shortcut shortcut(std::uint16_t keyCode, std::int64_t modifiers, const char* label = "?") {
    return {keyCode, label, ShortcutModifiers(modifiers)};
}

/// FNV-1a, 64 bits.
std::uint64_t fingerprint(std::string_view text) {
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const char c : text)
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3;
    return hash;
}

TEST(ShortcutConflictDetector, ReservesWhatIsListedAndNothingElse) {
    int count = 0;
    std::string all;
    for (std::uint16_t keyCode = 0; keyCode < 256; ++keyCode)
        for (std::int64_t modifiers = 2; modifiers < 32; ++modifiers) {
            const Shortcut candidate = shortcut(keyCode, modifiers);
            const auto [shown, conflicts] = ShortcutConflictDetector::report(candidate, {});
            EXPECT_EQ(shown, candidate);
            if (conflicts.empty()) continue;
            const std::string message = conflicts[0].message;
            EXPECT_EQ(conflicts, (std::vector<ShortcutConflict>{{blocking, reserved, message}}));
            all += std::to_string(keyCode) + " " + std::to_string(modifiers) + " " + message + "\n";
            ++count;
            // Most say themselves which keys they are about.
            std::smatch keys;
            if (!std::regex_search(message, keys, std::regex(R"([A-Za-z+]*Command\+\S+)"))) {
                EXPECT_EQ(modifiers, 8) << message;
                continue;
            }
            const auto named = ShortcutNotation::parse(keys.str()).value();
            EXPECT_EQ(named.keyCode, keyCode) << message;
            EXPECT_EQ(named.modifiers.rawValue, modifiers) << message;
        }
    EXPECT_EQ(count, 53);
    // Of the list of what is reserved, in the same order and form, by another program.
    EXPECT_EQ(fingerprint(all), 0xcb88ae7cf7ff9a43) << all;
}

TEST(ShortcutConflictDetector, JudgesModifiers) {
    const auto check = [](std::int64_t modifiers, bool isUsable,
                          const std::vector<ShortcutConflict>& want) {
        const auto report = ShortcutConflictDetector::report(shortcut(0, modifiers), {});
        EXPECT_EQ(report.conflicts, want) << modifiers;
        EXPECT_EQ(report.isUsable(), isUsable) << modifiers;
    };
    check(0, false,
          {{blocking, missingModifier, "Global shortcuts must include at least one modifier."}});
    check(
        1, true,
        {{warning, controlOnly,
          "Control-only shortcuts often conflict with macOS focus and accessibility shortcuts."}});
    for (const std::int64_t usual : {2, 4, 16, 17})
        check(usual, true, {});
}

TEST(ShortcutConflictDetector, FindsDuplicatesOfOtherActions) {
    const Shortcut free = Shortcut::defaultRegionCapture();
    const ShortcutAssignment assigned{
        {"caf\u00E9", free}, {"region", free}, {"window", shortcut(1, 9, "s")}};
    const auto check = [&](std::optional<std::string_view> current,
                           const std::vector<std::string>& actions) {
        ShortcutConflictReport want{free, {}};
        for (const std::string& action : actions)
            want.conflicts.push_back({blocking, duplicate, "Already used by " + action + "."});
        EXPECT_EQ(ShortcutConflictDetector::report(free, assigned, current), want)
            << current.value_or("no action");
    };
    check(std::nullopt, {"caf\u00E9", "region"});
    check("window", {"caf\u00E9", "region"});
    check("region", {"caf\u00E9"});
    check("cafe\u0301", {"region"});
}

TEST(ShortcutConflictDetector, ListsDuplicatesFirst) {
    const auto kinds = [](const Shortcut& shortcut) {
        const auto all = ShortcutConflictDetector::report(shortcut, {{"a", shortcut}}).conflicts;
        return std::pair(all.at(0).kind, all.at(1).kind);
    };
    EXPECT_EQ(kinds(shortcut(12, 8)), std::pair(duplicate, reserved));
    EXPECT_EQ(kinds(shortcut(12, 0)), std::pair(duplicate, missingModifier));
}

TEST(ShortcutConflict, SurvivesJSON) {
    const ShortcutConflict conflict{warning, controlOnly, "Hm."};
    const std::string text = R"({"severity":"warning","kind":"controlOnly","message":"Hm."})";
    EXPECT_EQ(encodeJSON(conflict), text);
    EXPECT_EQ(decodeJSON<ShortcutConflict>(text), conflict);
}

}  // namespace
}  // namespace pictal
