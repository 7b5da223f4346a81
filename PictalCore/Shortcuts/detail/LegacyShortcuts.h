#pragma once

#include "PictalCore/Shortcuts/Shortcut.h"

#include <span>
#include <string_view>

/// What earlier versions stored, and how it is carried over.
namespace pictal::detail {

struct LegacyShortcuts {
    std::string_view storageKey;
    /// What that version gave to those who chose nothing.
    ShortcutAssignment defaults;
};

/// The newest first: of several, only the newest counts.
[[nodiscard]] std::span<const LegacyShortcuts> legacyShortcuts();

/// The user's own choices stay; what was left at the old default takes the current one, or goes if
/// there is none.
[[nodiscard]] ShortcutAssignment migratedShortcuts(const ShortcutAssignment& old,
                                                   const ShortcutAssignment& oldDefaults,
                                                   const ShortcutAssignment& currentDefaults);

}  // namespace pictal::detail
