#include "PictalCore/Styling/detail/ShadowLayers.h"

#include <algorithm>
#include <cmath>

namespace pictal::detail {

std::array<ShadowLayerMetrics, 3> shadowLayers(const ShadowStyle& style) {
    const CGFloat x = std::isnan(style.offsetX) ? 0 : style.offsetX;
    const CGFloat y = std::isnan(style.offsetY) ? 0 : style.offsetY;
    return {
        {{x, y * 0.32, style.blur * 0.45}, {x, y, style.blur}, {x, y * 1.55, style.blur * 1.45}}};
}

CGFloat shadowPadding(const ShadowStyle& style) {
    if (!(style.opacity > 0) || !(style.blur > 0)) return 0;
    CGFloat reach = 0;
    for (const ShadowLayerMetrics& layer : shadowLayers(style))
        reach = std::max(reach,
                         layer.blur + std::max(std::abs(layer.offsetX), std::abs(layer.offsetY)));
    return std::ceil(reach) + 6;
}

}  // namespace pictal::detail
