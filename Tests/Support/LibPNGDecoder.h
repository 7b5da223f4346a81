#pragma once

#include "PictalCore/Platform/Graphics/CGImage.h"

#include <cstring>
#include <optional>
#include <span>
#include <vector>

#include <png.h>

namespace pictal {

/// What libpng's simplified interface makes of a file: a second opinion on what was written. Good
/// for 8-bit files without gamma, which it does not convert.
inline std::optional<CGImage> decodedByLibPNG(std::span<const std::byte> bytes) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_memory(&image, bytes.data(), bytes.size())) return std::nullopt;
    image.format = PNG_FORMAT_RGBA;
    std::vector<std::byte> pixels(PNG_IMAGE_SIZE(image));
    if (!png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr)) return std::nullopt;
    return CGImage::fromBytes(
        pixels,
        {image.width, image.height, std::int64_t{image.width} * 4, CGImage::Alpha::straight},
        CGColorSpace::sRGB());
}

}  // namespace pictal
