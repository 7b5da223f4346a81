#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/Platform/Foundation/JSON.h"
#include "PictalCore/Shortcuts/ShortcutModifiers.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>

/// A global keyboard shortcut: a key, what is printed on it, and the modifier keys held with it.
/// Nothing is validated: any key code, label and modifiers make a shortcut.
namespace pictal {

struct PICTAL_API Shortcut {
    /// The position of the key; see `KeyCode`.
    std::uint16_t keyCode = 0;
    /// What is shown for the key, chosen by whoever makes the shortcut: "S", "Space".
    std::string keyLabel;
    ShortcutModifiers modifiers;

    /// Control, Command and S, X, C, B.
    [[nodiscard]] static const Shortcut& defaultRegionCapture();
    [[nodiscard]] static const Shortcut& defaultWindowCapture();
    [[nodiscard]] static const Shortcut& defaultFullDisplayCapture();
    [[nodiscard]] static const Shortcut& defaultColorPicker();

    /// The modifiers' symbols and the label, with nothing in between: "⌃⌘S".
    [[nodiscard]] std::string displayString() const;

    /// Labels are compared as characters, composed or not, and case matters. The same keys under
    /// another label are another shortcut.
    [[nodiscard]] bool operator==(const Shortcut& other) const;
};

/// Which shortcut starts which action, by the action's identifier (`ShortcutActionID`).
using ShortcutAssignment = std::map<std::string, Shortcut, std::less<>>;

PICTAL_JSON_CODED(Shortcut);
PICTAL_JSON_CODED(ShortcutAssignment);

}  // namespace pictal

template <>
struct PICTAL_API std::hash<pictal::Shortcut> {
    std::size_t operator()(const pictal::Shortcut& shortcut) const;
};
