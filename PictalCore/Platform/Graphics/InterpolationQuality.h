#pragma once

#include <cstdint>

namespace pictal {

/// How an image is drawn that does not fall on the canvas's pixels.
enum class InterpolationQuality : std::uint8_t {
    none,  ///< each pixel from the image's nearest one
    high,  ///< exact means where it shrinks, a Catmull–Rom cubic where it grows
};

}  // namespace pictal
