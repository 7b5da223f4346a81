#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/Platform/Foundation/JSON.h"
#include "PictalCore/Platform/Foundation/OptionSet.h"

#include <string>
#include <vector>

/// The modifier keys of a shortcut. Bits without a name are kept and shown as nothing. The JSON
/// form is the raw value.
namespace pictal {

struct ShortcutModifiers : OptionSet<ShortcutModifiers> {
    using OptionSet::OptionSet;
    static const ShortcutModifiers control, option, shift, command;

    /// "⌃", "⌥", "⇧" and "⌘", as far as they are set, in that order.
    [[nodiscard]] PICTAL_API std::vector<std::string> displaySymbols() const;
};

inline constexpr ShortcutModifiers ShortcutModifiers::control{1};
inline constexpr ShortcutModifiers ShortcutModifiers::option{2};
inline constexpr ShortcutModifiers ShortcutModifiers::shift{4};
inline constexpr ShortcutModifiers ShortcutModifiers::command{8};

PICTAL_JSON_CODED(ShortcutModifiers);

}  // namespace pictal
