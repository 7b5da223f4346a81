#pragma once

#include "PictalCore/Platform/Graphics/Pixels/ImageOfPixels.h"
#include "PictalCore/Platform/Graphics/Pixels/PixelBuffer.h"
#include "PictalCore/Platform/ImageIO/detail/PNGRowReader.h"

namespace pictal::detail {

/// Pixel memory for a file, with the room that `readFast` works in.
/// @return nothing when there is not enough
[[nodiscard]] std::optional<PixelBuffer> makeBufferFor(const PNGFile& file);

/// Reads the common kinds, of 8 bits a channel or less and not interlaced, several times as fast as
/// libpng. Whatever is unusual about a file makes it give up: then libpng reads it from the start,
/// and its verdict holds.
/// @param rows    of the same file
/// @param pixels  from `makeBufferFor`
/// @return whether the picture is opaque; nothing when it gave up, and the pixels are undefined
[[nodiscard]] std::optional<Opacity> readFast(const PNGFile& file, const PNGRowReader& rows,
                                              PixelBuffer& pixels);

}  // namespace pictal::detail
