#include "PictalCore/OCR/detail/ConfigText.h"

#include "PictalCore/OCR/detail/ConfigScalars.h"
#include "PictalCore/Platform/Foundation/Unicode.h"

#include <algorithm>

namespace pictal::detail {

namespace {

/// What stands behind the dash of a list's item; nothing when the line is none.
std::optional<std::string_view> itemOf(std::string_view line) {
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    if (!line.starts_with('-')) return std::nullopt;
    line.remove_prefix(1);
    if (line.empty()) return line;
    if (line.front() != ' ' && line.front() != '\t') return std::nullopt;
    return line.substr(1);
}

template <class Number>
std::optional<std::vector<Number>> parsedAll(const std::vector<std::string>& items,
                                             std::optional<Number> (*parse)(std::string_view)) {
    std::vector<Number> numbers;
    for (const std::string& item : items)
        if (const auto number = parse(item)) numbers.push_back(*number);
    if (numbers.empty()) return std::nullopt;
    return numbers;
}

}  // namespace

ConfigText::ConfigText(std::string_view text) {
    std::size_t start = 0;
    for (std::size_t at = text.find('\n'); at != text.npos; at = text.find('\n', at + 1)) {
        // A carriage return and the line feed behind it are one character, and no line's end.
        if (at > 0 && text[at - 1] == '\r') continue;
        lines_.push_back(text.substr(start, at - start));
        start = at + 1;
    }
    lines_.push_back(text.substr(start));
}

std::optional<std::string> ConfigText::string(std::string_view key) const {
    const std::string header = std::string(key) + ":";
    for (const std::string_view line : lines_) {
        if (!line.contains(header)) continue;  // trimming takes longer
        const std::string_view trimmed = Unicode::trimmingWhiteSpace(line);
        if (trimmed.starts_with(header)) return unquoted(trimmed.substr(header.size()));
    }
    return std::nullopt;
}

std::optional<std::int64_t> ConfigText::integer(std::string_view key) const {
    const auto value = string(key);
    return value ? parsedInteger(*value) : std::nullopt;
}

std::optional<float> ConfigText::number(std::string_view key) const {
    const auto value = string(key);
    return value ? parsedNumber(*value) : std::nullopt;
}

std::vector<std::string> ConfigText::strings(std::string_view key) const {
    const std::string header = std::string(key) + ":";
    auto line = std::ranges::find_if(lines_, [&](std::string_view each) {
        return each.contains(header) && Unicode::trimmingWhiteSpace(each) == header;
    });
    std::vector<std::string> items;
    if (line == lines_.end()) return items;
    for (++line; line != lines_.end(); ++line) {
        const auto item = itemOf(*line);
        if (!item && !items.empty()) break;
        if (!item) continue;
        items.push_back(isQuoted(Unicode::trimmingWhiteSpace(*item)) ? unquoted(*item)
                                                                     : std::string(*item));
    }
    return items;
}

std::optional<std::vector<std::int64_t>> ConfigText::integers(std::string_view key) const {
    return parsedAll(strings(key), parsedInteger);
}

std::optional<std::vector<float>> ConfigText::numbers(std::string_view key) const {
    return parsedAll(strings(key), parsedNumber);
}

}  // namespace pictal::detail
