#pragma once

#include "PictalCore/Platform/Foundation/CGGeometry.h"
#include "PictalCore/Platform/Foundation/JSON.h"

#include <variant>
#include <vector>

namespace pictal {

/// Where an annotation is: pixels of the picture that it is drawn on, the origin in its lower left
/// corner, y growing upward.
///
/// Numbers compare exactly, rectangles by the area that they cover (see `CGRect`).
struct AnnotationGeometry {
    /// Rectangles, ellipses, highlights and mosaics.
    struct Rect {
        CGRect rect;
        friend bool operator==(const Rect&, const Rect&) = default;
    };
    /// Lines, and arrows, whose head is at the end.
    struct Line {
        CGPoint start;
        CGPoint end;
        friend bool operator==(const Line&, const Line&) = default;
    };
    /// Brush strokes and mosaics along a path, in drawing order.
    struct Points {
        std::vector<CGPoint> points;
        friend bool operator==(const Points&, const Points&) = default;
    };
    /// The left end of a text's top edge, or the centre of a number.
    struct Point {
        CGPoint point;
        friend bool operator==(const Point&, const Point&) = default;
    };

    std::variant<Rect, Line, Points, Point> value;

    /// The payload if this is that case: `geometry.as<AnnotationGeometry::Line>()`.
    template <class Case>
    [[nodiscard]] constexpr const Case* as() const {
        return std::get_if<Case>(&value);
    }

    friend bool operator==(const AnnotationGeometry&, const AnnotationGeometry&) = default;
};

PICTAL_JSON_CODED(AnnotationGeometry);

}  // namespace pictal
