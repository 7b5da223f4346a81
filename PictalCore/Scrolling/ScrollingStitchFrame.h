#pragma once

#include "PictalCore/Platform/Graphics/CGImage.h"

#include <cstdint>

namespace pictal {

/// A picture and its place in a long one.
struct PICTAL_API ScrollingStitchFrame {
    CGImage image;
    /// The row of the long picture, counted downward, where the top row lands; may be negative.
    std::int64_t verticalPosition = 0;
};

}  // namespace pictal
