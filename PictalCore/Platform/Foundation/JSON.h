#pragma once

#include "PictalCore/Export.h"

#include <expected>
#include <string>
#include <string_view>
#include <vector>

/// The JSON form of values. A type that has one names it below its definition:
///
///     PICTAL_JSON_CODED(ShadowStyle);
///
/// and `encodeJSON(style)` and `decodeJSON<ShadowStyle>(text)` work. Numbers are 64-bit floating
/// point or whole; keys that a reader does not know are ignored; the order of keys is not promised.
namespace pictal {

struct PICTAL_API EncodingError {
    /// Where in the value, from the outermost key in; list positions as decimal numbers.
    std::vector<std::string> codingPath;
    std::string reason;

    /// One line for people: "cornerRadius: JSON has no number that is not finite."
    [[nodiscard]] std::string description() const;

    friend bool operator==(const EncodingError&, const EncodingError&) = default;
};

struct PICTAL_API DecodingError {
    enum class Kind {
        /// A required key is missing.
        keyNotFound,
        /// There is a null where a value is required.
        valueNotFound,
        /// The value is of another JSON type, or a number is not whole where it has to be.
        typeMismatch,
        /// The text is not JSON, a string names no known case, or a number is out of range. Whole
        /// numbers have 64 bits; written with a fraction or an exponent, less than 2^53.
        dataCorrupted,
    };

    Kind kind = Kind::dataCorrupted;
    /// Where in the text, from the outermost key in; list positions as decimal numbers.
    std::vector<std::string> codingPath;
    std::string reason;

    /// One line for people: "style.stroke.red: Expected a number but found a string."
    [[nodiscard]] std::string description() const;

    friend bool operator==(const DecodingError&, const DecodingError&) = default;
};

/// @return compact JSON; an error for a number that is not finite, since JSON has none, and for two
///     keys of one object that are the same once ill-formed UTF-8 has become U+FFFD
template <class T>
std::expected<std::string, EncodingError> encodeJSON(const T& value) = delete;

/// Texts over 64 MiB, of more than 4,000,000 values and keys, nested deeper than 64 levels, with a
/// key twice in one object or with a zero byte are corrupted data. The first error ends the
/// decoding.
template <class T>
std::expected<T, DecodingError> decodeJSON(std::string_view text) = delete;

#define PICTAL_JSON_CODED(...)                                                                 \
    template <>                                                                                \
    PICTAL_API std::expected<std::string, EncodingError> encodeJSON(const __VA_ARGS__& value); \
    template <>                                                                                \
    PICTAL_API std::expected<__VA_ARGS__, DecodingError> decodeJSON(std::string_view text)

}  // namespace pictal
