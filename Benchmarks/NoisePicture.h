#pragma once

#include "PictalCore/Platform/Graphics/CGImage.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace pictal {

/// An opaque picture in which no two neighbours are alike.
[[nodiscard]] inline CGImage noisePicture(std::int64_t width, std::int64_t height,
                                          const CGColorSpace& space = CGColorSpace::sRGB()) {
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width * height));
    std::uint32_t state = 1;
    for (std::uint32_t& pixel : pixels)
        pixel = (state = state * 1664525 + 1013904223) | 0xFF000000;
    return CGImage::fromBytes(std::as_bytes(std::span(pixels)), {width, height, width * 4}, space)
        .value();
}

}  // namespace pictal
