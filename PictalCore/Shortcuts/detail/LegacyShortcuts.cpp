#include "PictalCore/Shortcuts/detail/LegacyShortcuts.h"

#include "PictalCore/Shortcuts/KeyCode.h"
#include "PictalCore/Shortcuts/ShortcutStore.h"

#include <vector>

namespace pictal::detail {

namespace {

/// Versions 2 and 3 had the same keys under different modifiers.
ShortcutAssignment captureDefaults(ShortcutModifiers modifiers) {
    return {{"region", {KeyCode::a, "A", modifiers}},
            {"window", {KeyCode::w, "W", modifiers}},
            {"fullDisplay", {KeyCode::f, "F", modifiers}},
            {"colorPicker", {KeyCode::c, "C", modifiers}}};
}

ShortcutAssignment firstDefaults() {
    constexpr ShortcutModifiers modifiers{ShortcutModifiers::option, ShortcutModifiers::shift,
                                          ShortcutModifiers::command};
    return {{"region", {KeyCode::digit4, "4", modifiers}},
            {"window", {KeyCode::digit5, "5", modifiers}},
            {"fullDisplay", {KeyCode::digit3, "3", modifiers}},
            {"scrolling", {KeyCode::s, "S", modifiers}},
            {"colorPicker", {KeyCode::c, "C", modifiers}},
            {"openMainWindow", {KeyCode::o, "O", modifiers}},
            {"openRecentCapture", {KeyCode::r, "R", modifiers}}};
}

}  // namespace

std::span<const LegacyShortcuts> legacyShortcuts() {
    static const std::vector<LegacyShortcuts> versions{
        {"com.orvald.vistrell.shortcuts.v3",
         captureDefaults({ShortcutModifiers::shift, ShortcutModifiers::command})},
        {"com.orvald.vistrell.shortcuts.v2",
         captureDefaults({ShortcutModifiers::control, ShortcutModifiers::shift})},
        {"com.orvald.vistrell.shortcuts.v1", firstDefaults()},
        {ShortcutStore::legacyStorageKey, firstDefaults()}};
    return versions;
}

ShortcutAssignment migratedShortcuts(const ShortcutAssignment& old,
                                     const ShortcutAssignment& oldDefaults,
                                     const ShortcutAssignment& currentDefaults) {
    ShortcutAssignment migrated;
    for (const std::string_view actionID : ShortcutStore::supportedActionIDs) {
        const auto chosen = old.find(actionID);
        if (chosen == old.end()) continue;
        const auto oldDefault = oldDefaults.find(actionID);
        const bool isUntouched =
            oldDefault != oldDefaults.end() && oldDefault->second == chosen->second;
        const auto& source = isUntouched ? currentDefaults : old;
        if (const auto entry = source.find(actionID); entry != source.end())
            migrated.insert(*entry);
    }
    return migrated;
}

}  // namespace pictal::detail
