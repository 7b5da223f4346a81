#pragma once

#include "PictalCore/Platform/Foundation/CGGeometry.h"

#include <cstddef>
#include <span>
#include <vector>

namespace pictal::detail {

/// Beyond this, products of coordinates would overflow.
inline constexpr CGFloat farthest = 1e100;

/// Polylines in device pixels, y down. All coordinates are finite and at most `farthest` in size.
class FlatPath {
  public:
    struct Contour {
        std::span<const CGPoint> points;
        bool closed = false;
    };

    [[nodiscard]] bool isEmpty() const { return ends_.empty(); }
    [[nodiscard]] std::size_t contourCount() const { return ends_.size(); }
    [[nodiscard]] Contour contour(std::size_t index) const;
    [[nodiscard]] std::span<const CGPoint> points() const { return points_; }

    /// Adds a point to the contour under way, but no point twice running.
    void add(CGPoint point);
    /// Ends the contour under way.
    void finish(bool closed);

  private:
    struct End {
        std::size_t end;
        bool closed;
    };
    std::vector<CGPoint> points_;
    std::vector<End> ends_;
};

}  // namespace pictal::detail
