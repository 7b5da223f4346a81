#pragma once

#include "PictalCore/Platform/Graphics/Kernels/FilterRows.h"

namespace pictal::kernels {

/// Undoes a filter and makes words of the pixels: of three bytes opaque ones, of four as they are.
/// @param from   one byte behind the row must be readable
/// @param above  the row above as words that came out of this; zeros above the first row
void unfilterRGB(RowFilter filter, const std::uint8_t* from, std::span<const std::uint32_t> above,
                 std::span<std::uint32_t> to);
void unfilterRGBA(RowFilter filter, const std::uint8_t* from, std::span<const std::uint32_t> above,
                  std::span<std::uint32_t> to);

}  // namespace pictal::kernels
