#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/Platform/Foundation/CGGeometry.h"

#include <cstdint>
#include <span>
#include <vector>

namespace pictal {

/// Contours of straight lines and curves, to be filled or stroked. Coordinates are in whatever
/// space the one who draws uses. Any value can be stored; a path with a coordinate that is not
/// finite is drawn as nothing.
///
/// Segments start at the current point: the last one's end, or after `close` the contour's start.
/// A segment without a current point starts where it would first lead to. A `moveTo` alone draws
/// nothing; a contour that goes nowhere is a dot when stroked.
class PICTAL_API Path {
  public:
    /// What a segment is, and how many points it takes from `points()`.
    enum class Verb : std::uint8_t {
        move,     ///< 1: a new contour's start
        line,     ///< 1: the end
        quad,     ///< 2: control point, end
        cubic,    ///< 3: control points, end
        quarter,  ///< 2: corner, end
        close,    ///< 0
    };

    void moveTo(CGPoint point);
    void lineTo(CGPoint end);
    void quadCurveTo(CGPoint control, CGPoint end);
    void curveTo(CGPoint control1, CGPoint control2, CGPoint end);
    /// A quarter of an ellipse, exactly: it leaves the current point towards `corner` and arrives
    /// at `end` from there. The parallelogram of the three has the ellipse's centre as its fourth
    /// corner, so that transforming the points transforms the arc.
    void quarterTo(CGPoint corner, CGPoint end);
    void close();

    /// Closed contours, first along y = min y towards greater x. The null rectangle adds nothing.
    void addRect(const CGRect& rect);
    void addEllipse(const CGRect& rect);
    /// @param radius  at most half the shorter side counts; a negative or NaN one counts as 0
    void addRoundedRect(const CGRect& rect, CGFloat radius);
    void addPath(const Path& other);

    [[nodiscard]] bool isEmpty() const { return verbs_.empty(); }
    /// Of all points, those included that only steer a curve. Null when the path is empty or a
    /// coordinate is NaN.
    [[nodiscard]] CGRect boundingBox() const;

    [[nodiscard]] std::span<const Verb> verbs() const { return verbs_; }
    [[nodiscard]] std::span<const CGPoint> points() const { return points_; }

  private:
    void startIfNeeded(CGPoint first);

    std::vector<Verb> verbs_;
    std::vector<CGPoint> points_;
    CGPoint start_;
};

}  // namespace pictal
