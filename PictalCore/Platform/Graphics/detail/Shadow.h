#pragma once

#include "PictalCore/Platform/Graphics/CGColor.h"
#include "PictalCore/Platform/Graphics/detail/Clip.h"
#include "PictalCore/Platform/Graphics/detail/CoverageSink.h"
#include "PictalCore/Platform/Graphics/detail/PixelRect.h"

#include <functional>

namespace pictal::detail {

/// A shadow under whatever is drawn.
struct ShadowSettings {
    CGSize offset;  // pixels, y upward
    CGFloat blur = 0;
    CGColor color;
};

/// What casts the shadow: reports its coverage inside an area, moved right and down by pixels.
using ShadowCaster = std::function<void(CGPoint moved, const PixelRect& area, CoverageSink& sink)>;

/// Paints the blurred shape of the caster.
/// @param visible  where the result can show: nothing beyond it is computed
/// @param painter  receives the shadow's coverage
void castShadow(const ShadowSettings& shadow, const ShadowCaster& caster, const PixelRect& visible,
                CoverageSink& painter);

}  // namespace pictal::detail
