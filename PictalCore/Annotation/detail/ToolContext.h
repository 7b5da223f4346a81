#pragma once

#include "PictalCore/Platform/Graphics/BitmapContext.h"

namespace pictal::detail {

/// What a tool may use while it draws an annotation; a call of the renderer has one.
struct ToolContext {
    /// In a saved state, with the line width and the colours of the annotation's style.
    BitmapContext& canvas;
    /// The picture without any mark, of the canvas's size.
    const CGImage& picture;
};

}  // namespace pictal::detail
