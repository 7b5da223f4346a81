#pragma once

#include "PictalCore/Platform/Graphics/CGImage.h"
#include "PictalCore/Platform/Graphics/Pixels/PixelBuffer.h"

namespace pictal::detail {

/// What is known of the pixels of a new image.
enum class Opacity : unsigned char {
    unknown,  ///< every alpha is looked at
    opaque,
    translucent,
};

/// The image of pixels that have been drawn, which it takes over.
[[nodiscard]] CGImage imageOf(PixelBuffer&& pixels, const CGColorSpace& colorSpace,
                              Opacity opacity = Opacity::unknown);

}  // namespace pictal::detail
