#pragma once

#include "PictalCore/Platform/Foundation/CGGeometry.h"

/// How the initialisers of values bring numbers into range.
namespace pictal {

/// Into 0…1; NaN stays NaN.
[[nodiscard]] constexpr CGFloat clampedToUnit(CGFloat value) {
    if (value <= 0) return 0;
    return value > 1 ? 1 : value;
}

/// Negative values and NaN become 0.
[[nodiscard]] constexpr CGFloat clampedToNonNegative(CGFloat value) {
    return value >= 0 ? value : 0;
}

}  // namespace pictal
