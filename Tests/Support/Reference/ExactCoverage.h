#pragma once

#include "PictalCore/Platform/Foundation/CGGeometry.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <span>
#include <vector>

/// How much of a pixel a shape covers, 0…1, by formulas that share nothing with the rasterisers.
namespace pictal::test {

/// A convex polygon: cut by the four sides of the pixel, then the area between the corners.
inline double polygonCoverage(std::vector<CGPoint> polygon, std::int64_t px, std::int64_t py) {
    const auto x = static_cast<double>(px), y = static_cast<double>(py);
    const auto cut = [&](auto inside) {  // inside(point) is a signed distance
        std::vector<CGPoint> kept;
        for (std::size_t i = 0; i < polygon.size(); ++i) {
            const CGPoint a = polygon[i], b = polygon[(i + 1) % polygon.size()];
            const double da = inside(a), db = inside(b), t = da / (da - db);
            if (da >= 0) kept.push_back(a);
            if ((da > 0 && db < 0) || (da < 0 && db > 0))
                kept.push_back({a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t});
        }
        polygon = kept;
    };
    cut([&](CGPoint p) { return p.x - x; });
    cut([&](CGPoint p) { return x + 1 - p.x; });
    cut([&](CGPoint p) { return p.y - y; });
    cut([&](CGPoint p) { return y + 1 - p.y; });
    double doubled = 0;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const CGPoint a = polygon[i], b = polygon[(i + 1) % polygon.size()];
        doubled += (a.x - x) * (b.y - y) - (b.x - x) * (a.y - y);
    }
    return std::abs(doubled) / 2;
}

/// Whatever lies where `distance(point)` is negative, counted at 96 × 96 points of the pixel, each
/// in a random place of its own cell: within about a tenth of a level of 255 for an edge at any
/// angle.
/// @param distance  to the edge, to be trusted where it is under 1 px
template <class Distance>
double sampledCoverage(Distance distance, std::int64_t px, std::int64_t py) {
    static const std::vector<CGPoint> samples = [] {
        constexpr int side = 96;
        std::mt19937 random(7);
        std::uniform_real_distribution<double> unit(0, 1);
        std::vector<CGPoint> all;
        for (int i = 0; i < side * side; ++i)
            all.push_back({(i / side + unit(random)) / side, (i % side + unit(random)) / side});
        return all;
    }();
    const auto x = static_cast<double>(px), y = static_cast<double>(py);
    const double middle = distance(CGPoint{x + 0.5, y + 0.5});
    if (std::abs(middle) > 0.75) return middle < 0 ? 1 : 0;
    const auto inside = std::ranges::count_if(
        samples, [&](CGPoint at) { return distance(CGPoint{x + at.x, y + at.y}) < 0; });
    return static_cast<double>(inside) / static_cast<double>(samples.size());
}

/// From a point to the polyline through `points`.
inline double distanceToPolyline(CGPoint p, std::span<const CGPoint> points) {
    double nearest = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < points.size(); ++i) {
        const CGPoint a = points[i > 0 ? i - 1 : 0];
        const CGPoint d{points[i].x - a.x, points[i].y - a.y}, q{p.x - a.x, p.y - a.y};
        const double square = d.x * d.x + d.y * d.y;
        const double t = square > 0 ? std::clamp((q.x * d.x + q.y * d.y) / square, 0.0, 1.0) : 0;
        const CGPoint apart{q.x - t * d.x, q.y - t * d.y};
        nearest = std::min(nearest, apart.x * apart.x + apart.y * apart.y);
    }
    return std::sqrt(nearest);
}

/// Points with coordinates in from…to.
inline std::vector<CGPoint> randomPoints(std::mt19937& random, std::size_t count, CGFloat from,
                                         CGFloat to) {
    std::uniform_real_distribution<CGFloat> coordinate(from, to);
    std::vector<CGPoint> points(count);
    for (CGPoint& point : points)
        point = {coordinate(random), coordinate(random)};
    return points;
}

}  // namespace pictal::test
