#pragma once

#include "PictalCore/Platform/Foundation/CGGeometry.h"
#include "PictalCore/Platform/Foundation/Coding/JSONValue.h"
#include "PictalCore/Platform/Foundation/JSON.h"
#include "PictalCore/Platform/Foundation/RawValue.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// How the coded types of the library meet JSON. Most are objects of fields (see `JSONFields`); any
/// other type specialises `JSONCodec`:
///
///     template <>
///     struct JSONCodec<ShortcutModifiers> {
///         static JSONValue encode(ShortcutModifiers modifiers);
///         static ShortcutModifiers decode(const JSONDecoder& decoder);
///     };
///
/// `PICTAL_DEFINE_JSON(ShortcutModifiers)` in namespace pictal then defines what the type's header
/// promised with `PICTAL_JSON_CODED`. The first error sticks: later reads do nothing and answer
/// default values, so that a decoder reads straight through.
namespace pictal::detail {

template <class T>
struct JSONCodec;

/// A place in a document that is being decoded: a value, the way to it, and the error so far. A
/// place inside another one points at it, so it must not outlive it.
class JSONDecoder {
  public:
    JSONDecoder(const JSONValue& value, std::optional<DecodingError>& error)
        : value_(&value), error_(&error) {}

    [[nodiscard]] const JSONValue& value() const { return *value_; }
    [[nodiscard]] bool failed() const { return error_->has_value(); }

    /// Reads this value itself.
    template <class T>
    [[nodiscard]] T decode() const {
        return failed() || isNull() ? T{} : JSONCodec<T>::decode(*this);
    }
    /// Reads the member under `key`; a missing key or a null is an error.
    template <class T>
    [[nodiscard]] T require(std::string_view key) const {
        const std::optional<JSONDecoder> member = requiredMember(key);
        return member ? member->decode<T>() : T{};
    }
    /// Reads the member under `key`; a missing key or a null gives nothing.
    template <class T>
    [[nodiscard]] std::optional<T> optional(std::string_view key) const {
        const std::optional<JSONDecoder> member = optionalMember(key);
        return member ? std::optional<T>(member->decode<T>()) : std::nullopt;
    }

    /// The members of the object at this place; empty and an error if it is none.
    [[nodiscard]] std::vector<std::pair<std::string_view, JSONDecoder>> members() const;
    /// How many elements the array at this place has; 0 and an error if it is none.
    [[nodiscard]] std::size_t elementCount() const;
    [[nodiscard]] JSONDecoder element(std::size_t position) const;

    void fail(DecodingError::Kind kind, std::string reason) const;
    /// "Expected a number but found a string."
    void failType(std::string_view expected) const;

  private:
    /// Whether there is nothing here, which is an error then: no value is coded as null.
    [[nodiscard]] bool isNull() const;
    JSONDecoder(const JSONValue& value, const JSONDecoder* parent, std::string_view key)
        : value_(&value), error_(parent->error_), parent_(parent), key_(key) {}
    JSONDecoder(const JSONValue& value, const JSONDecoder* parent, std::size_t position)
        : value_(&value), error_(parent->error_), parent_(parent), position_(position) {}
    /// The object at this place; nothing and an error if it is none.
    [[nodiscard]] const JSONValue::Object* object() const;
    [[nodiscard]] std::optional<JSONDecoder> requiredMember(std::string_view key) const;
    [[nodiscard]] std::optional<JSONDecoder> optionalMember(std::string_view key) const;

    const JSONValue* value_;
    std::optional<DecodingError>* error_;
    const JSONDecoder* parent_ = nullptr;
    std::string_view key_;  // a member's; empty data for an element
    std::size_t position_ = 0;
};

/// An object that is being encoded, member by member.
class JSONObject {
  public:
    template <class T>
    JSONObject& set(std::string key, const T& value) {
        object_.emplace_back(std::move(key), JSONCodec<T>::encode(value));
        return *this;
    }
    /// Writes nothing when there is no value.
    template <class T>
    JSONObject& setIfPresent(std::string key, const std::optional<T>& value) {
        return value ? set(std::move(key), *value) : *this;
    }
    operator JSONValue() { return JSONValue{std::move(object_)}; }

