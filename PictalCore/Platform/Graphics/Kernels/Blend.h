#pragma once

#include "PictalCore/Platform/Graphics/Kernels/Targets.h"

#include <cstdint>
#include <span>

/// Putting colours and pictures onto rows of premultiplied pixels. Every result is the exact blend
/// of the 8-bit values, rounded once.
///
/// Coverage says how much of each pixel is painted, in 1/255; it has the length of the row.
namespace pictal::kernels {

struct BlendKernels {
    using Row = std::span<std::uint32_t>;
    using Pixels = std::span<const std::uint32_t>;
    using Coverage = std::span<const std::uint8_t>;

    /// Paints one straight colour over the row: source-over.
    void (*blendColor)(Row row, std::uint32_t color);
    void (*blendColorCovered)(Row row, std::uint32_t color, Coverage coverage);
    /// Paints premultiplied pixels over the row: source-over.
    void (*blendPixels)(Row row, Pixels source);
    void (*blendPixelsCovered)(Row row, Pixels source, Coverage coverage);
    /// Replaces the row by premultiplied pixels, or by one, as far as it is covered.
    void (*copyPixelsCovered)(Row row, Pixels source, Coverage coverage);
    void (*copyColorCovered)(Row row, std::uint32_t pixel, Coverage coverage);
    /// Takes away a part of the row, alpha / 255, or as much of that as is covered.
    void (*erase)(Row row, std::uint32_t alpha);
    void (*eraseCovered)(Row row, std::uint32_t alpha, Coverage coverage);
    /// Takes away as much of the row as the source is opaque.
    void (*erasePixels)(Row row, Pixels source);
    void (*erasePixelsCovered)(Row row, Pixels source, Coverage coverage);
    /// coverage × factor / 255 and coverage × mask / 255, in place.
    void (*scaleCoverage)(std::span<std::uint8_t> coverage, std::uint8_t factor);
    void (*multiplyCoverage)(std::span<std::uint8_t> coverage, Coverage mask);
};

/// @param target  one that is available
[[nodiscard]] const BlendKernels& blendKernels(Target target = bestTarget());

}  // namespace pictal::kernels
