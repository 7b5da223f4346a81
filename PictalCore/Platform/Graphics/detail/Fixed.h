#pragma once

#include <cstdint>

namespace pictal::detail {

/// Numbers in 1/65536: with 64 bits, exact sums of whatever a raster holds.
using Fixed = std::int64_t;

inline constexpr int fixedBits = 16;
inline constexpr Fixed fixedOne = Fixed{1} << fixedBits;

/// The nearest whole number, ties to even. Adding this number leaves no bits for a fraction.
/// @param value  less than 2^51 in size
[[nodiscard]] constexpr std::int64_t nearest(double value) {
    constexpr double shift = 0x1.8p52;
    return static_cast<std::int64_t>((value + shift) - shift);
}

/// @param value  less than 2^35 in size
[[nodiscard]] constexpr Fixed toFixed(double value) {
    return nearest(value * static_cast<double>(fixedOne));
}

}  // namespace pictal::detail
