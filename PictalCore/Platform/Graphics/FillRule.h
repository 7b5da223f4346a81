#pragma once

#include <cstdint>

namespace pictal {

/// What is inside a path that crosses itself: what its contours wind around a number of times that
/// is not zero, or an odd number of times.
enum class FillRule : std::uint8_t { nonZero, evenOdd };

}  // namespace pictal
