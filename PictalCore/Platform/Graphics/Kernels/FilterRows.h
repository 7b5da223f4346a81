#pragma once

#include "PictalCore/Platform/Graphics/Kernels/Targets.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

/// The loops of PNG writing and reading over one row; those that undo filters are in
/// UnfilterRows.h.
///
/// A filter replaces each byte by its difference from a prediction, made of the byte one pixel to
/// the left, the one above, and the one above left.
namespace pictal::kernels {

/// The values are those of the file format.
enum class RowFilter : std::uint8_t { none, sub, up, average, paeth };

inline constexpr std::size_t rowFilterCount = 5;

/// Rows that filters look at have so many bytes of zeros before them: the pixel left of the first.
inline constexpr std::size_t rowMargin = 8;

struct FilterRowKernels {
    /// Drops the alpha: three bytes a pixel.
    void (*packRGB)(std::span<const std::uint32_t> pixels, std::uint8_t* to);
    /// For each filter the sum of the absolute values, as signed bytes, that it would leave.
    /// @param row    has a margin, as has `above`
    /// @param pixel  bytes a pixel, at most 8
    std::array<std::uint64_t, rowFilterCount> (*filterCosts)(std::span<const std::uint8_t> row,
                                                             const std::uint8_t* above,
                                                             std::size_t pixel);
    void (*filter)(RowFilter filter, std::span<const std::uint8_t> row, const std::uint8_t* above,
                   std::size_t pixel, std::uint8_t* to);
};

/// @param target  one that is available
[[nodiscard]] const FilterRowKernels& filterRowKernels(Target target = bestTarget());

}  // namespace pictal::kernels
