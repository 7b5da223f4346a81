#pragma once

#include "PictalCore/Platform/Graphics/Kernels/FilterRows.h"

/// The loops of PNG reading: filters undone.
///
/// A row that is predicted from its left neighbours is one chain of pixels that wait for one
/// another. Rows under each other do not: where eight are left to do, they go together, each one
/// pixel behind the row above it, so that the neighbours above are always done.
namespace pictal::kernels {

/// The most rows that are done at once.
inline constexpr std::size_t unfilteredAtOnce = 8;

/// So many bytes behind the last stored row are read, whatever they are.
inline constexpr std::size_t storedRowMargin = 4;

/// Rows of a file that are not done yet: of each a filter type, then its bytes.
struct StoredRows {
    const std::uint8_t* first;
    /// Bytes from a row to the next.
    std::size_t step;
    std::size_t count;
};

/// Where the pixels of those rows go.
struct PixelRows {
    std::uint32_t* first;
    std::size_t stride;
    std::size_t width;
};

/// Undoes the filters of the first stored rows, at least one and at most `unfilteredAtOnce`.
/// @param above  the row above the first one, as it came out of this; zeros above a picture
/// @return how many rows are done; 0 when the first one has no filter type that there is
using Unfilter = std::size_t (*)(const StoredRows& from, const std::uint32_t* above,
                                 const PixelRows& to);

struct UnfilterKernels {
    /// Pixels of three bytes become opaque words, those of four words as they are.
    Unfilter rgb;
    Unfilter rgba;
    /// Pixels of one byte, or bytes of several pixels; they stay where they are.
    /// @param above  the bytes of the row above the first one; zeros above a picture
    /// @return as `Unfilter`
    std::size_t (*bytes)(std::uint8_t* first, std::size_t step, std::size_t count,
                         const std::uint8_t* above);
};

/// @param target  one that is available
[[nodiscard]] const UnfilterKernels& unfilterKernels(Target target = bestTarget());

}  // namespace pictal::kernels
