#include "PictalCore/Shortcuts/ShortcutConflictDetector.h"
#include "PictalCore/Shortcuts/ShortcutNotation.h"

#include <cstdint>
#include <cstdlib>

// Stored shortcuts and typed combinations: whatever is understood survives being written and read.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace pictal;
    const std::string_view text(reinterpret_cast<const char*>(data), size);

    if (const auto stored = decodeJSON<ShortcutAssignment>(text)) {
        const auto written = encodeJSON(*stored);
        if (!written || decodeJSON<ShortcutAssignment>(*written) != *stored) std::abort();
        for (const auto& [action, shortcut] : *stored)
            if (!ShortcutConflictDetector::report(shortcut, *stored, action)
                     .shortcut.displayString()
                     .ends_with(shortcut.keyLabel))
                std::abort();
    }

    if (const auto shortcut = ShortcutNotation::parse(text)) {
        if (ShortcutNotation::parse(shortcut->displayString()) != *shortcut) std::abort();
    } else if (shortcut.error().description().empty()) {
        std::abort();
    }
    return 0;
}
