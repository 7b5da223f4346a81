#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/Shortcuts/Shortcut.h"

#include <expected>
#include <string>
#include <string_view>
#include <variant>

/// Shortcuts as people type them: modifiers and then one key, by name or symbol, with + or - or
/// spaces between them or, after a symbol, nothing. Case does not matter.
///
///     ctrl+cmd+s    ⌃⌘S    shift-command-4    Option + ,
///
/// What `Shortcut::displayString` shows of a shortcut that was parsed, parses to the same shortcut.
namespace pictal {

/// Why a text is no shortcut.
class PICTAL_API ShortcutNotationError {
  public:
    /// There is nothing, or only modifiers, or nothing on one side of a + or -.
    struct MissingKey {
        friend bool operator==(MissingKey, MissingKey) = default;
    };
    /// The last word is no key that has a name here.
    struct UnknownKey {
        std::string word;
        friend bool operator==(const UnknownKey&, const UnknownKey&) = default;
    };
    /// A word before the last is no modifier.
    struct UnknownModifier {
        std::string word;
        friend bool operator==(const UnknownModifier&, const UnknownModifier&) = default;
    };

    [[nodiscard]] static ShortcutNotationError missingKey();
    [[nodiscard]] static ShortcutNotationError unknownKey(std::string word);
    [[nodiscard]] static ShortcutNotationError unknownModifier(std::string word);

    template <class Case>
    [[nodiscard]] const Case* as() const {
        return std::get_if<Case>(&case_);
    }

    /// One line for people, with what is understood instead.
    [[nodiscard]] std::string description() const;

    friend bool operator==(const ShortcutNotationError&, const ShortcutNotationError&) = default;

  private:
    using Cases = std::variant<MissingKey, UnknownKey, UnknownModifier>;
    explicit ShortcutNotationError(Cases value) : case_(std::move(value)) {}

    Cases case_;
};

namespace ShortcutNotation {

/// Labels are "A" to "Z", "1" to "9", "Space", "Tab", "Escape" and ",".
[[nodiscard]] PICTAL_API std::expected<Shortcut, ShortcutNotationError> parse(
    std::string_view text);

}  // namespace ShortcutNotation
}  // namespace pictal
