#pragma once

#include "PictalCore/Platform/Foundation/JSON.h"
#include "PictalCore/Platform/Foundation/RawValue.h"

namespace pictal {

/// The kinds of marks that can be put on a screenshot.
enum class AnnotationTool {
    /// A filled, outlined, or filled and outlined rectangle.
    rectangle,
    /// The same with the ellipse that touches the rectangle's sides.
    ellipse,
    line,
    /// A line with a filled triangular head at its end.
    arrow,
    /// A freehand stroke through points.
    brush,
    /// The picture pixellated, or a solid block over it; see `AnnotationMosaicMode`.
    mosaic,
    /// One line of text.
    text,
    /// A disc with a number.
    number,
    /// Drawn as `rectangle` is; `AnnotationStyle::highlight` makes it a translucent dark box.
    highlight,
};

template <>
struct RawValues<AnnotationTool> {
    static constexpr std::array table{
        RawCase{AnnotationTool::rectangle, "rectangle"},
        RawCase{AnnotationTool::ellipse, "ellipse"},
        RawCase{AnnotationTool::line, "line"},
        RawCase{AnnotationTool::arrow, "arrow"},
        RawCase{AnnotationTool::brush, "brush"},
        RawCase{AnnotationTool::mosaic, "mosaic"},
        RawCase{AnnotationTool::text, "text"},
        RawCase{AnnotationTool::number, "number"},
        RawCase{AnnotationTool::highlight, "highlight"},
    };
};

PICTAL_JSON_CODED(AnnotationTool);

}  // namespace pictal
