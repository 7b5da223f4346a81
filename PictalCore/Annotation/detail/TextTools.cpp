#include "PictalCore/Annotation/detail/TextTools.h"

#include "PictalCore/Annotation/AnnotationNumberAppearance.h"
#include "PictalCore/Annotation/detail/VectorTools.h"
#include "PictalCore/Platform/Text/TextLine.h"

#include <algorithm>

namespace pictal::detail {

namespace {

/// Of the outline around glyphs, half of which the ink covers; 0 for none.
CGFloat outlineWidth(const AnnotationStyle& style) {
    const bool shows = style.textOutline.alpha * style.opacity > 0 && style.textOutlineWidth > 0;
    return shows ? std::max(style.textOutlineWidth, style.fontSize / 1000) : 0;
}

/// @param baseline  where the line begins
/// @param outline   the width of a stroke in the stroke colour, which goes under the ink
void drawLine(BitmapContext& canvas, const TextLine& line, CGPoint baseline, const CGColor& ink,
              CGFloat outline) {
    canvas.concatenate(AffineTransform::translation(baseline.x, baseline.y));
    const CGRect visible(-baseline.x, -baseline.y, static_cast<CGFloat>(canvas.width()),
                         static_cast<CGFloat>(canvas.height()));
    const Path glyphs = line.outlines(visible.insetBy(-outline / 2, -outline / 2));
    if (outline > 0) {
        canvas.setLineWidth(outline);
        canvas.stroke(glyphs);
    }
    canvas.setFillColor(ink);
    canvas.fill(glyphs);

    canvas.setInterpolationQuality(InterpolationQuality::high);
    canvas.setAlpha(ink.alpha);
    for (const TextLine::ColorGlyph& glyph : line.colorGlyphs(visible))
        canvas.draw(glyph.image, glyph.rect);
}

}  // namespace

void drawText(const ToolContext& context, const ScreenshotAnnotation& annotation) {
    const auto* at = annotation.geometry.as<AnnotationGeometry::Point>();
    if (!at || !annotation.text || annotation.text->empty()) return;
    const AnnotationStyle& style = annotation.style;
    const TextLine line(*annotation.text, style.fontSize);
    context.canvas.setStrokeColor(
        style.textOutline.cgColor().withAlpha(style.textOutline.alpha * style.opacity));
    drawLine(context.canvas, line, {at->point.x, at->point.y - line.ascent()}, strokeColor(style),
             outlineWidth(style));
}

void drawNumber(const ToolContext& context, const ScreenshotAnnotation& annotation) {
    const auto* at = annotation.geometry.as<AnnotationGeometry::Point>();
    if (!at || !annotation.text) return;
    const AnnotationStyle& style = annotation.style;
    const CGPoint center = at->point;
    const CGFloat diameter = std::max(22.0, 1.45 * style.fontSize);
    if (style.fill.alpha * style.opacity > 0)
        context.canvas.fillEllipse(
            CGRect(center.x - diameter / 2, center.y - diameter / 2, diameter, diameter));

    const TextLine line(*annotation.text, std::max(10.0, 0.46 * diameter), FontWeight::bold);
    const CGPoint baseline{center.x - line.width() / 2,
                           center.y - (line.ascent() - line.descent()) / 2};
    const CGColor ink = AnnotationNumberAppearance::foreground(style.fill).cgColor();
    drawLine(context.canvas, line, baseline, ink.withAlpha(style.opacity), 0);
}

}  // namespace pictal::detail
