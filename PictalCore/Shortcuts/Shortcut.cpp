#include "PictalCore/Shortcuts/Shortcut.h"

#include "PictalCore/Platform/Foundation/Unicode.h"
#include "PictalCore/Shortcuts/KeyCode.h"

namespace pictal {

namespace {

Shortcut controlCommand(std::uint16_t keyCode, const char* label) {
    return {keyCode, label, {ShortcutModifiers::control, ShortcutModifiers::command}};
}

}  // namespace

const Shortcut& Shortcut::defaultRegionCapture() {
    static const Shortcut shortcut = controlCommand(KeyCode::s, "S");
    return shortcut;
}

const Shortcut& Shortcut::defaultWindowCapture() {
    static const Shortcut shortcut = controlCommand(KeyCode::x, "X");
    return shortcut;
}

const Shortcut& Shortcut::defaultFullDisplayCapture() {
    static const Shortcut shortcut = controlCommand(KeyCode::c, "C");
    return shortcut;
}

const Shortcut& Shortcut::defaultColorPicker() {
    static const Shortcut shortcut = controlCommand(KeyCode::b, "B");
    return shortcut;
}

std::string Shortcut::displayString() const {
    std::string text;
    for (const std::string& symbol : modifiers.displaySymbols())
        text += symbol;
    return text + keyLabel;
}

bool Shortcut::operator==(const Shortcut& other) const {
    return keyCode == other.keyCode && modifiers == other.modifiers &&
           Unicode::canonicallyEquivalent(keyLabel, other.keyLabel);
}

}  // namespace pictal

std::size_t std::hash<pictal::Shortcut>::operator()(const pictal::Shortcut& shortcut) const {
    constexpr std::size_t multiplier = 0x9E3779B97F4A7C15;  // 2^64 over the golden ratio
    std::size_t result = shortcut.keyCode;
    result = result * multiplier +
             std::hash<std::string>{}(pictal::Unicode::canonicalForm(shortcut.keyLabel));
    return result * multiplier + std::hash<pictal::ShortcutModifiers>{}(shortcut.modifiers);
}
