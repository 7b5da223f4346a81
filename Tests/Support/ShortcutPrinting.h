#pragma once

#include "PictalCore/Shortcuts/Shortcut.h"

#include <ostream>

namespace pictal {

/// What a failed test shows of a shortcut.
inline void PrintTo(const Shortcut& shortcut, std::ostream* out) {
    *out << shortcut.displayString() << " (" << shortcut.keyCode << " with "
         << shortcut.modifiers.rawValue << ")";
}

}  // namespace pictal