  private:
    JSONValue::Object object_;
};

template <>
struct JSONCodec<JSONValue> {
    static JSONValue encode(const JSONValue& value) { return value; }
};

template <>
struct JSONCodec<bool> {
    static JSONValue encode(bool value) { return JSONValue{value}; }
    static bool decode(const JSONDecoder& decoder);
};

template <>
struct JSONCodec<CGFloat> {
    static JSONValue encode(CGFloat value) { return JSONValue{value}; }
    static CGFloat decode(const JSONDecoder& decoder);
};

/// Whole numbers: 9.0 counts as 9, 9.5 does not.
template <>
struct JSONCodec<std::int64_t> {
    static JSONValue encode(std::int64_t value) { return JSONValue{value}; }
    static std::int64_t decode(const JSONDecoder& decoder);
};

template <>
struct JSONCodec<std::uint16_t> {
    static JSONValue encode(std::uint16_t value) {
        return JSONValue{static_cast<std::int64_t>(value)};
    }
    static std::uint16_t decode(const JSONDecoder& decoder);
};

template <>
struct JSONCodec<std::string> {
    static JSONValue encode(const std::string& value) { return JSONValue{value}; }
    static std::string decode(const JSONDecoder& decoder);
};

template <>
struct JSONCodec<CGPoint> {
    static JSONValue encode(const CGPoint& point);
    static CGPoint decode(const JSONDecoder& decoder);
};

template <>
struct JSONCodec<CGRect> {
    static JSONValue encode(const CGRect& rect);
    static CGRect decode(const JSONDecoder& decoder);
};

template <class T>
struct JSONCodec<std::vector<T>> {
    static JSONValue encode(const std::vector<T>& values) {
        JSONValue::Array array;
        array.reserve(values.size());
        for (const T& value : values)
            array.push_back(JSONCodec<T>::encode(value));
        return JSONValue{std::move(array)};
    }
    static std::vector<T> decode(const JSONDecoder& decoder) {
        std::vector<T> values;
        const std::size_t count = decoder.elementCount();
        values.reserve(count);
        for (std::size_t i = 0; i < count && !decoder.failed(); ++i)
            values.push_back(decoder.element(i).decode<T>());
        return values;
    }
};

/// Enumerations are their raw values.
template <RawRepresentable E>
struct JSONCodec<E> {
    static JSONValue encode(E value) { return JSONValue{std::string(rawValue(value))}; }
    static E decode(const JSONDecoder& decoder) {
        const auto text = JSONCodec<std::string>::decode(decoder);
        if (decoder.failed()) return {};
        const std::optional<E> value = fromRawValue<E>(text);
        if (!value)
            decoder.fail(DecodingError::Kind::dataCorrupted, "Unknown value \"" + text + "\".");
        return value.value_or(E{});
    }
};

template <class T>
[[nodiscard]] std::expected<T, DecodingError> decodeDocument(std::string_view text) {
    const auto tree = parseJSON(text);
    if (!tree) return std::unexpected(tree.error());
    std::optional<DecodingError> error;
    T value = JSONDecoder(*tree, error).decode<T>();
    if (error) return std::unexpected(*std::move(error));
    return value;
}

}  // namespace pictal::detail

#define PICTAL_DEFINE_JSON(...)                                                      \
    template <>                                                                      \
    std::expected<std::string, EncodingError> encodeJSON(const __VA_ARGS__& value) { \
        return detail::writeJSON(detail::JSONCodec<__VA_ARGS__>::encode(value));     \
    }                                                                                \
    template <>                                                                      \
    std::expected<__VA_ARGS__, DecodingError> decodeJSON(std::string_view text) {    \
        return detail::decodeDocument<__VA_ARGS__>(text);                            \
    }
