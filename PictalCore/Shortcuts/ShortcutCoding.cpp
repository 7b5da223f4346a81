#include "PictalCore/Platform/Foundation/Coding/JSONCoding.h"
#include "PictalCore/Shortcuts/Shortcut.h"

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
struct JSONCodec<Shortcut> {
    static JSONValue encode(const Shortcut& shortcut) {
        return JSONObject()
            .set("keyCode", shortcut.keyCode)
            .set("keyLabel", shortcut.keyLabel)
            .set("modifiers", shortcut.modifiers);
    }
    static Shortcut decode(const JSONDecoder& decoder) {
        Shortcut shortcut;
        shortcut.keyCode = decoder.require<std::uint16_t>("keyCode");
        shortcut.keyLabel = decoder.require<std::string>("keyLabel");
        shortcut.modifiers = decoder.require<ShortcutModifiers>("modifiers");
        return shortcut;
    }
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

}  // namespace detail

PICTAL_DEFINE_JSON(ShortcutModifiers)
PICTAL_DEFINE_JSON(Shortcut)
PICTAL_DEFINE_JSON(ShortcutAssignment)

}  // namespace pictal
