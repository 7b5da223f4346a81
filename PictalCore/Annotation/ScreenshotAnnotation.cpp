#include "PictalCore/Annotation/ScreenshotAnnotation.h"

#include "PictalCore/Platform/Foundation/Unicode.h"

#include <utility>

namespace pictal {

namespace {

using Geometry = AnnotationGeometry;

ScreenshotAnnotation over(CGRect rect, AnnotationTool tool, const AnnotationStyle& style) {
    return {tool, {Geometry::Rect{rect.standardized()}}, style};
}

}  // namespace

ScreenshotAnnotation ScreenshotAnnotation::rectangle(CGRect rect, const AnnotationStyle& style) {
    return over(rect, AnnotationTool::rectangle, style);
}

ScreenshotAnnotation ScreenshotAnnotation::ellipse(CGRect rect, const AnnotationStyle& style) {
    return over(rect, AnnotationTool::ellipse, style);
}

ScreenshotAnnotation ScreenshotAnnotation::mosaic(CGRect rect, const AnnotationStyle& style) {
    return over(rect, AnnotationTool::mosaic, style);
}

ScreenshotAnnotation ScreenshotAnnotation::highlight(CGRect rect, const AnnotationStyle& style) {
    return over(rect, AnnotationTool::highlight, style);
}

ScreenshotAnnotation ScreenshotAnnotation::line(CGPoint from, CGPoint to,
                                                const AnnotationStyle& style) {
    return {AnnotationTool::line, {Geometry::Line{from, to}}, style};
}

ScreenshotAnnotation ScreenshotAnnotation::arrow(CGPoint from, CGPoint to,
                                                 const AnnotationStyle& style) {
    return {AnnotationTool::arrow, {Geometry::Line{from, to}}, style};
}

ScreenshotAnnotation ScreenshotAnnotation::brush(std::vector<CGPoint> points,
                                                 const AnnotationStyle& style) {
    return {AnnotationTool::brush, {Geometry::Points{std::move(points)}}, style};
}

ScreenshotAnnotation ScreenshotAnnotation::textAt(std::string text, CGPoint point,
                                                  const AnnotationStyle& style) {
    return {AnnotationTool::text, {Geometry::Point{point}}, style, std::move(text)};
}

ScreenshotAnnotation ScreenshotAnnotation::number(std::int64_t number, CGPoint point,
                                                  const AnnotationStyle& style) {
    return {AnnotationTool::number, {Geometry::Point{point}}, style, std::to_string(number)};
}

bool ScreenshotAnnotation::operator==(const ScreenshotAnnotation& other) const {
    if (tool != other.tool || geometry != other.geometry || style != other.style) return false;
    if (!text || !other.text) return text.has_value() == other.text.has_value();
    return Unicode::canonicallyEquivalent(*text, *other.text);
}

}  // namespace pictal
