#include "PictalCore/Annotation/AnnotationDraftBuilder.h"

#include "PictalCore/Platform/Foundation/Unicode.h"

#include <cmath>

namespace pictal::AnnotationDraftBuilder {

namespace {

using Annotation = ScreenshotAnnotation;

CGRect dragRectangle(CGPoint start, CGPoint current) {
    const CGFloat x = current.x < start.x ? current.x : start.x;
    const CGFloat y = current.y < start.y ? current.y : start.y;
    return CGRect(x, y, std::abs(current.x - start.x), std::abs(current.y - start.y)).integral();
}

std::optional<Annotation> path(AnnotationTool tool, std::span<const CGPoint> points,
                               const AnnotationStyle& style) {
    if (points.empty()) return std::nullopt;
    return Annotation{tool, {AnnotationGeometry::Points{{points.begin(), points.end()}}}, style};
}

}  // namespace

std::optional<Annotation> annotation(AnnotationTool tool, CGPoint start, CGPoint current,
                                     std::span<const CGPoint> points, std::string_view text,
                                     std::int64_t number, const AnnotationStyle& style) {
    switch (tool) {
        case AnnotationTool::rectangle:
            return Annotation::rectangle(dragRectangle(start, current), style);
        case AnnotationTool::ellipse:
            return Annotation::ellipse(dragRectangle(start, current), style);
        case AnnotationTool::highlight:
            return Annotation::highlight(dragRectangle(start, current), style);
        case AnnotationTool::line:
            return Annotation::line(start, current, style);
        case AnnotationTool::arrow:
            return Annotation::arrow(start, current, style);
        case AnnotationTool::brush:
            return path(tool, points, style);
        case AnnotationTool::mosaic:
            if (style.mosaicMode == AnnotationMosaicMode::smear) return path(tool, points, style);
            return Annotation::mosaic(dragRectangle(start, current), style);
        case AnnotationTool::text: {
            const std::string_view trimmed = Unicode::trimmingWhiteSpace(text);
            if (trimmed.empty()) return std::nullopt;
            return Annotation::textAt(std::string(trimmed), start, style);
        }
        case AnnotationTool::number:
            return Annotation::number(number, start, style);
    }
    return std::nullopt;
}

}  // namespace pictal::AnnotationDraftBuilder
