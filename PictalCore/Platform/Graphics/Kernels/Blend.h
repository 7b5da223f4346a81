#pragma once

#include <cstdint>
#include <span>

/// Putting colours and pictures onto rows of premultiplied pixels. Every result is the exact blend
/// of the 8-bit values, rounded once.
///
/// Coverage says how much of each pixel is painted, in 1/255; it has the length of the row.
namespace pictal::kernels {

/// Paints one colour over the row: source-over.
/// @param color  straight, not premultiplied
void blendColor(std::span<std::uint32_t> row, std::uint32_t color);
void blendColor(std::span<std::uint32_t> row, std::uint32_t color,
                std::span<const std::uint8_t> coverage);

/// Paints premultiplied pixels over the row: source-over.
void blendPixels(std::span<std::uint32_t> row, std::span<const std::uint32_t> source);
void blendPixels(std::span<std::uint32_t> row, std::span<const std::uint32_t> source,
                 std::span<const std::uint8_t> coverage);

/// Replaces the row by premultiplied pixels as far as it is covered.
void copyPixels(std::span<std::uint32_t> row, std::span<const std::uint32_t> source,
                std::span<const std::uint8_t> coverage);

/// Replaces the row by one premultiplied pixel as far as it is covered.
void copyColor(std::span<std::uint32_t> row, std::uint32_t pixel,
               std::span<const std::uint8_t> coverage);

/// Takes away a part of the row, alpha / 255, or as much of that as is covered.
void eraseEvenly(std::span<std::uint32_t> row, std::uint32_t alpha);
void eraseCovered(std::span<std::uint32_t> row, std::uint32_t alpha,
                  std::span<const std::uint8_t> coverage);

/// Takes away as much of the row as the source is opaque.
void erasePixels(std::span<std::uint32_t> row, std::span<const std::uint32_t> source);
void erasePixels(std::span<std::uint32_t> row, std::span<const std::uint32_t> source,
                 std::span<const std::uint8_t> coverage);

/// coverage × factor / 255, in place.
void scaleCoverage(std::span<std::uint8_t> coverage, std::uint8_t factor);
/// coverage × mask / 255, in place.
void multiplyCoverage(std::span<std::uint8_t> coverage, std::span<const std::uint8_t> mask);

}  // namespace pictal::kernels
