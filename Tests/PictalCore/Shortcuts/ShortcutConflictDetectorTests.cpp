#include "PictalCore/Shortcuts/ShortcutConflictDetector.h"
#include "Tests/Support/ShortcutPrinting.h"

#include <map>
#include <tuple>

#include <gtest/gtest.h>

namespace pictal {
namespace {

using enum ShortcutConflictSeverity;
using enum ShortcutConflictKind;

/// What Command with a key does in most programs, and every other reserved shortcut.
constexpr std::pair<std::uint16_t, const char*> menuCommands[] = {
    {0, "Select All"}, {8, "Copy"},   {3, "Find"},   {4, "Hide"}, {46, "Minimize"},
    {45, "New"},       {31, "Open"},  {35, "Print"}, {1, "Save"}, {17, "New Tab"},
    {9, "Paste"},      {13, "Close"}, {7, "Cut"},    {6, "Undo"}};
constexpr std::tuple<std::uint16_t, std::int64_t, const char*> otherReserved[] = {
    {20, 12, "macOS uses Shift+Command+3 for full-screen screenshots."},
    {21, 12, "macOS uses Shift+Command+4 for selection screenshots."},
    {23, 12, "macOS uses Shift+Command+5 for Screenshot controls."},
    {49, 8, "macOS uses Command+Space for Spotlight."},
    {49, 9, "macOS uses Control+Command+Space for the Character Viewer."},
    {48, 8, "macOS uses Command+Tab for app switching."},
    {43, 8, "macOS uses Command+, for app settings."},
    {12, 8, "macOS uses Command+Q to quit apps."},
    {12, 9, "macOS uses Control+Command+Q to lock the screen."},
    {3, 9, "macOS uses Control+Command+F to enter or leave full screen."},
    {2, 9, "macOS uses Control+Command+D to show a word definition."},
    {18, 8, "Finder uses Command+1 for Icon view."},
    {19, 8, "Finder uses Command+2 for List view."},
    {20, 8, "Finder uses Command+3 for Column view."},
    {21, 8, "Finder uses Command+4 for Gallery view."},
    {0, 9, "Finder uses Control+Command+A to create an alias."},
    {45, 9, "Finder uses Control+Command+N to create a folder from selected items."},
    {17, 9, "Finder uses Control+Command+T to add an item to the sidebar."},
    {8, 12,
     "Finder uses Shift+Command+C to open Computer; Microsoft Office uses it to copy formatting."},
    {2, 12, "Finder uses Shift+Command+D to open the Desktop folder."},
    {3, 12, "Finder uses Shift+Command+F to open Recents."},
    {5, 12, "Finder uses Shift+Command+G to open Go to Folder."},
    {4, 12, "Finder uses Shift+Command+H to open the Home folder."},
    {34, 12, "Finder uses Shift+Command+I to open iCloud Drive."},
    {40, 12, "Finder uses Shift+Command+K to open Network."},
    {31, 12, "Finder uses Shift+Command+O to open Documents."},
    {35, 12, "Finder uses Shift+Command+P to toggle the Preview pane."},
    {32, 12, "Finder uses Shift+Command+U to open Utilities."},
    {0, 12,
     "Chrome uses Shift+Command+A to search open tabs; Codex may also assign this shortcut."},
    {11, 12, "Chrome uses Shift+Command+B to toggle the bookmarks bar."},
    {38, 12, "Chrome uses Shift+Command+J to open Downloads."},
    {46, 12, "Chrome uses Shift+Command+M for profile controls."},
    {45, 12,
     "Chrome uses Shift+Command+N for a new Incognito window; Finder uses it for a new folder."},
    {15, 12,
     "Chrome uses Shift+Command+R to reload without cached content; Finder uses it for AirDrop."},
    {17, 12, "Chrome uses Shift+Command+T to reopen a closed tab; Finder uses it for the tab bar."},
    {13, 12, "Chrome uses Shift+Command+W to close the current window."},
    {1, 12, "Many Mac apps use Shift+Command+S for Save As."},
    {6, 12, "Many Mac apps use Shift+Command+Z for Redo."},
    {9, 9, "Microsoft Office uses Control+Command+V for Paste Special."},
};

Shortcut shortcut(std::uint16_t keyCode, std::int64_t modifiers, const char* label = "?") {
    return {keyCode, label, ShortcutModifiers(modifiers)};
}

TEST(ShortcutConflictDetector, ReservesWhatIsListedAndNothingElse) {
    std::map<std::pair<std::uint16_t, std::int64_t>, std::string> messages;
    for (const auto& [keyCode, command] : menuCommands)
        messages[{keyCode, 8}] =
            "Mac apps commonly use this Command-key shortcut for " + std::string(command) + ".";
    for (const auto& [keyCode, modifiers, message] : otherReserved)
        messages[{keyCode, modifiers}] = message;
    ASSERT_EQ(messages.size(), 53U);
    for (std::uint16_t keyCode = 0; keyCode < 256; ++keyCode)
        for (std::int64_t modifiers = 2; modifiers < 32; ++modifiers) {
            ShortcutConflictReport want{shortcut(keyCode, modifiers), {}};
            if (const auto row = messages.find({keyCode, modifiers}); row != messages.end())
                want.conflicts = {{blocking, reserved, row->second}};
            EXPECT_EQ(ShortcutConflictDetector::report(want.shortcut, {}), want)
                << keyCode << " with " << modifiers << ": "
                << (want.conflicts.empty() ? "nothing" : want.conflicts[0].message);
        }
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

TEST(ShortcutConflictDetector, ListsDuplicatesThenReservedThenModifiers) {
    const auto kinds = [](const Shortcut& shortcut) {
        std::vector<ShortcutConflictKind> result;
        for (const auto& conflict :
             ShortcutConflictDetector::report(shortcut, {{"window", shortcut}}).conflicts)
            result.push_back(conflict.kind);
        return result;
    };
    EXPECT_EQ(kinds(shortcut(12, 8)), (std::vector{duplicate, reserved}));
    EXPECT_EQ(kinds(shortcut(12, 0)), (std::vector{duplicate, missingModifier}));
}

TEST(ShortcutConflict, SurvivesJSON) {
    const ShortcutConflict conflict{warning, controlOnly, "Hm."};
    const std::string text = R"({"severity":"warning","kind":"controlOnly","message":"Hm."})";
    EXPECT_EQ(encodeJSON(conflict), text);
    EXPECT_EQ(decodeJSON<ShortcutConflict>(text), conflict);
    EXPECT_EQ(decodeJSON<ShortcutConflictSeverity>("\"fatal\"").error().kind,
              DecodingError::Kind::dataCorrupted);
    EXPECT_EQ(
        decodeJSON<ShortcutConflict>(R"({"severity":"warning","kind":"reserved"})").error().kind,
        DecodingError::Kind::keyNotFound);
}

}  // namespace
}  // namespace pictal
