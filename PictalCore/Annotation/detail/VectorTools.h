#pragma once

#include "PictalCore/Annotation/ScreenshotAnnotation.h"
#include "PictalCore/Platform/Graphics/BitmapContext.h"

/// The tools that draw lines and areas. Each draws on a canvas whose line width and colours are
/// those of the annotation's style, and draws nothing for a geometry of another kind.
namespace pictal::detail {

/// The style's colours as they are drawn, the opacity included.
[[nodiscard]] CGColor strokeColor(const AnnotationStyle& style);
[[nodiscard]] CGColor fillColor(const AnnotationStyle& style);

void drawRectangle(BitmapContext& canvas, const ScreenshotAnnotation& annotation);
void drawEllipse(BitmapContext& canvas, const ScreenshotAnnotation& annotation);
void drawLine(BitmapContext& canvas, const ScreenshotAnnotation& annotation);
void drawArrow(BitmapContext& canvas, const ScreenshotAnnotation& annotation);
void drawBrush(BitmapContext& canvas, const ScreenshotAnnotation& annotation);

}  // namespace pictal::detail
