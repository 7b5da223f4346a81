#pragma once

#include "PictalCore/Platform/Graphics/CGImage.h"

#include <cstdint>
#include <optional>

namespace pictal::program {

/// The pixels around (x, y), `side` across and down, each a square of its own between grey lines;
/// (x, y) is framed in black and white. Some 240 pixels wide, more where squares would be smaller
/// than 8.
/// @return nothing when there is no memory
[[nodiscard]] std::optional<CGImage> loupePicture(const CGImage& image, std::int64_t x,
                                                  std::int64_t y, std::int64_t side);

}  // namespace pictal::program
