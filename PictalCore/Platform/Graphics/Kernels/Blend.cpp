#include "PictalCore/Platform/Graphics/Kernels/Blend.h"

#include "PictalCore/Platform/Graphics/Kernels/Arithmetic.h"

#include <algorithm>
#include <cstddef>

namespace pictal::kernels {

namespace {

/// Each component: (from × (255 − weight) + to × weight) / 255.
constexpr std::uint32_t mixed(std::uint32_t from, std::uint32_t to, std::uint32_t weight) {
    const std::uint32_t rest = 255 - weight;
    return pixelOf(divideBy255(redOf(from) * rest + redOf(to) * weight),
                   divideBy255(greenOf(from) * rest + greenOf(to) * weight),
                   divideBy255(blueOf(from) * rest + blueOf(to) * weight),
                   divideBy255(alphaOf(from) * rest + alphaOf(to) * weight));
}

constexpr std::uint32_t scaled(std::uint32_t pixel, std::uint32_t factor) {
    return mixed(0, pixel, factor);
}

constexpr std::uint32_t over(std::uint32_t below, std::uint32_t above) {
    return above + scaled(below, 255 - alphaOf(above));
}

}  // namespace

void blendColor(std::span<std::uint32_t> row, std::uint32_t color) {
    const std::uint32_t alpha = alphaOf(color);
    const std::uint32_t ink = color | 0xFF000000;
    if (alpha == 255) {
        std::ranges::fill(row, ink);
        return;
    }
    for (std::uint32_t& pixel : row)
        pixel = mixed(pixel, ink, alpha);
}

void blendColor(std::span<std::uint32_t> row, std::uint32_t color,
                std::span<const std::uint8_t> coverage) {
    const std::uint32_t alpha = alphaOf(color);
    const std::uint32_t ink = color | 0xFF000000;
    for (std::size_t i = 0; i < row.size(); ++i)
        row[i] = mixed(row[i], ink, divideBy255(alpha * coverage[i]));
}

void blendPixels(std::span<std::uint32_t> row, std::span<const std::uint32_t> source) {
    for (std::size_t i = 0; i < row.size(); ++i)
        row[i] = over(row[i], source[i]);
}

void blendPixels(std::span<std::uint32_t> row, std::span<const std::uint32_t> source,
                 std::span<const std::uint8_t> coverage) {
    for (std::size_t i = 0; i < row.size(); ++i)
        row[i] = over(row[i], scaled(source[i], coverage[i]));
}

void copyPixels(std::span<std::uint32_t> row, std::span<const std::uint32_t> source,
                std::span<const std::uint8_t> coverage) {
    for (std::size_t i = 0; i < row.size(); ++i)
        row[i] = mixed(row[i], source[i], coverage[i]);
}

void copyColor(std::span<std::uint32_t> row, std::uint32_t pixel,
               std::span<const std::uint8_t> coverage) {
    for (std::size_t i = 0; i < row.size(); ++i)
        row[i] = mixed(row[i], pixel, coverage[i]);
}

void eraseEvenly(std::span<std::uint32_t> row, std::uint32_t alpha) {
    for (std::uint32_t& pixel : row)
        pixel = scaled(pixel, 255 - alpha);
}

void eraseCovered(std::span<std::uint32_t> row, std::uint32_t alpha,
                  std::span<const std::uint8_t> coverage) {
    for (std::size_t i = 0; i < row.size(); ++i)
        row[i] = scaled(row[i], 255 - divideBy255(alpha * coverage[i]));
}

void erasePixels(std::span<std::uint32_t> row, std::span<const std::uint32_t> source) {
    for (std::size_t i = 0; i < row.size(); ++i)
        row[i] = scaled(row[i], 255 - alphaOf(source[i]));
}

void erasePixels(std::span<std::uint32_t> row, std::span<const std::uint32_t> source,
                 std::span<const std::uint8_t> coverage) {
    for (std::size_t i = 0; i < row.size(); ++i)
        row[i] = scaled(row[i], 255 - divideBy255(alphaOf(source[i]) * coverage[i]));
}

void scaleCoverage(std::span<std::uint8_t> coverage, std::uint8_t factor) {
    for (std::uint8_t& value : coverage)
        value = static_cast<std::uint8_t>(divideBy255(std::uint32_t{value} * factor));
}

void multiplyCoverage(std::span<std::uint8_t> coverage, std::span<const std::uint8_t> mask) {
    for (std::size_t i = 0; i < coverage.size(); ++i)
        coverage[i] = static_cast<std::uint8_t>(divideBy255(std::uint32_t{coverage[i]} * mask[i]));
}

}  // namespace pictal::kernels
