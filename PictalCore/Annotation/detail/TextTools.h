#pragma once

#include "PictalCore/Annotation/ScreenshotAnnotation.h"
#include "PictalCore/Annotation/detail/ToolContext.h"

/// The tools that write. A geometry of another kind, or no text, draws nothing.
namespace pictal::detail {

/// A line that hangs from the point at its upper left, with an outline under its ink.
void drawText(const ToolContext& context, const ScreenshotAnnotation& annotation);

/// A disc around the point, with the text in its middle.
void drawNumber(const ToolContext& context, const ScreenshotAnnotation& annotation);

}  // namespace pictal::detail
