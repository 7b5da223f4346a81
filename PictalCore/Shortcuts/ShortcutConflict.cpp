#include "PictalCore/Shortcuts/ShortcutConflict.h"

#include "PictalCore/Platform/Foundation/Coding/JSONCoding.h"

namespace pictal {

template <>
struct detail::JSONCodec<ShortcutConflict> {
    static JSONValue encode(const ShortcutConflict& conflict) {
        return JSONObject()
            .set("severity", conflict.severity)
            .set("kind", conflict.kind)
            .set("message", conflict.message);
    }
    static ShortcutConflict decode(const JSONDecoder& decoder) {
        ShortcutConflict conflict;
        conflict.severity = decoder.require<ShortcutConflictSeverity>("severity");
        conflict.kind = decoder.require<ShortcutConflictKind>("kind");
        conflict.message = decoder.require<std::string>("message");
        return conflict;
    }
};

PICTAL_DEFINE_JSON(ShortcutConflictSeverity)
PICTAL_DEFINE_JSON(ShortcutConflictKind)
PICTAL_DEFINE_JSON(ShortcutConflict)

}  // namespace pictal
