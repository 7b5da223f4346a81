#include "PictalCore/Platform/Foundation/Coding/JSONFields.h"
#include "PictalCore/Shortcuts/Shortcut.h"
#include "PictalCore/Shortcuts/ShortcutConflict.h"

namespace pictal {

namespace detail {

template <>
struct JSONCodec<ShortcutModifiers> {
    static JSONValue encode(ShortcutModifiers modifiers) { return JSONValue{modifiers.rawValue}; }
    static ShortcutModifiers decode(const JSONDecoder& decoder) {
        return ShortcutModifiers(decoder.decode<std::int64_t>());
    }
};

template <>
struct JSONFields<Shortcut> {
    static constexpr std::tuple list{field("keyCode", &Shortcut::keyCode),
                                     field("keyLabel", &Shortcut::keyLabel),
                                     field("modifiers", &Shortcut::modifiers)};
};

template <>
struct JSONCodec<ShortcutAssignment> {
    static JSONValue encode(const ShortcutAssignment& assignment) {
        JSONObject object;
        for (const auto& [actionID, shortcut] : assignment)
            object.set(actionID, shortcut);
        return object;
    }
    static ShortcutAssignment decode(const JSONDecoder& decoder) {
        ShortcutAssignment assignment;
        for (const auto& [actionID, member] : decoder.members())
            assignment.emplace(actionID, member.decode<Shortcut>());
        return assignment;
    }
};

template <>
struct JSONFields<ShortcutConflict> {
    static constexpr std::tuple list{field("severity", &ShortcutConflict::severity),
                                     field("kind", &ShortcutConflict::kind),
                                     field("message", &ShortcutConflict::message)};
};

}  // namespace detail

PICTAL_DEFINE_JSON(ShortcutModifiers)
PICTAL_DEFINE_JSON(Shortcut)
PICTAL_DEFINE_JSON(ShortcutAssignment)
PICTAL_DEFINE_JSON(ShortcutConflict)
PICTAL_DEFINE_JSON(ShortcutConflictKind)
PICTAL_DEFINE_JSON(ShortcutConflictSeverity)

}  // namespace pictal
