#pragma once

#include "PictalCore/Shortcuts/ShortcutModifiers.h"

#include <cstdint>
#include <optional>
#include <string>

namespace pictal::detail {

/// What the system, Finder or common applications use these keys for, as a sentence; nothing when
/// they are free. The modifiers must be exactly the same.
[[nodiscard]] std::optional<std::string> reservedShortcutMessage(std::uint16_t keyCode,
                                                                 ShortcutModifiers modifiers);

}  // namespace pictal::detail
