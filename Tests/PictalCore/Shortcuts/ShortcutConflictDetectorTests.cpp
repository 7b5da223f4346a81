#include "PictalCore/Shortcuts/ShortcutConflictDetector.h"
#include "Tests/Support/ShortcutPrinting.h"

#include <set>

#include <gtest/gtest.h>

namespace pictal {
namespace {

using enum ShortcutConflictSeverity;
using enum ShortcutConflictKind;

struct ReservedRow {
    std::uint16_t keyCode;
    std::int64_t modifiers;
    const char* message;
};

constexpr ReservedRow reservedRows[] = {
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
    {0, 8, "Mac apps commonly use this Command-key shortcut for Select All."},
    {8, 8, "Mac apps commonly use this Command-key shortcut for Copy."},
    {3, 8, "Mac apps commonly use this Command-key shortcut for Find."},
    {4, 8, "Mac apps commonly use this Command-key shortcut for Hide."},
    {46, 8, "Mac apps commonly use this Command-key shortcut for Minimize."},
    {45, 8, "Mac apps commonly use this Command-key shortcut for New."},
    {31, 8, "Mac apps commonly use this Command-key shortcut for Open."},
    {35, 8, "Mac apps commonly use this Command-key shortcut for Print."},
    {1, 8, "Mac apps commonly use this Command-key shortcut for Save."},
    {17, 8, "Mac apps commonly use this Command-key shortcut for New Tab."},
    {9, 8, "Mac apps commonly use this Command-key shortcut for Paste."},
    {13, 8, "Mac apps commonly use this Command-key shortcut for Close."},
    {7, 8, "Mac apps commonly use this Command-key shortcut for Cut."},
    {6, 8, "Mac apps commonly use this Command-key shortcut for Undo."},
    {9, 9, "Microsoft Office uses Control+Command+V for Paste Special."},
};

Shortcut shortcut(std::uint16_t keyCode, std::int64_t modifiers, const char* label = "?") {
    return {keyCode, label, ShortcutModifiers(modifiers)};
}

TEST(ShortcutConflictDetector, KnowsEveryReservedShortcut) {
    for (const ReservedRow& row : reservedRows) {
        const Shortcut candidate = shortcut(row.keyCode, row.modifiers);
        const auto report = ShortcutConflictDetector::report(candidate, {});
        EXPECT_EQ(report, (ShortcutConflictReport{candidate, {{blocking, reserved, row.message}}}))
            << row.message;
        EXPECT_FALSE(report.isUsable());
    }
}

TEST(ShortcutConflictDetector, ReservesNothingElse) {
    std::set<std::pair<int, std::int64_t>> reservedPairs;
    for (const ReservedRow& row : reservedRows)
        reservedPairs.emplace(row.keyCode, row.modifiers);
    ASSERT_EQ(reservedPairs.size(), 53U);
    for (std::uint16_t keyCode = 0; keyCode < 256; ++keyCode)
        for (std::int64_t modifiers = 2; modifiers < 32; ++modifiers) {
            const auto report = ShortcutConflictDetector::report(shortcut(keyCode, modifiers), {});
            EXPECT_EQ(report.conflicts.empty(), !reservedPairs.contains({keyCode, modifiers}))
                << keyCode << " with " << modifiers;
        }
}

TEST(ShortcutConflictDetector, JudgesModifiers) {
    const ShortcutConflict none{blocking, missingModifier,
                                "Global shortcuts must include at least one modifier."};
    const ShortcutConflict control{
        warning, controlOnly,
        "Control-only shortcuts often conflict with macOS focus and accessibility shortcuts."};
    struct Case {
        std::int64_t modifiers;
        std::vector<ShortcutConflict> want;
        bool isUsable;
    };
    for (const Case& c : {Case{0, {none}, false}, Case{1, {control}, true}, Case{2, {}, true},
                          Case{4, {}, true}, Case{16, {}, true}, Case{17, {}, true}}) {
        const auto report = ShortcutConflictDetector::report(shortcut(0, c.modifiers), {});
        EXPECT_EQ(report.conflicts, c.want) << c.modifiers;
        EXPECT_EQ(report.isUsable(), c.isUsable) << c.modifiers;
    }
}

TEST(ShortcutConflictDetector, FindsDuplicatesOfOtherActions) {
    const Shortcut free = Shortcut::defaultRegionCapture();
    const ShortcutAssignment assigned{
        {"caf\u00E9", free}, {"region", free}, {"window", shortcut(1, 9, "s")}};
    struct Case {
        const char* name;
        std::optional<std::string_view> current;
        std::vector<std::string> want;
    };
    for (const Case& c :
         {Case{
              "no action", std::nullopt, {"Already used by caf\u00E9.", "Already used by region."}},
          Case{"another action",
               "window",
               {"Already used by caf\u00E9.", "Already used by region."}},
          Case{"its own action", "region", {"Already used by caf\u00E9."}},
          Case{"its own action, decomposed", "cafe\u0301", {"Already used by region."}}}) {
        std::vector<std::string> messages;
        for (const auto& conflict :
             ShortcutConflictDetector::report(free, assigned, c.current).conflicts) {
            EXPECT_EQ(conflict.severity, blocking);
            EXPECT_EQ(conflict.kind, duplicate);
            messages.push_back(conflict.message);
        }
        EXPECT_EQ(messages, c.want) << c.name;
    }
}

TEST(ShortcutConflictDetector, ListsDuplicatesThenReservedThenModifiers) {
    const Shortcut quit = shortcut(12, 8, "Q");
    EXPECT_EQ(ShortcutConflictDetector::report(quit, {{"window", quit}}).conflicts,
              (std::vector<ShortcutConflict>{
                  {blocking, duplicate, "Already used by window."},
                  {blocking, reserved, "macOS uses Command+Q to quit apps."}}));
    const Shortcut bare = shortcut(12, 0, "Q");
    const auto conflicts = ShortcutConflictDetector::report(bare, {{"window", bare}}).conflicts;
    ASSERT_EQ(conflicts.size(), 2U);
    EXPECT_EQ(conflicts[1].kind, missingModifier);
}

TEST(ShortcutConflict, SurvivesJSON) {
    const ShortcutConflict conflict{warning, controlOnly, "Hm."};
    EXPECT_EQ(encodeJSON(conflict),
              R"({"severity":"warning","kind":"controlOnly","message":"Hm."})");
    EXPECT_EQ(decodeJSON<ShortcutConflict>(*encodeJSON(conflict)), conflict);
    EXPECT_EQ(decodeJSON<ShortcutConflictKind>("\"missingModifier\""), missingModifier);
    EXPECT_EQ(decodeJSON<ShortcutConflictSeverity>("\"fatal\"").error().kind,
              DecodingError::Kind::dataCorrupted);
    EXPECT_EQ(
        decodeJSON<ShortcutConflict>(R"({"severity":"warning","kind":"reserved"})").error().kind,
        DecodingError::Kind::keyNotFound);
}

}  // namespace
}  // namespace pictal
