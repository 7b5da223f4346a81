// Stored shortcuts and typed combinations: whatever is understood survives being written and read.

#include "Fuzz/RoundTrip.h"
#include "PictalCore/Shortcuts/ShortcutConflictDetector.h"
#include "PictalCore/Shortcuts/ShortcutNotation.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace pictal;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    roundTrip<ShortcutAssignment>(text);
    roundTrip<ShortcutConflict>(text);

    const auto shortcut = ShortcutNotation::parse(text);
    if (!shortcut)
        (void)shortcut.error().description();
    else if (ShortcutNotation::parse(shortcut->displayString()) != *shortcut)
        std::abort();
    return 0;
}
