#pragma once

#include "PictalCore/Platform/Graphics/Pixels/PixelBuffer.h"
#include "PictalCore/Platform/ImageIO/detail/PNGRowReader.h"

namespace pictal::detail {

/// Reads every kind of PNG, to the file's end, into pixels of the file's size.
[[nodiscard]] std::expected<void, PNG::ReadError> readWithLibPNG(std::span<const std::byte> bytes,
                                                                 const PNGHeader& header,
                                                                 const PNGRowReader& rows,
                                                                 PixelBuffer& pixels);

}  // namespace pictal::detail
