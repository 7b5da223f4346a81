#include "pictal/JSONOutput.h"

#include "pictal/InputOutput.h"

#include <nlohmann/json.hpp>

namespace pictal::program {

JSONText::JSONText(std::string_view text)
    : compact_(
          nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace)) {}

JSONText JSONText::object(const Members& members) {
    JSONText result(nullptr);
    result.compact_ = "{";
    for (const auto& [key, value] : members) {
        if (result.compact_.size() > 1) result.compact_ += ',';
        result.compact_ += JSONText(key).compact_ + ":" + value.compact_;
    }
    result.compact_ += '}';
    return result;
}

JSONText JSONText::array(const std::vector<JSONText>& elements) {
    JSONText result(nullptr);
    result.compact_ = "[";
    for (const JSONText& element : elements) {
        if (result.compact_.size() > 1) result.compact_ += ',';
        result.compact_ += element.compact_;
    }
    result.compact_ += ']';
    return result;
}

std::string JSONText::indented() const {
    std::string text;
    std::size_t depth = 0;
    const auto newLine = [&] { text.append("\n").append(2 * depth, ' '); };
    bool inString = false;
    for (std::size_t i = 0; i < compact_.size(); ++i) {
        const char c = compact_[i];
        const bool opens = !inString && (c == '{' || c == '[');
        const bool closes = !inString && (c == '}' || c == ']');
        const bool empty = closes && (compact_[i - 1] == '{' || compact_[i - 1] == '[');
        if (closes) --depth;
        if (closes && !empty) newLine();
        text += c;
        if (inString && c == '\\') text += compact_[++i];
        if (c == '"') inString = !inString;
        if (inString) continue;
        if (c == ':') text += ' ';
        if (opens) ++depth;
        if (c == ',' || (opens && compact_[i + 1] != '}' && compact_[i + 1] != ']')) newLine();
    }
    return text;
}

std::expected<void, Failure> printJSON(const JSONText& document) {
    return printText(document.indented() + "\n");
}

}  // namespace pictal::program
