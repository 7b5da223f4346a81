#pragma once

#include "Examples/overlay/Overlay.h"
#include "PictalCore/Platform/Graphics/CGImage.h"

#include <optional>

/// Draws what an overlay shows on the display of its selection, one pixel a point.
/// @return nothing without a display under the selection or the pointer
[[nodiscard]] std::optional<pictal::CGImage> picture(const Overlay& overlay);
