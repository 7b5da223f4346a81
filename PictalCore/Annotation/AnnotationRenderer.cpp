#include "PictalCore/Annotation/AnnotationRenderer.h"

#include "PictalCore/Annotation/detail/TextTools.h"
#include "PictalCore/Annotation/detail/ToolContext.h"
#include "PictalCore/Annotation/detail/VectorTools.h"
#include "PictalCore/Platform/Graphics/BitmapContext.h"

#include <algorithm>
#include <array>
#include <utility>

namespace pictal {

namespace {

using Drawing = void (*)(const detail::ToolContext&, const ScreenshotAnnotation&);

/// What each tool draws.
struct ToolDrawing {
    AnnotationTool tool;
    Drawing draw;
};

constexpr std::array toolDrawings{
    ToolDrawing{AnnotationTool::rectangle, detail::drawRectangle},
    ToolDrawing{AnnotationTool::highlight, detail::drawRectangle},
    ToolDrawing{AnnotationTool::ellipse, detail::drawEllipse},
    ToolDrawing{AnnotationTool::line, detail::drawLine},
    ToolDrawing{AnnotationTool::arrow, detail::drawArrow},
    ToolDrawing{AnnotationTool::brush, detail::drawBrush},
    ToolDrawing{AnnotationTool::text, detail::drawText},
    ToolDrawing{AnnotationTool::number, detail::drawNumber},
};

Drawing drawingOf(AnnotationTool tool) {
    const auto* const row = std::ranges::find(toolDrawings, tool, &ToolDrawing::tool);
    return row == toolDrawings.end() ? nullptr : row->draw;
}

void draw(const detail::ToolContext& context, const ScreenshotAnnotation& annotation) {
    const Drawing drawing = drawingOf(annotation.tool);
    if (!drawing) return;
    BitmapContext& canvas = context.canvas;
    canvas.saveGState();
    canvas.setShouldAntialias(true);
    canvas.setLineWidth(annotation.style.lineWidth);
    canvas.setStrokeColor(detail::strokeColor(annotation.style));
    canvas.setFillColor(detail::fillColor(annotation.style));
    drawing(context, annotation);
    canvas.restoreGState();
}

}  // namespace

std::expected<CGImage, AnnotationRendererError> AnnotationRenderer::render(
    const CGImage& image, std::span<const ScreenshotAnnotation> annotations) const {
    if (annotations.empty()) return image;
    auto canvas = BitmapContext::make(image.width(), image.height(), CGColorSpace::sRGB());
    if (!canvas) return std::unexpected(AnnotationRendererError::cannotCreateContext);
    canvas->draw(image, CGRect(0, 0, static_cast<CGFloat>(image.width()),
                               static_cast<CGFloat>(image.height())));

    const detail::ToolContext context{*canvas, image};
    // A mosaic hides the picture, never another mark, so mosaics go under everything else.
    for (const bool mosaics : {true, false})
        for (const ScreenshotAnnotation& annotation : annotations)
            if ((annotation.tool == AnnotationTool::mosaic) == mosaics) draw(context, annotation);
    return std::move(*canvas).makeImage();
}

bool AnnotationRenderer::draws(AnnotationTool tool) {
    return drawingOf(tool) != nullptr;
}

}  // namespace pictal
