#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>

/// Sets of flags over a signed 64-bit raw value. Any raw value is valid; unknown bits are kept.
///
/// A set derives from the template and names its members after its definition:
///
///     struct Edges : OptionSet<Edges> {
///         using OptionSet::OptionSet;
///         static const Edges left, right;
///     };
///     inline constexpr Edges Edges::left{1}, Edges::right{2};
namespace pictal {

template <class Set>
struct OptionSet {
    std::int64_t rawValue = 0;

    // Public, since the sets inherit them.
    // NOLINTBEGIN(bugprone-crtp-constructor-accessibility)
    constexpr OptionSet() = default;
    constexpr explicit OptionSet(std::int64_t bits) : rawValue(bits) {}
    constexpr OptionSet(std::initializer_list<Set> members) {
        for (const Set& member : members)
            rawValue |= member.rawValue;
    }
    // NOLINTEND(bugprone-crtp-constructor-accessibility)

    [[nodiscard]] constexpr bool isEmpty() const { return rawValue == 0; }
    [[nodiscard]] constexpr bool contains(Set members) const {
        return (rawValue & members.rawValue) == members.rawValue;
    }
    [[nodiscard]] constexpr bool isSubsetOf(Set other) const {
        return (rawValue & other.rawValue) == rawValue;
    }
    [[nodiscard]] constexpr bool isDisjointWith(Set other) const {
        return (rawValue & other.rawValue) == 0;
    }
    constexpr void insert(Set members) { rawValue |= members.rawValue; }
    constexpr void remove(Set members) { rawValue &= ~members.rawValue; }

    friend constexpr Set operator|(Set a, Set b) { return Set(a.rawValue | b.rawValue); }
    friend constexpr Set operator&(Set a, Set b) { return Set(a.rawValue & b.rawValue); }
    friend constexpr Set operator^(Set a, Set b) { return Set(a.rawValue ^ b.rawValue); }
    friend constexpr bool operator==(Set a, Set b) { return a.rawValue == b.rawValue; }
};

}  // namespace pictal

template <class Set>
    requires std::derived_from<Set, pictal::OptionSet<Set>>
struct std::hash<Set> {
    std::size_t operator()(const Set& set) const noexcept {
        return std::hash<std::int64_t>{}(set.rawValue);
    }
};
