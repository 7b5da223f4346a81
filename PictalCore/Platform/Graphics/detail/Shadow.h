#pragma once

#include "PictalCore/Platform/Graphics/CGColor.h"
#include "PictalCore/Platform/Graphics/detail/CoverageSink.h"
#include "PictalCore/Platform/Graphics/detail/PixelRect.h"
#include "PictalCore/Platform/Graphics/detail/Shape.h"

namespace pictal::detail {

/// A shadow under whatever is drawn.
struct ShadowSettings {
    CGSize offset;  // pixels, y upward
    CGFloat blur = 0;
    CGColor color;
};

/// Paints the blurred shape.
/// @param visible  where the result can show: nothing beyond it is computed
/// @param painter  receives the shadow's coverage
void castShadow(const ShadowSettings& shadow, const Shape& shape, const PixelRect& visible,
                CoverageSink& painter);

}  // namespace pictal::detail
