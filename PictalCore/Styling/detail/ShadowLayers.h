#pragma once

#include "PictalCore/Styling/ShadowStyle.h"

#include <array>

namespace pictal::detail {

/// One layer of the card's shadow, in pixels; a positive `offsetY` is downward.
struct ShadowLayerMetrics {
    CGFloat offsetX = 0;
    CGFloat offsetY = 0;
    CGFloat blur = 0;

    friend constexpr bool operator==(const ShadowLayerMetrics&,
                                     const ShadowLayerMetrics&) = default;
};

/// The layers from the lowest up: tight, main and wide. An offset that is NaN counts as 0.
[[nodiscard]] std::array<ShadowLayerMetrics, 3> shadowLayers(const ShadowStyle& style);

/// How much of the shadow's opacity each layer has.
inline constexpr std::array<CGFloat, 3> shadowLayerOpacities{0.46, 1, 0.38};

/// The margin that the shadow needs on every side of the picture: a whole number, or infinity.
[[nodiscard]] CGFloat shadowPadding(const ShadowStyle& style);

}  // namespace pictal::detail
