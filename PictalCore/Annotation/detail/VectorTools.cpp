#include "PictalCore/Annotation/detail/VectorTools.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace pictal::detail {

namespace {

bool fillShows(const AnnotationStyle& style) {
    return style.fill.alpha * style.opacity > 0;
}
bool strokeShows(const AnnotationStyle& style) {
    return style.stroke.alpha * style.opacity > 0;
}
bool lineShows(const AnnotationStyle& style) {
    return style.lineWidth > 0 && strokeShows(style);
}

/// How the two shapes in a rectangle are drawn.
struct Frame {
    void (BitmapContext::*fill)(const CGRect&);
    void (BitmapContext::*stroke)(const CGRect&);
};
constexpr Frame rectangleFrame{&BitmapContext::fill, &BitmapContext::stroke};
constexpr Frame ellipseFrame{&BitmapContext::fillEllipse, &BitmapContext::strokeEllipse};

/// The fill, and the outline inside the rectangle's edges. A frame that is flatter than its outline
/// is wide is outline all over.
void drawFrame(const Frame& frame, const ToolContext& context,
               const ScreenshotAnnotation& annotation) {
    const auto* geometry = annotation.geometry.as<AnnotationGeometry::Rect>();
    if (!geometry) return;
    BitmapContext& canvas = context.canvas;
    const AnnotationStyle& style = annotation.style;
    if (fillShows(style)) (canvas.*frame.fill)(geometry->rect);
    if (!lineShows(style)) return;
    const CGRect middle = geometry->rect.insetBy(style.lineWidth / 2, style.lineWidth / 2);
    if (!middle.isNull()) return (canvas.*frame.stroke)(middle);
    canvas.setFillColor(strokeColor(style));
    (canvas.*frame.fill)(geometry->rect);
}

Path polyline(std::span<const CGPoint> points) {
    Path path;
    path.moveTo(points.front());
    for (const CGPoint point : points.subspan(1))
        path.lineTo(point);
    return path;
}

/// A triangle whose tip is the line's end and whose sides lean back by π/7 from the shaft.
void drawArrowHead(BitmapContext& canvas, const AnnotationGeometry::Line& line,
                   const AnnotationStyle& style) {
    constexpr CGFloat halfAngle = std::numbers::pi / 7;
    const CGFloat dx = line.end.x - line.start.x;
    const CGFloat dy = line.end.y - line.start.y;
    if (dx == 0 && dy == 0) return;
    if (!fillShows(style) && !strokeShows(style)) return;
    const CGFloat angle = std::atan2(dy, dx);
    const CGFloat length = std::max(10.0, 4 * style.lineWidth);
    const auto corner = [&](CGFloat direction) {
        return CGPoint{line.end.x - length * std::cos(direction),
                       line.end.y - length * std::sin(direction)};
    };
    Path head;
    head.moveTo(line.end);
    head.lineTo(corner(angle - halfAngle));
    head.lineTo(corner(angle + halfAngle));
    head.close();
    if (!fillShows(style)) canvas.setFillColor(strokeColor(style));
    canvas.fill(head);
}

}  // namespace

CGColor strokeColor(const AnnotationStyle& style) {
    return style.stroke.cgColor().withAlpha(style.stroke.alpha * style.opacity);
}

CGColor fillColor(const AnnotationStyle& style) {
    return style.fill.cgColor().withAlpha(style.fill.alpha * style.opacity);
}

void drawRectangle(const ToolContext& context, const ScreenshotAnnotation& annotation) {
    drawFrame(rectangleFrame, context, annotation);
}

void drawEllipse(const ToolContext& context, const ScreenshotAnnotation& annotation) {
    drawFrame(ellipseFrame, context, annotation);
}

void drawLine(const ToolContext& context, const ScreenshotAnnotation& annotation) {
    const auto* line = annotation.geometry.as<AnnotationGeometry::Line>();
    if (!line || !lineShows(annotation.style)) return;
    context.canvas.stroke(polyline(std::array{line->start, line->end}));
}

void drawArrow(const ToolContext& context, const ScreenshotAnnotation& annotation) {
    drawLine(context, annotation);
    if (const auto* line = annotation.geometry.as<AnnotationGeometry::Line>())
        drawArrowHead(context.canvas, *line, annotation.style);
}

void drawBrush(const ToolContext& context, const ScreenshotAnnotation& annotation) {
    const auto* path = annotation.geometry.as<AnnotationGeometry::Points>();
    if (!path || path->points.empty() || !lineShows(annotation.style)) return;
    if (path->points.size() > 1) {
        context.canvas.stroke(polyline(path->points));
        return;
    }
    // A tap is a dot that can be seen, however fine the brush.
    const CGPoint center = path->points.front();
    const CGFloat radius = std::max(1.0, annotation.style.lineWidth / 2);
    context.canvas.setFillColor(strokeColor(annotation.style));
    context.canvas.fillEllipse(
        CGRect(center.x - radius, center.y - radius, 2 * radius, 2 * radius));
}

}  // namespace pictal::detail
