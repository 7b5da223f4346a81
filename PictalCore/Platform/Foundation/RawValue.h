#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <optional>
#include <string_view>

/// Enumerations whose cases have a string each: their JSON, storage and command-line form.
///
/// An enumeration takes part by specialising `RawValues` beside its definition:
///
///     template <>
///     struct RawValues<BackgroundStyle> {
///         static constexpr std::array table{RawCase{BackgroundStyle::transparent, "transparent"}};
///     };
///
/// The order of the rows is the order of `allCases`.
namespace pictal {

template <class E>
struct RawCase {
    E value;
    std::string_view rawValue;
};
template <class E>
RawCase(E, const char*) -> RawCase<E>;

template <class E>
struct RawValues;

template <class E>
concept RawRepresentable = requires { RawValues<E>::table.size(); };

template <RawRepresentable E>
[[nodiscard]] constexpr std::string_view rawValue(E value) {
    for (const auto& row : RawValues<E>::table)
        if (row.value == value) return row.rawValue;
    return {};
}

/// @return the case of exactly this text, or nothing; case matters
template <RawRepresentable E>
[[nodiscard]] constexpr std::optional<E> fromRawValue(std::string_view text) {
    for (const auto& row : RawValues<E>::table)
        if (row.rawValue == text) return row.value;
    return std::nullopt;
}

template <RawRepresentable E>
[[nodiscard]] constexpr auto allCases() {
    std::array<E, RawValues<E>::table.size()> cases{};
    for (std::size_t i = 0; i < cases.size(); ++i)
        cases[i] = RawValues<E>::table[i].value;
    return cases;
}

}  // namespace pictal
