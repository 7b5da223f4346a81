#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/Shortcuts/Shortcut.h"
#include "PictalCore/Shortcuts/ShortcutConflict.h"

#include <optional>
#include <string_view>
#include <vector>

/// Tells whether a shortcut clashes: with the application's other shortcuts, with the system's and
/// those of common applications, or by its modifiers.
namespace pictal {

struct PICTAL_API ShortcutConflictReport {
    Shortcut shortcut;
    /// Duplicates in the order of the assignment, then what is reserved, then the modifiers.
    std::vector<ShortcutConflict> conflicts;

    /// Whether nothing blocks the shortcut; warnings do not.
    [[nodiscard]] bool isUsable() const;

    friend bool operator==(const ShortcutConflictReport&, const ShortcutConflictReport&) = default;
};

namespace ShortcutConflictDetector {

/// @param existingShortcuts  what the application's actions have now
/// @param currentActionID  the action that the candidate is for; its own old shortcut never clashes
[[nodiscard]] PICTAL_API ShortcutConflictReport
report(const Shortcut& candidate, const ShortcutAssignment& existingShortcuts,
       std::optional<std::string_view> currentActionID = std::nullopt);

}  // namespace ShortcutConflictDetector
}  // namespace pictal
