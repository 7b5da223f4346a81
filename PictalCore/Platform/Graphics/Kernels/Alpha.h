#pragma once

#include "PictalCore/Platform/Graphics/Kernels/Arithmetic.h"
#include "PictalCore/Platform/Graphics/Kernels/Targets.h"

#include <cstdint>
#include <span>

/// Between straight alpha, as files and colour management have it, and premultiplied alpha, as
/// pixels are kept.
namespace pictal::kernels {

/// Straight to premultiplied alpha.
[[nodiscard]] constexpr std::uint32_t premultiplied(std::uint32_t pixel) {
    const std::uint32_t a = alphaOf(pixel);
    return pixelOf(divideBy255(redOf(pixel) * a), divideBy255(greenOf(pixel) * a),
                   divideBy255(blueOf(pixel) * a), a);
}

/// Premultiplied to straight alpha, exactly rounded: premultiplying again gives the same word. A
/// component above its alpha counts as the alpha.
[[nodiscard]] constexpr std::uint32_t unpremultiplied(std::uint32_t pixel) {
    const std::uint32_t a = alphaOf(pixel);
    const std::uint32_t divisor = a > 1 ? a : 1;
    const auto straight = [=](std::uint32_t component) {
        const std::uint32_t bounded = component < a ? component : a;
        return (bounded * 255 + divisor / 2) / divisor;
    };
    return pixelOf(straight(redOf(pixel)), straight(greenOf(pixel)), straight(blueOf(pixel)), a);
}

/// The same, exactly, for rows; both spans have the same length.
struct AlphaKernels {
    void (*premultiply)(std::span<const std::uint32_t> from, std::span<std::uint32_t> to);
    void (*unpremultiply)(std::span<const std::uint32_t> from, std::span<std::uint32_t> to);
};

/// @param target  one that is available
[[nodiscard]] const AlphaKernels& alphaKernels(Target target = bestTarget());

}  // namespace pictal::kernels
