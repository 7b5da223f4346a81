#pragma once

#include "PictalCore/Platform/Graphics/CGImage.h"

#include <cstdint>
#include <random>
#include <span>
#include <vector>

namespace pictal {

/// Something like a window: flat areas, hairlines, words of antialiased strokes, and a part that is
/// like a photograph, of so much of the width. Always the same for the same arguments.
[[nodiscard]] inline CGImage screenPicture(std::int64_t width, std::int64_t height,
                                           double photograph = 0.1) {
    std::mt19937 random(7);
    std::vector<std::uint32_t> words(static_cast<std::size_t>(width * height));
    const auto photographFrom =
        width - static_cast<std::int64_t>(static_cast<double>(width) * photograph);
    const auto at = [&](std::int64_t x, std::int64_t y) -> std::uint32_t& {
        return words[static_cast<std::size_t>(y * width + x)];
    };
    for (std::int64_t y = 0; y < height; ++y)
        for (std::int64_t x = 0; x < width; ++x) {
            std::uint32_t pixel = x < width / 5 ? 0xFFF2EFEC : 0xFFFFFFFF;
            if (y % 88 == 87) pixel = 0xFFDDDDDD;
            if (x >= photographFrom) {
                const auto shade = static_cast<std::uint32_t>(x * 90 / width + y * 120 / height);
                const std::uint32_t grain = static_cast<std::uint32_t>(random()) & 0x070707;
                pixel = 0xFF000000 | (shade * 0x010101 + 0x101820 + grain);
            }
            at(x, y) = pixel;
        }
    // Words: blocks of 9 × 14 whose columns have an edge of grey somewhere.
    for (std::int64_t top = 8; top + 14 < height; top += 22)
        for (std::int64_t left = 8; left + 9 < photographFrom; left += 10) {
            if (random() % 6 == 0 || top % 88 > 70) continue;
            const std::uint32_t shape = static_cast<std::uint32_t>(random() % 40) * 2'654'435'761U;
            for (std::int64_t i = 0; i < 9 * 14; ++i) {
                const std::uint32_t bit = shape >> ((i % 9) / 2 * 3 + (i / 9) / 5) & 1;
                const auto edge = static_cast<std::uint32_t>((i * 37 + shape % 97) % 256);
                if (bit != 0)
                    at(left + i % 9, top + i / 9) =
                        0xFF000000 | (i % 3 == 0 ? edge : 0x22U) * 0x010101U;
            }
        }
    return *CGImage::fromBytes(std::as_bytes(std::span(words)), {width, height, width * 4},
                               CGColorSpace::sRGB());
}

}  // namespace pictal
