#pragma once

#include "PictalCore/Platform/Foundation/Coding/JSONCoding.h"

#include <concepts>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

/// Types whose JSON form is an object of their fields. The list of the fields is all there is to
/// say:
///
///     template <>
///     struct JSONFields<ShadowStyle> {
///         static constexpr std::tuple list{field("blur", &ShadowStyle::blur),
///                                          field("color", &ShadowStyle::color)};
///     };
///
/// Fields are written and read in this order. A key that is absent or null is an error, unless the
/// field is a `std::optional`, which is empty then and not written when it is empty, or has a
/// fallback: `unchanged`, or a function of the value as far as it has been read.
///
/// Reading begins with a default-constructed value, or with `initial` if there is one, and stores
/// what it reads; `static T adjusted(const T&)`, if there is one, brings that into range.
namespace pictal::detail {

template <class T>
struct JSONFields;

/// There is none: the field has to be there.
struct NoFallback {};
/// What the value had before.
struct Unchanged {};
inline constexpr Unchanged unchanged;

template <class T, class Member, class Fallback>
struct JSONField {
    std::string_view key;
    Member T::* member;
    Fallback fallback;
};

template <class T, class Member, class Fallback = NoFallback>
[[nodiscard]] constexpr JSONField<T, Member, Fallback> field(std::string_view key,
                                                             Member T::* member,
                                                             Fallback fallback = {}) {
    return {key, member, fallback};
}

template <class Member>
inline constexpr bool isOptional = false;
template <class Value>
inline constexpr bool isOptional<std::optional<Value>> = true;

template <class T, class Member, class Fallback>
void encodeField(JSONObject& object, const T& value,
                 const JSONField<T, Member, Fallback>& described) {
    if constexpr (isOptional<Member>)
        object.setIfPresent(std::string(described.key), value.*described.member);
    else
        object.set(std::string(described.key), value.*described.member);
}

template <class T, class Member, class Fallback>
void decodeField(const JSONDecoder& decoder, T& value,
                 const JSONField<T, Member, Fallback>& described) {
    Member& member = value.*described.member;
    if constexpr (isOptional<Member>) {
        member = decoder.optional<typename Member::value_type>(described.key);
    } else if constexpr (std::same_as<Fallback, NoFallback>) {
        member = decoder.require<Member>(described.key);
    } else {
        std::optional<Member> read = decoder.optional<Member>(described.key);
        if (read)
            member = *std::move(read);
        else if constexpr (!std::same_as<Fallback, Unchanged>)
            member = described.fallback(value);
    }
}

template <class T>
concept CodedByFields = requires { JSONFields<T>::list; };

template <CodedByFields T>
struct JSONCodec<T> {
    static JSONValue encode(const T& value) {
        JSONObject object;
        std::apply([&](const auto&... fields) { (encodeField(object, value, fields), ...); },
                   JSONFields<T>::list);
        return object;
    }
    static T decode(const JSONDecoder& decoder) {
        T value = initial();
        std::apply([&](const auto&... fields) { (decodeField(decoder, value, fields), ...); },
                   JSONFields<T>::list);
        if constexpr (requires { JSONFields<T>::adjusted(value); })
            return JSONFields<T>::adjusted(value);
        else
            return value;
    }

  private:
    static T initial() {
        if constexpr (requires { JSONFields<T>::initial; })
            return JSONFields<T>::initial;
        else
            return {};
    }
};

}  // namespace pictal::detail
