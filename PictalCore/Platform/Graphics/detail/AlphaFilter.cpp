#include "PictalCore/Platform/Graphics/detail/AlphaFilter.h"

#include "PictalCore/Platform/Graphics/Kernels/Arithmetic.h"

#include <algorithm>

namespace pictal::detail {

void AlphaFilter::solid(std::int64_t row, std::int64_t left, std::int64_t right) {
    if (source_.isOpaque()) return next_.solid(row, left, right);
    const auto pixels = source_.pixels(row, left, right - left);
    alphas_.resize(pixels.size());
    std::ranges::transform(pixels, alphas_.begin(), [](std::uint32_t pixel) {
        return static_cast<std::uint8_t>(kernels::alphaOf(pixel));
    });
    next_.varied(row, left, alphas_);
}

void AlphaFilter::varied(std::int64_t row, std::int64_t left,
                         std::span<const std::uint8_t> coverage) {
    if (source_.isOpaque()) return next_.varied(row, left, coverage);
    const auto pixels = source_.pixels(row, left, std::ssize(coverage));
    alphas_.resize(pixels.size());
    const auto weighed = [](std::uint32_t pixel, std::uint8_t covered) {
        return static_cast<std::uint8_t>(kernels::divideBy255(kernels::alphaOf(pixel) * covered));
    };
    std::ranges::transform(pixels, coverage, alphas_.begin(), weighed);
    next_.varied(row, left, alphas_);
}

}  // namespace pictal::detail
