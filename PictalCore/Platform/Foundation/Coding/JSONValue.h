#pragma once

#include "PictalCore/Platform/Foundation/JSON.h"

#include <cstdint>
#include <expected>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace pictal::detail {

struct JSONMember;

/// A JSON document as a tree. An object keeps its members in order.
struct JSONValue {
    using Array = std::vector<JSONValue>;
    using Object = std::vector<JSONMember>;

    std::variant<std::nullptr_t, bool, std::int64_t, double, std::string, Array, Object> value;

    template <class T>
    [[nodiscard]] const T* as() const {
        return std::get_if<T>(&value);
    }
    /// "a string", "null" and so on, for messages.
    [[nodiscard]] std::string_view typeName() const;
};

/// Not a `std::pair`, whose constructors ask about a value that is not complete yet.
struct JSONMember {
    std::string key;
    JSONValue value;
};

[[nodiscard]] std::expected<JSONValue, DecodingError> parseJSON(std::string_view text);

/// Ill-formed UTF-8 in strings is written as U+FFFD.
[[nodiscard]] std::expected<std::string, EncodingError> writeJSON(const JSONValue& value);

}  // namespace pictal::detail
