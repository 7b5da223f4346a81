#pragma once

#include "PictalCore/Annotation/ScreenshotAnnotation.h"
#include "PictalCore/Annotation/detail/ToolContext.h"

/// The tools that draw lines and areas. A geometry of another kind draws nothing.
namespace pictal::detail {

/// The style's colours as they are drawn, the opacity included.
[[nodiscard]] CGColor strokeColor(const AnnotationStyle& style);
[[nodiscard]] CGColor fillColor(const AnnotationStyle& style);

void drawRectangle(const ToolContext& context, const ScreenshotAnnotation& annotation);
void drawEllipse(const ToolContext& context, const ScreenshotAnnotation& annotation);
void drawLine(const ToolContext& context, const ScreenshotAnnotation& annotation);
void drawArrow(const ToolContext& context, const ScreenshotAnnotation& annotation);
void drawBrush(const ToolContext& context, const ScreenshotAnnotation& annotation);

}  // namespace pictal::detail
