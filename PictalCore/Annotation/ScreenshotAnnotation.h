#pragma once

#include "PictalCore/Annotation/AnnotationGeometry.h"
#include "PictalCore/Annotation/AnnotationStyle.h"
#include "PictalCore/Annotation/AnnotationTool.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace pictal {

/// One mark on a screenshot.
///
/// Nothing makes tool and geometry agree; a renderer skips what does not. The functions below build
/// marks that do. They refuse nothing: empty rectangles, paths and texts and lines without length
/// are marks too. Rectangles are stored standardised by them, as given by everything else.
struct PICTAL_API ScreenshotAnnotation {
    AnnotationTool tool = AnnotationTool::rectangle;
    AnnotationGeometry geometry;
    AnnotationStyle style;
    /// The line of a text, the label of a number; the other tools ignore it.
    std::optional<std::string> text = std::nullopt;

    [[nodiscard]] static ScreenshotAnnotation rectangle(CGRect rect, const AnnotationStyle& style);
    [[nodiscard]] static ScreenshotAnnotation ellipse(CGRect rect, const AnnotationStyle& style);
    [[nodiscard]] static ScreenshotAnnotation line(CGPoint from, CGPoint to,
                                                   const AnnotationStyle& style);
    [[nodiscard]] static ScreenshotAnnotation arrow(CGPoint from, CGPoint to,
                                                    const AnnotationStyle& style);
    [[nodiscard]] static ScreenshotAnnotation brush(std::vector<CGPoint> points,
                                                    const AnnotationStyle& style);
    /// A mosaic over a rectangle, whatever the style's mode.
    [[nodiscard]] static ScreenshotAnnotation mosaic(CGRect rect, const AnnotationStyle& style);
    /// The text is not trimmed.
    [[nodiscard]] static ScreenshotAnnotation textAt(std::string text, CGPoint point,
                                                     const AnnotationStyle& style);
    [[nodiscard]] static ScreenshotAnnotation number(std::int64_t number, CGPoint point,
                                                     const AnnotationStyle& style);
    [[nodiscard]] static ScreenshotAnnotation highlight(CGRect rect, const AnnotationStyle& style);

    /// Texts are equal by canonical equivalence: "é" equals "e" with a combining acute.
    [[nodiscard]] bool operator==(const ScreenshotAnnotation& other) const;
};

PICTAL_JSON_CODED(ScreenshotAnnotation);
PICTAL_JSON_CODED(std::vector<ScreenshotAnnotation>);

}  // namespace pictal
