#pragma once

#include <cstdint>

/// The arithmetic of 8-bit pixels. A pixel is a 32-bit word: red in the low byte, then green, blue
/// and alpha.
namespace pictal::kernels {

/// x / 255, exactly rounded, for 0 ≤ x ≤ 255 × 255.
[[nodiscard]] constexpr std::uint32_t divideBy255(std::uint32_t x) {
    return ((x + 128) * 257) >> 16;
}

[[nodiscard]] constexpr std::uint32_t redOf(std::uint32_t pixel) {
    return pixel & 255;
}
[[nodiscard]] constexpr std::uint32_t greenOf(std::uint32_t pixel) {
    return (pixel >> 8) & 255;
}
[[nodiscard]] constexpr std::uint32_t blueOf(std::uint32_t pixel) {
    return (pixel >> 16) & 255;
}
[[nodiscard]] constexpr std::uint32_t alphaOf(std::uint32_t pixel) {
    return pixel >> 24;
}

[[nodiscard]] constexpr std::uint32_t pixelOf(std::uint32_t red, std::uint32_t green,
                                              std::uint32_t blue, std::uint32_t alpha) {
    return red | green << 8 | blue << 16 | alpha << 24;
}

/// A component that was computed in floating point, 0…255, rounded. Unlike std::lround it
/// vectorises.
[[nodiscard]] constexpr std::uint32_t nearestLevel(float level) {
    // NOLINTNEXTLINE(bugprone-incorrect-roundings): right for what is not negative
    return static_cast<std::uint32_t>(static_cast<std::int32_t>(level + 0.5F));
}

}  // namespace pictal::kernels
