#pragma once

#include "PictalCore/Platform/Foundation/JSON.h"
#include "pictal/Outcome.h"

#include <concepts>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// How commands print JSON: one document, indented by two, with a line's end behind it.
namespace pictal::program {

/// A JSON value that is put together from others; those of the library come with `of`.
class JSONText {
  public:
    using Members = std::vector<std::pair<std::string_view, JSONText>>;

    JSONText(std::nullptr_t) : compact_("null") {}
    JSONText(std::same_as<bool> auto value) : compact_(value ? "true" : "false") {}
    JSONText(std::integral auto value)
        requires(!std::same_as<decltype(value), bool>)
        : compact_(std::to_string(value)) {}
    /// Bytes that are no UTF-8 become U+FFFD.
    JSONText(std::string_view text);
    JSONText(const std::string& text) : JSONText(std::string_view(text)) {}
    JSONText(const char* text) : JSONText(std::string_view(text)) {}

    [[nodiscard]] static JSONText object(const Members& members);
    [[nodiscard]] static JSONText array(const std::vector<JSONText>& elements);
    /// A value of the library; one that has no JSON form, since a number in it is not finite,
    /// fails.
    template <class T>
    [[nodiscard]] static std::expected<JSONText, Failure> of(const T& value) {
        auto text = encodeJSON(value);
        if (!text) return badInput(text.error().description());
        JSONText result(nullptr);
        result.compact_ = *std::move(text);
        return result;
    }

    [[nodiscard]] std::string indented() const;

  private:
    std::string compact_;
};

[[nodiscard]] std::expected<void, Failure> printJSON(const JSONText& document);

/// The same for a value of the library alone.
template <class T>
[[nodiscard]] Outcome printJSONOf(const T& value) {
    const auto document = JSONText::of(value);
    if (!document) return std::unexpected(document.error());
    return doneIf(printJSON(*document));
}

}  // namespace pictal::program
