#pragma once

#include "PictalCore/Platform/Graphics/Kernels/Targets.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

/// What is known of a picture in segments: 64 pixels of one row. Hashes tell whether two segments
/// are equal, sums how alike they are.
namespace pictal::kernels {

inline constexpr std::size_t segmentPixels = 64;
/// Segments are handled in eights; a row has at most eight of those, so that one bit a segment
/// makes a word a row.
inline constexpr std::size_t segmentBlock = 8;
inline constexpr std::size_t maximumSegments = 64;

/// Sums of 8 pixels' components: of the left and the right half, by (x / 2) mod 4.
using SegmentSums = std::array<std::uint16_t, 8>;

/// The bit of a row's word that stands for a segment.
[[nodiscard]] constexpr std::size_t segmentBit(std::size_t segment) {
    return segment % segmentBlock * 8 + segment / segmentBlock;
}

struct SegmentKernels {
    /// Hashes the segments that begin at `starts`.
    /// @return the textured ones, a bit each: their sums are more than 48 apart
    std::uint64_t (*hashSegments)(const std::uint32_t* row, std::span<const std::uint32_t> starts,
                                  std::uint32_t* hashes);
    void (*sumSegments)(const std::uint32_t* row, std::span<const std::uint32_t> starts,
                        SegmentSums* sums);
    /// Which of so many eights of hashes are the same, a bit each.
    std::uint64_t (*equalSegments)(const std::uint32_t* a, const std::uint32_t* b,
                                   std::size_t blocks);
    /// Which of the sums lie within the tolerance, all eight, a bit each.
    std::uint64_t (*alikeSegments)(const SegmentSums* a, const SegmentSums* b, std::size_t count,
                                   std::uint16_t tolerance);
    /// counts[i + 1] becomes counts[i] and the bits of words[i]; counts[0] is set by the caller.
    void (*addUp)(std::span<const std::uint64_t> words, std::uint32_t* counts);
};

/// @param target  one that is available
[[nodiscard]] const SegmentKernels& segmentKernels(Target target = bestTarget());

}  // namespace pictal::kernels
