#include "PictalCore/Shortcuts/detail/ReservedShortcuts.h"

#include "PictalCore/Shortcuts/KeyCode.h"

#include <string_view>

namespace pictal::detail {

namespace {

struct ReservedShortcut {
    std::uint16_t keyCode;
    ShortcutModifiers modifiers;
    std::string_view message;
};

constexpr ShortcutModifiers command = ShortcutModifiers::command;
constexpr ShortcutModifiers controlCommand = command | ShortcutModifiers::control;
constexpr ShortcutModifiers shiftCommand = command | ShortcutModifiers::shift;

constexpr ReservedShortcut reservedShortcuts[] = {
    {KeyCode::digit3, shiftCommand, "macOS uses Shift+Command+3 for full-screen screenshots."},
    {KeyCode::digit4, shiftCommand, "macOS uses Shift+Command+4 for selection screenshots."},
    {KeyCode::digit5, shiftCommand, "macOS uses Shift+Command+5 for Screenshot controls."},
    {KeyCode::space, command, "macOS uses Command+Space for Spotlight."},
    {KeyCode::space, controlCommand, "macOS uses Control+Command+Space for the Character Viewer."},
    {KeyCode::tab, command, "macOS uses Command+Tab for app switching."},
    {KeyCode::comma, command, "macOS uses Command+, for app settings."},
    {KeyCode::q, command, "macOS uses Command+Q to quit apps."},
    {KeyCode::q, controlCommand, "macOS uses Control+Command+Q to lock the screen."},
    {KeyCode::f, controlCommand, "macOS uses Control+Command+F to enter or leave full screen."},
    {KeyCode::d, controlCommand, "macOS uses Control+Command+D to show a word definition."},
    {KeyCode::digit1, command, "Finder uses Command+1 for Icon view."},
    {KeyCode::digit2, command, "Finder uses Command+2 for List view."},
    {KeyCode::digit3, command, "Finder uses Command+3 for Column view."},
    {KeyCode::digit4, command, "Finder uses Command+4 for Gallery view."},
    {KeyCode::a, controlCommand, "Finder uses Control+Command+A to create an alias."},
    {KeyCode::n, controlCommand,
     "Finder uses Control+Command+N to create a folder from selected items."},
    {KeyCode::t, controlCommand, "Finder uses Control+Command+T to add an item to the sidebar."},
    {KeyCode::c, shiftCommand,
     "Finder uses Shift+Command+C to open Computer; Microsoft Office uses it to copy formatting."},
    {KeyCode::d, shiftCommand, "Finder uses Shift+Command+D to open the Desktop folder."},
    {KeyCode::f, shiftCommand, "Finder uses Shift+Command+F to open Recents."},
    {KeyCode::g, shiftCommand, "Finder uses Shift+Command+G to open Go to Folder."},
    {KeyCode::h, shiftCommand, "Finder uses Shift+Command+H to open the Home folder."},
    {KeyCode::i, shiftCommand, "Finder uses Shift+Command+I to open iCloud Drive."},
    {KeyCode::k, shiftCommand, "Finder uses Shift+Command+K to open Network."},
    {KeyCode::o, shiftCommand, "Finder uses Shift+Command+O to open Documents."},
    {KeyCode::p, shiftCommand, "Finder uses Shift+Command+P to toggle the Preview pane."},
    {KeyCode::u, shiftCommand, "Finder uses Shift+Command+U to open Utilities."},
    {KeyCode::a, shiftCommand,
     "Chrome uses Shift+Command+A to search open tabs; Codex may also assign this shortcut."},
    {KeyCode::b, shiftCommand, "Chrome uses Shift+Command+B to toggle the bookmarks bar."},
    {KeyCode::j, shiftCommand, "Chrome uses Shift+Command+J to open Downloads."},
    {KeyCode::m, shiftCommand, "Chrome uses Shift+Command+M for profile controls."},
    {KeyCode::n, shiftCommand,
     "Chrome uses Shift+Command+N for a new Incognito window; Finder uses it for a new folder."},
    {KeyCode::r, shiftCommand,
     "Chrome uses Shift+Command+R to reload without cached content; Finder uses it for AirDrop."},
    {KeyCode::t, shiftCommand,
     "Chrome uses Shift+Command+T to reopen a closed tab; Finder uses it for the tab bar."},
    {KeyCode::w, shiftCommand, "Chrome uses Shift+Command+W to close the current window."},
    {KeyCode::s, shiftCommand, "Many Mac apps use Shift+Command+S for Save As."},
    {KeyCode::z, shiftCommand, "Many Mac apps use Shift+Command+Z for Redo."},
    {KeyCode::v, controlCommand, "Microsoft Office uses Control+Command+V for Paste Special."},
};

/// The menu commands that nearly every application has under Command and a letter.
struct MenuCommand {
    std::uint16_t keyCode;
    std::string_view name;
};

constexpr MenuCommand menuCommands[] = {
    {KeyCode::a, "Select All"}, {KeyCode::c, "Copy"},     {KeyCode::f, "Find"},
    {KeyCode::h, "Hide"},       {KeyCode::m, "Minimize"}, {KeyCode::n, "New"},
    {KeyCode::o, "Open"},       {KeyCode::p, "Print"},    {KeyCode::s, "Save"},
    {KeyCode::t, "New Tab"},    {KeyCode::v, "Paste"},    {KeyCode::w, "Close"},
    {KeyCode::x, "Cut"},        {KeyCode::z, "Undo"},
};

}  // namespace

std::optional<std::string> reservedShortcutMessage(std::uint16_t keyCode,
                                                   ShortcutModifiers modifiers) {
    for (const ReservedShortcut& row : reservedShortcuts)
        if (row.keyCode == keyCode && row.modifiers == modifiers) return std::string(row.message);
    if (modifiers != command) return std::nullopt;
    for (const MenuCommand& row : menuCommands)
        if (row.keyCode == keyCode)
            return "Mac apps commonly use this Command-key shortcut for " + std::string(row.name) +
                   ".";
    return std::nullopt;
}

}  // namespace pictal::detail
