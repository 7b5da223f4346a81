#include "pictal/Messages.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>

#include <fmt/format.h>

namespace pictal::program {

namespace {

struct Character {
    /// Nothing that Unicode knows for a byte that is no part of UTF-8.
    std::uint32_t value = 0xFFFF'FFFF;
    std::size_t length = 1;
};

/// The first character of a text that is not empty.
Character firstCharacter(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    if (byte(0) < 0x80) return {byte(0), 1};
    const std::size_t length = byte(0) < 0xE0 ? 2 : byte(0) < 0xF0 ? 3 : 4;
    if (byte(0) < 0xC2 || byte(0) > 0xF4 || text.size() < length) return {};
    std::uint32_t value = byte(0) & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) return {};
        value = value << 6 | (byte(i) & 0x3F);
    }
    constexpr std::uint32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
    if (value < smallest[length] || value > 0x10FFFF || surrogate) return {};
    return {value, length};
}

bool isHarmless(std::uint32_t character) {
    const auto within = [=](std::uint32_t first, std::uint32_t last) {
        return character >= first && character <= last;
    };
    return within(0x20, 0x10FFFF) && !within(0x7F, 0x9F) && !within(0x200E, 0x200F) &&
           !within(0x2028, 0x202E) && !within(0x2066, 0x2069);
}

}  // namespace

std::string escaped(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const auto [character, length] = firstCharacter(text);
        const auto byte = static_cast<unsigned char>(text.front());
        if (isHarmless(character))
            result += text.substr(0, length);
        else if (character == '\n')
            result += "\\n";
        else if (character == '\t')
            result += "\\t";
        else
            result +=
                length == 1 ? fmt::format("\\x{:02X}", byte) : fmt::format("\\u{:04X}", character);
        text.remove_prefix(length);
    }
    return result;
}

std::string inQuotes(std::string_view text) {
    constexpr int longest = 80;
    std::size_t end = 0;
    for (int count = 0; end < text.size() && count < longest; ++count)
        end += firstCharacter(text.substr(end)).length;
    return fmt::format("\"{}{}\"", text.substr(0, end), end < text.size() ? "…" : "");
}

std::string messageLine(std::string_view message) {
    std::string cut;
    for (;;) {
        const std::size_t open = std::min(message.find('"'), message.size());
        const std::size_t close = message.find('"', open + 1);
        if (close == message.npos) return escaped(cut.append(message));
        cut.append(message.substr(0, open))
            .append(inQuotes(message.substr(open + 1, close - open - 1)));
        message.remove_prefix(close + 1);
    }
}

void complain(std::string_view message) {
    const std::string line = "pictal: " + messageLine(message) + "\n";
    (void)std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace pictal::program
