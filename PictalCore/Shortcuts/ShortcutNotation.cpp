#include "PictalCore/Shortcuts/ShortcutNotation.h"

#include "PictalCore/Platform/Foundation/Unicode.h"
#include "PictalCore/Shortcuts/KeyCode.h"

#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace pictal {

namespace {

/// Names are lower case. The first of a modifier or key is the one that messages use.
struct ModifierName {
    std::string_view name;
    ShortcutModifiers modifier;
};

constexpr ModifierName modifierNames[] = {
    {"control", ShortcutModifiers::control}, {"ctrl", ShortcutModifiers::control},
    {"⌃", ShortcutModifiers::control},       {"option", ShortcutModifiers::option},
    {"opt", ShortcutModifiers::option},      {"alt", ShortcutModifiers::option},
    {"⌥", ShortcutModifiers::option},        {"shift", ShortcutModifiers::shift},
    {"⇧", ShortcutModifiers::shift},         {"command", ShortcutModifiers::command},
    {"cmd", ShortcutModifiers::command},     {"⌘", ShortcutModifiers::command},
};

struct KeyName {
    std::string_view name;
    std::uint16_t keyCode;
    const char* label;
};

constexpr KeyName keyNames[] = {
    {"a", KeyCode::a, "A"},
    {"b", KeyCode::b, "B"},
    {"c", KeyCode::c, "C"},
    {"d", KeyCode::d, "D"},
    {"e", KeyCode::e, "E"},
    {"f", KeyCode::f, "F"},
    {"g", KeyCode::g, "G"},
    {"h", KeyCode::h, "H"},
    {"i", KeyCode::i, "I"},
    {"j", KeyCode::j, "J"},
    {"k", KeyCode::k, "K"},
    {"l", KeyCode::l, "L"},
    {"m", KeyCode::m, "M"},
    {"n", KeyCode::n, "N"},
    {"o", KeyCode::o, "O"},
    {"p", KeyCode::p, "P"},
    {"q", KeyCode::q, "Q"},
    {"r", KeyCode::r, "R"},
    {"s", KeyCode::s, "S"},
    {"t", KeyCode::t, "T"},
    {"u", KeyCode::u, "U"},
    {"v", KeyCode::v, "V"},
    {"w", KeyCode::w, "W"},
    {"x", KeyCode::x, "X"},
    {"z", KeyCode::z, "Z"},
    {"1", KeyCode::digit1, "1"},
    {"2", KeyCode::digit2, "2"},
    {"3", KeyCode::digit3, "3"},
    {"4", KeyCode::digit4, "4"},
    {"5", KeyCode::digit5, "5"},
    {"6", KeyCode::digit6, "6"},
    {"7", KeyCode::digit7, "7"},
    {"8", KeyCode::digit8, "8"},
    {"9", KeyCode::digit9, "9"},
    {"space", KeyCode::space, "Space"},
    {"tab", KeyCode::tab, "Tab"},
    {"escape", KeyCode::escape, "Escape"},
    {"esc", KeyCode::escape, "Escape"},
    {"comma", KeyCode::comma, ","},
    {",", KeyCode::comma, ","},
};

std::optional<ShortcutModifiers> modifierNamed(std::string_view word) {
    for (const ModifierName& row : modifierNames)
        if (row.name == word) return row.modifier;
    return std::nullopt;
}

const KeyName* keyNamed(std::string_view word) {
    for (const KeyName& row : keyNames)
        if (row.name == word) return &row;
    return nullptr;
}

template <class Row, std::size_t N>
std::string listed(const Row (&rows)[N]) {
    std::string text;
    for (const Row& row : rows)
        text.append(text.empty() ? "" : " ").append(row.name);
    return text;
}

/// A modifier's symbol at the beginning of the text, or nothing.
std::string_view leadingSymbol(std::string_view text) {
    for (const ModifierName& row : modifierNames)
        if (static_cast<unsigned char>(row.name[0]) >= 0x80 && text.starts_with(row.name))
            return text.substr(0, row.name.size());
    return {};
}

/// The names and symbols of a text between two separators, in order.
void appendWords(std::string_view piece, std::vector<std::string_view>& words) {
    while (!piece.empty()) {
        std::string_view word = leadingSymbol(piece);
        if (word.empty()) word = piece.substr(0, piece.find(' '));
        words.push_back(word);
        piece = Unicode::trimmingWhiteSpace(piece.substr(word.size()));
    }
}

/// Nothing if there is nothing on one side of a separator.
std::optional<std::vector<std::string_view>> wordsOf(std::string_view text) {
    std::vector<std::string_view> words;
    for (;;) {
        const std::size_t separator = text.find_first_of("+-");
        const std::string_view piece = Unicode::trimmingWhiteSpace(text.substr(0, separator));
        if (piece.empty()) return std::nullopt;
        appendWords(piece, words);
        if (separator == std::string_view::npos) return words;
        text.remove_prefix(separator + 1);
    }
}

}  // namespace

ShortcutNotationError ShortcutNotationError::missingKey() {
    return ShortcutNotationError(MissingKey{});
}

ShortcutNotationError ShortcutNotationError::unknownKey(std::string word) {
    return ShortcutNotationError(UnknownKey{std::move(word)});
}

ShortcutNotationError ShortcutNotationError::unknownModifier(std::string word) {
    return ShortcutNotationError(UnknownModifier{std::move(word)});
}

std::string ShortcutNotationError::description() const {
    if (const auto* key = as<UnknownKey>())
        return "unknown key \"" + key->word + "\"; the keys are " + listed(keyNames);
    if (const auto* modifier = as<UnknownModifier>())
        return "unknown modifier \"" + modifier->word + "\"; the modifiers are " +
               listed(modifierNames);
    return "no key; write modifiers and one key, such as ctrl+cmd+s";
}

std::expected<Shortcut, ShortcutNotationError> ShortcutNotation::parse(std::string_view text) {
    const std::string lowercased = Unicode::lowercased(text);
    const auto words = wordsOf(lowercased);
    if (!words || modifierNamed(words->back()))
        return std::unexpected(ShortcutNotationError::missingKey());

    Shortcut shortcut;
    for (const std::string_view word : std::span(*words).first(words->size() - 1)) {
        const auto modifier = modifierNamed(word);
        if (!modifier)
            return std::unexpected(ShortcutNotationError::unknownModifier(std::string(word)));
        shortcut.modifiers.insert(*modifier);
    }
    const KeyName* key = keyNamed(words->back());
    if (!key) return std::unexpected(ShortcutNotationError::unknownKey(std::string(words->back())));
    shortcut.keyCode = key->keyCode;
    shortcut.keyLabel = key->label;
    return shortcut;
}

}  // namespace pictal
