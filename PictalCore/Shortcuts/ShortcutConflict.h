#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/Platform/Foundation/JSON.h"
#include "PictalCore/Platform/Foundation/RawValue.h"

#include <string>

/// One reason why a shortcut clashes with something.
namespace pictal {

enum class ShortcutConflictSeverity {
    /// The shortcut cannot be used.
    blocking,
    /// The shortcut works, but is a poor choice.
    warning,
};

enum class ShortcutConflictKind {
    /// Another action has the same shortcut.
    duplicate,
    /// The system or common applications use these keys.
    reserved,
    /// There is no modifier, so that ordinary typing would set it off.
    missingModifier,
    /// Control is the only modifier.
    controlOnly,
};

struct PICTAL_API ShortcutConflict {
    ShortcutConflictSeverity severity = ShortcutConflictSeverity::blocking;
    ShortcutConflictKind kind = ShortcutConflictKind::duplicate;
    /// An English sentence for the user.
    std::string message;

    friend bool operator==(const ShortcutConflict&, const ShortcutConflict&) = default;
};

template <>
struct RawValues<ShortcutConflictSeverity> {
    static constexpr std::array table{RawCase{ShortcutConflictSeverity::blocking, "blocking"},
                                      RawCase{ShortcutConflictSeverity::warning, "warning"}};
};

template <>
struct RawValues<ShortcutConflictKind> {
    static constexpr std::array table{
        RawCase{ShortcutConflictKind::duplicate, "duplicate"},
        RawCase{ShortcutConflictKind::reserved, "reserved"},
        RawCase{ShortcutConflictKind::missingModifier, "missingModifier"},
        RawCase{ShortcutConflictKind::controlOnly, "controlOnly"}};
};

PICTAL_JSON_CODED(ShortcutConflictSeverity);
PICTAL_JSON_CODED(ShortcutConflictKind);
PICTAL_JSON_CODED(ShortcutConflict);

}  // namespace pictal
