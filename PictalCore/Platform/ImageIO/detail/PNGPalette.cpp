#include "PictalCore/Platform/ImageIO/detail/PNGPalette.h"

#include "PictalCore/Platform/Graphics/Kernels/Alpha.h"

#include <algorithm>
#include <utility>

namespace pictal::detail {

PNGPalette::PNGPalette() {
    slots_.fill(-1);
}

std::size_t PNGPalette::slotOf(std::uint32_t pixel) const {
    // Fibonacci hashing: 2^32 divided by the golden ratio; the highest ten bits.
    std::size_t slot = pixel * 2'654'435'769U >> 22;
    static_assert(slotCount == 1 << 10);
    while (slots_[slot] >= 0 && colors_[static_cast<std::size_t>(slots_[slot])] != pixel)
        slot = (slot + 1) % slotCount;
    return slot;
}

bool PNGPalette::add(std::span<const std::uint32_t> row) {
    std::uint32_t last = ~row[0];
    for (const std::uint32_t pixel : row) {
        if (pixel == last) continue;
        last = pixel;
        const std::size_t slot = slotOf(pixel);
        if (slots_[slot] >= 0) continue;
        if (colors_.size() == greatestCount) return false;
        slots_[slot] = static_cast<std::int16_t>(colors_.size());
        colors_.push_back(pixel);
    }
    return true;
}

std::optional<PNGPalette> PNGPalette::of(const CGImage& image) {
    PNGPalette palette;
    // A few rows from everywhere tell most pictures with more colours.
    constexpr std::int64_t sparse = 61;
    for (std::int64_t y = 0; y < image.height(); y += sparse)
        if (!palette.add(image.row(y))) return std::nullopt;
    for (std::int64_t y = 0; y < image.height(); ++y)
        if (y % sparse != 0 && !palette.add(image.row(y))) return std::nullopt;
    palette.putTranslucentFirst();
    return palette;
}

void PNGPalette::putTranslucentFirst() {
    std::ranges::sort(colors_, {}, [](std::uint32_t color) {
        return std::pair(kernels::alphaOf(color) == 255, color);
    });
    slots_.fill(-1);
    for (std::size_t i = 0; i < colors_.size(); ++i)
        slots_[slotOf(colors_[i])] = static_cast<std::int16_t>(i);
}

std::vector<std::uint32_t> PNGPalette::straightColors() const {
    std::vector<std::uint32_t> straight;
    straight.reserve(colors_.size());
    for (const std::uint32_t color : colors_)
        straight.push_back(kernels::unpremultiplied(color));
    return straight;
}

bool PNGPalette::isGrey() const {
    return std::ranges::all_of(colors_, [](std::uint32_t color) {
        const std::uint32_t level = color & 255;
        return color == kernels::pixelOf(level, level, level, 255);
    });
}

int PNGPalette::bitDepth() const {
    return colors_.size() <= 2 ? 1 : colors_.size() <= 4 ? 2 : colors_.size() <= 16 ? 4 : 8;
}

void PNGPalette::pack(std::span<const std::uint32_t> row, std::uint8_t* to) const {
    const int depth = bitDepth();
    std::uint32_t last = ~row[0];
    std::uint32_t index = 0;
    std::uint32_t bits = 0;
    int filled = 0;
    for (const std::uint32_t pixel : row) {
        if (pixel != last) index = static_cast<std::uint32_t>(slots_[slotOf(pixel)]);
        last = pixel;
        bits = bits << depth | index;
        filled += depth;
        if (filled < 8) continue;
        *to++ = static_cast<std::uint8_t>(bits);
        bits = 0;
        filled = 0;
    }
    if (filled > 0) *to = static_cast<std::uint8_t>(bits << (8 - filled));
}

}  // namespace pictal::detail
