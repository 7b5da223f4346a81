#include "PictalCore/Styling/detail/RoundedMask.h"

#include <algorithm>
#include <cmath>

namespace pictal::detail {

namespace {

/// What a round corner cuts off a square of its radius. The origin is the corner that is cut off;
/// the arc runs from (0, radius) to (radius, 0) and is its own mirror image in the diagonal.
class CornerCut {
  public:
    explicit CornerCut(double radius) : radius_(radius) {}

    /// The depth of the cut at x; equally its width at depth x.
    [[nodiscard]] double depth(double x) const {
        if (x >= radius_) return 0;
        const double toCenter = radius_ - x;
        return toCenter * toCenter / (radius_ + std::sqrt(x * (2 * radius_ - x)));
    }

    /// The area that the cut takes of the pixel from (x, y) to (x + 1, y + 1).
    [[nodiscard]] double area(double x, double y) const {
        const double whole = std::clamp(depth(y + 1), x, x + 1);
        const double part = std::clamp(depth(y), whole, x + 1);
        return whole - x + depthIntegral(part) - depthIntegral(whole) - y * (part - whole);
    }

  private:
    [[nodiscard]] double depthIntegral(double x) const {
        const double toCenter = std::max(radius_ - x, 0.0);
        const double chord = std::sqrt(std::max(x * (2 * radius_ - x), 0.0));
        return radius_ * x +
               (toCenter * chord + radius_ * radius_ * std::asin(toCenter / radius_)) / 2;
    }

    double radius_;
};

}  // namespace

RoundedMask::RoundedMask(std::int64_t width, std::int64_t height, double radius)
    : width_(width), height_(height) {
    if (!(radius > 0)) return;
    const CornerCut cut(radius);
    const auto side = static_cast<std::int64_t>(std::ceil(radius));
    rows_.reserve(static_cast<std::size_t>(side));
    for (std::int64_t y = 0; y < side; ++y) {
        const auto depth = static_cast<double>(y);
        const auto outside = static_cast<std::int64_t>(cut.depth(depth + 1));
        const auto inside = std::min(static_cast<std::int64_t>(std::ceil(cut.depth(depth))), side);
        // Two corners share the middle row or column of an odd side.
        const double above = 2 * y + 1 == height ? 2 : 1;
        const std::size_t begin = coverage_.size();
        for (std::int64_t x = outside; x < inside; ++x) {
            const double beside = 2 * x + 1 == width ? 2 : 1;
            // The order of the arguments makes the corner its own mirror image to the last bit.
            const double taken =
                cut.area(static_cast<double>(std::max(x, y)), static_cast<double>(std::min(x, y)));
            coverage_.push_back(
                static_cast<float>(std::clamp(1 - above * beside * taken, 0.0, 1.0)));
        }
        rows_.push_back({outside, begin, coverage_.size()});
    }
}

RoundedMask::Row RoundedMask::row(std::int64_t y) const {
    const auto fromEnd = static_cast<std::size_t>(std::min(y, height_ - 1 - y));
    if (fromEnd >= rows_.size()) return {};
    const Extent& extent = rows_[fromEnd];
    return {extent.outside, std::span(coverage_).subspan(extent.begin, extent.end - extent.begin)};
}

}  // namespace pictal::detail
