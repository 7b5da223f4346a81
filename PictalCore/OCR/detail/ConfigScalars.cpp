#include "PictalCore/OCR/detail/ConfigScalars.h"

#include "PictalCore/Platform/Foundation/CNumbers.h"
#include "PictalCore/Platform/Foundation/Unicode.h"

#include <charconv>

namespace pictal::detail {

namespace {

std::string replaced(std::string_view text, std::string_view pattern, std::string_view by) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t found = std::min(text.find(pattern, at), text.size());
        result += text.substr(at, found - at);
        if (found < text.size()) result += by;
        at = found + pattern.size();
    }
    return result;
}

/// Numbers as people write them ("255.", ".5") as the C library takes them.
std::string normalized(std::string_view text) {
    text = Unicode::trimmingWhiteSpace(text);
    while (text.ends_with('.'))
        text.remove_suffix(1);
    return text.starts_with('.') ? "0" + std::string(text) : std::string(text);
}

}  // namespace

bool isQuoted(std::string_view trimmed) {
    return trimmed.size() >= 2 && (trimmed.front() == '\'' || trimmed.front() == '"') &&
           trimmed.back() == trimmed.front();
}

std::string unquoted(std::string_view text) {
    text = Unicode::trimmingWhiteSpace(text);
    if (!isQuoted(text)) return std::string(text);
    const std::string_view inner = text.substr(1, text.size() - 2);
    if (text.front() == '\'') return replaced(inner, "''", "'");
    return replaced(replaced(inner, "\\\"", "\""), "\\\\", "\\");
}

std::optional<std::int64_t> parsedInteger(std::string_view text) {
    const bool hasPlus = text.starts_with('+');
    if (hasPlus) text.remove_prefix(1);
    if (hasPlus && text.starts_with('-')) return std::nullopt;
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

std::optional<float> parsedNumber(std::string_view text) {
    text = Unicode::trimmingWhiteSpace(text);
    const std::size_t slash = text.find('/');
    if (slash == std::string_view::npos) return CNumbers::toFloat(normalized(text));
    const auto numerator = CNumbers::toDouble(normalized(text.substr(0, slash)));
    const auto denominator = CNumbers::toDouble(normalized(text.substr(slash + 1)));
    if (!numerator || !denominator || *denominator == 0) return std::nullopt;
    return static_cast<float>(*numerator / *denominator);
}

}  // namespace pictal::detail
