#pragma once

#include "PictalCore/Platform/Graphics/Kernels/Targets.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

/// Pictures at another size, one axis at a time: a scaled pixel is a weighted sum of a window of
/// columns and one of rows.
///
/// Where it grows, the weights are those of a Catmull–Rom cubic, which keeps edges sharp. A window
/// is cut where the picture ends, and its weights then grow so that they still add up to 1.
namespace pictal::kernels {

/// What happens where a picture shrinks.
enum class Shrinking : std::uint8_t {
    mean,   ///< the exact mean of the area that a pixel covers: no ringing
    cubic,  ///< the cubic, as much wider as the picture gets smaller: keeps narrow gaps apart
};

/// Which pixels of one axis make up each scaled one, and how much.
struct Taps {
    struct Window {
        std::size_t first;   ///< in the source
        std::size_t count;   ///< at least 1
        std::size_t weight;  ///< where its weights start
    };
    std::vector<Window> windows;
    std::vector<float> weights;

    [[nodiscard]] std::span<const float> weightsOf(const Window& window) const {
        return std::span(weights).subspan(window.weight, window.count);
    }
};

/// A scaled axis: its pixel i covers start + i × step to start + (i + 1) × step of the source. A
/// negative step mirrors. Both are finite, the step is not 0.
struct ScaledAxis {
    double start = 0;
    double step = 1;
};

/// The windows of the scaled pixels first…first + count − 1. One that lies beyond the source is
/// that of the source's end.
/// @param size  of the source, at least 1
[[nodiscard]] Taps tapsOf(const ScaledAxis& axis, Shrinking shrinking, std::int64_t size,
                          std::int64_t first, std::int64_t count);

/// Sums are single precision, four components a pixel in the order of its bytes, the same bits at
/// every target: within 1/100 of a level for windows of up to 65,536 pixels.
struct ResampleKernels {
    /// Adds rows up, each times its weight.
    void (*sumRows)(std::span<const std::uint32_t* const> rows, std::span<const float> weights,
                    std::span<float> sums);
    /// Adds up rows of sums that sumColumns has made.
    void (*sumSums)(std::span<const float* const> rows, std::span<const float> weights,
                    std::span<float> sums);
    /// One pixel a window. The row starts with the source's pixel `origin`.
    void (*sumColumns)(std::span<const float> row, std::size_t origin, const Taps& taps,
                       std::span<float> sums);
    /// Rounds. A cubic goes beyond what it passes through, so components are cut to 0…alpha.
    void (*toPixels)(std::span<const float> sums, std::span<std::uint32_t> pixels);
};

/// @param target  one that is available
[[nodiscard]] const ResampleKernels& resampleKernels(Target target = bestTarget());

}  // namespace pictal::kernels
