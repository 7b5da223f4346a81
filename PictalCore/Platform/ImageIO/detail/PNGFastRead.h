#pragma once

#include "PictalCore/Platform/Graphics/Pixels/PixelBuffer.h"
#include "PictalCore/Platform/ImageIO/detail/PNGFile.h"

namespace pictal::detail {

/// Reads the common kinds, RGB and RGBA of 8 bits that are not interlaced, several times as fast as
/// libpng. Whatever is unusual about a file makes it give up: then libpng reads it from the start,
/// and its verdict holds.
/// @return whether the pixels were read; if not they are undefined
[[nodiscard]] bool readFast(const PNGFile& file, PixelBuffer& pixels);

}  // namespace pictal::detail
