#pragma once

#include <cstdint>

/// macOS virtual key codes: positions on an ANSI keyboard, not characters. They follow no order, so
/// none can be worked out from another.
namespace pictal::KeyCode {

inline constexpr std::uint16_t a = 0;
inline constexpr std::uint16_t s = 1;
inline constexpr std::uint16_t d = 2;
inline constexpr std::uint16_t f = 3;
inline constexpr std::uint16_t h = 4;
inline constexpr std::uint16_t g = 5;
inline constexpr std::uint16_t z = 6;
inline constexpr std::uint16_t x = 7;
inline constexpr std::uint16_t c = 8;
inline constexpr std::uint16_t v = 9;
inline constexpr std::uint16_t b = 11;
inline constexpr std::uint16_t q = 12;
inline constexpr std::uint16_t w = 13;
inline constexpr std::uint16_t e = 14;
inline constexpr std::uint16_t r = 15;
inline constexpr std::uint16_t t = 17;
inline constexpr std::uint16_t digit1 = 18;
inline constexpr std::uint16_t digit2 = 19;
inline constexpr std::uint16_t digit3 = 20;
inline constexpr std::uint16_t digit4 = 21;
inline constexpr std::uint16_t digit5 = 23;
inline constexpr std::uint16_t digit6 = 22;
inline constexpr std::uint16_t digit7 = 26;
inline constexpr std::uint16_t digit8 = 28;
inline constexpr std::uint16_t digit9 = 25;
inline constexpr std::uint16_t o = 31;
inline constexpr std::uint16_t u = 32;
inline constexpr std::uint16_t i = 34;
inline constexpr std::uint16_t p = 35;
inline constexpr std::uint16_t l = 37;
inline constexpr std::uint16_t j = 38;
inline constexpr std::uint16_t k = 40;
inline constexpr std::uint16_t n = 45;
inline constexpr std::uint16_t m = 46;
inline constexpr std::uint16_t space = 49;
inline constexpr std::uint16_t tab = 48;
inline constexpr std::uint16_t escape = 53;
inline constexpr std::uint16_t comma = 43;

}  // namespace pictal::KeyCode
