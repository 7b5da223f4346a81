#include "PictalCore/Shortcuts/ShortcutConflictDetector.h"

#include "PictalCore/Platform/Foundation/Unicode.h"
#include "PictalCore/Shortcuts/detail/ReservedShortcuts.h"

#include <algorithm>

namespace pictal {

using enum ShortcutConflictSeverity;
using enum ShortcutConflictKind;

bool ShortcutConflictReport::isUsable() const {
    return std::ranges::none_of(
        conflicts, [](const ShortcutConflict& conflict) { return conflict.severity == blocking; });
}

ShortcutConflictReport ShortcutConflictDetector::report(
    const Shortcut& candidate, const ShortcutAssignment& existingShortcuts,
    std::optional<std::string_view> currentActionID) {
    std::vector<ShortcutConflict> conflicts;

    for (const auto& [actionID, shortcut] : existingShortcuts) {
        if (currentActionID && Unicode::canonicallyEquivalent(actionID, *currentActionID)) continue;
        if (shortcut == candidate)
            conflicts.push_back({blocking, duplicate, "Already used by " + actionID + "."});
    }

    if (auto message = detail::reservedShortcutMessage(candidate.keyCode, candidate.modifiers))
        conflicts.push_back({blocking, reserved, *std::move(message)});

    if (candidate.modifiers.isEmpty())
        conflicts.push_back(
            {blocking, missingModifier, "Global shortcuts must include at least one modifier."});
    else if (candidate.modifiers == ShortcutModifiers::control)
        conflicts.push_back({warning, controlOnly,
                             "Control-only shortcuts often conflict with macOS focus and "
                             "accessibility shortcuts."});

    return {candidate, std::move(conflicts)};
}

}  // namespace pictal
