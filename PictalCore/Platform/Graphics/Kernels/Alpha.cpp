#include "PictalCore/Platform/Graphics/Kernels/Alpha.h"

#include <cstddef>

namespace pictal::kernels {

namespace {

using Words = std::span<const std::uint32_t>;
using MutableWords = std::span<std::uint32_t>;

PICTAL_BODY std::uint32_t straightComponent(std::uint32_t component, std::uint32_t alpha) {
    // A quotient of numbers below 2^17 is at least 1 / 255 away from the next whole one, or is it;
    // rounding to float does not reach that far.
    const std::uint32_t divisor = alpha > 1 ? alpha : 1;
    const std::uint32_t bounded = component < alpha ? component : alpha;
    const auto dividend = static_cast<std::int32_t>(bounded * 255 + divisor / 2);
    return static_cast<std::uint32_t>(static_cast<std::int32_t>(
        static_cast<float>(dividend) / static_cast<float>(static_cast<std::int32_t>(divisor))));
}

PICTAL_BODY void unpremultiplyBody(Words from, MutableWords to) {
    for (std::size_t i = 0; i < from.size(); ++i) {
        const std::uint32_t pixel = from[i];
        const std::uint32_t alpha = alphaOf(pixel);
        to[i] = pixelOf(straightComponent(redOf(pixel), alpha),
                        straightComponent(greenOf(pixel), alpha),
                        straightComponent(blueOf(pixel), alpha), alpha);
    }
}

PICTAL_BODY void premultiplyBody(Words from, MutableWords to) {
    for (std::size_t i = 0; i < from.size(); ++i)
        to[i] = premultiplied(from[i]);
}

template <template <auto> class At>
constexpr AlphaKernels tableAt{At<premultiplyBody>::run, At<unpremultiplyBody>::run};

}  // namespace

const AlphaKernels& alphaKernels(Target target) {
    return tableFor(target, tableAt<AtPlain>, tableAt<AtV3>, tableAt<AtV4>);
}

}  // namespace pictal::kernels
