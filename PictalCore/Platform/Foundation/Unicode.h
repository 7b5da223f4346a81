#pragma once

#include "PictalCore/Export.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// The Unicode rules of the library, in one place. Text is UTF-8; every ill-formed sequence counts
/// as U+FFFD. Nothing depends on the process's locale.
namespace pictal::Unicode {

/// The scalar at `position`, which moves behind it. `position` has to lie within the text.
[[nodiscard]] PICTAL_API char32_t nextScalar(std::string_view text, std::size_t& position);

/// The text with each maximal ill-formed sequence replaced by U+FFFD.
[[nodiscard]] PICTAL_API std::string repaired(std::string_view text);

/// The text without the characters of the property White_Space at its ends (spaces, tabs, line and
/// paragraph separators, no-break spaces). The view points into `text`.
[[nodiscard]] PICTAL_API std::string_view trimmingWhiteSpace(std::string_view text);

/// NFD: one spelling for all canonically equivalent texts. Equal forms mean equal texts, so hash it
/// where texts are keys.
[[nodiscard]] PICTAL_API std::string canonicalForm(std::string_view text);

/// Whether both texts are the same characters, composed or not: "é" equals "e" + U+0301.
[[nodiscard]] PICTAL_API bool canonicallyEquivalent(std::string_view a, std::string_view b);

/// Full lower-casing by the rules of the root locale.
[[nodiscard]] PICTAL_API std::string lowercased(std::string_view text);

/// Whether the general category is a letter, a mark or a number of any kind (L, M, N).
[[nodiscard]] PICTAL_API bool isAlphanumeric(char32_t scalar);

/// The first `count` characters as people count them (extended grapheme clusters), or the whole
/// text if it has no more; a negative count is 0. Only the first 2 GiB are looked at. The view
/// points into `text`.
[[nodiscard]] PICTAL_API std::string_view prefix(std::string_view text, std::int64_t count);

/// The longest beginning of whole characters that has at most `size` bytes.
[[nodiscard]] PICTAL_API std::string_view prefixOfBytes(std::string_view text, std::size_t size);

}  // namespace pictal::Unicode
