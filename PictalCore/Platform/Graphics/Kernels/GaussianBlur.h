#pragma once

#include <cstdint>
#include <span>

/// The one blur of the library. A blur value of B is a Gaussian of standard deviation B / 2.
///
/// Lengths are pixels. A standard deviation of 0 blurs nothing. A Gaussian is cut where less than
/// 1/1000 of an 8-bit level is left of it.
namespace pictal::kernels {

/// The standard deviation of a blur value; negative and NaN values blur nothing.
[[nodiscard]] constexpr double gaussianDeviation(double blur) {
    return blur > 0 ? blur / 2 : 0;
}

/// How far what is blurred spreads beyond its edge.
[[nodiscard]] constexpr double gaussianReach(double deviation) {
    return 4.5 * deviation;
}

/// What a blurred edge covers of one pixel. The edge lies at 0, with nothing to its left and
/// everything covered to its right.
/// @param left  the pixel's left edge; need not be a whole number
/// @return the mean over left…left + 1: exactly 0 or 1 beyond the reach
[[nodiscard]] double blurredEdge(double left, double deviation);

/// Blurs a mask in place, row after row from the top; nothing is covered outside it. For all of the
/// blur to be kept the mask needs a margin of gaussianReach, rounded up.
/// @param mask  coverage 0…1, width × height; the deviation is finite
void blurMask(std::span<float> mask, std::int64_t width, std::int64_t height, double deviation);

}  // namespace pictal::kernels
