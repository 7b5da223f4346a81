#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The values of a configuration text.
namespace pictal::detail {

/// Whether the text, which has no white space at its ends, stands in quotes of one kind.
[[nodiscard]] bool isQuoted(std::string_view trimmed);
/// The text without white space and quotes around it, what is quoted inside them put right.
[[nodiscard]] std::string unquoted(std::string_view text);
/// A sign or none, and digits: all of the text.
[[nodiscard]] std::optional<std::int64_t> parsedInteger(std::string_view text);
/// A number, or two with a slash between them; full stops at the end of each do not count.
[[nodiscard]] std::optional<float> parsedNumber(std::string_view text);

}  // namespace pictal::detail
