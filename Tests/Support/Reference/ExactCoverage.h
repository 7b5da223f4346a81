#pragma once

#include "PictalCore/Platform/Foundation/CGGeometry.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <span>
#include <vector>

/// How much of a pixel a shape covers, 0…1, by formulas that share nothing with the rasterisers.
namespace pictal::test {

/// A convex polygon: cut by the four sides of the pixel, then the area between the corners.
inline double polygonCoverage(std::vector<CGPoint> polygon, std::int64_t px, std::int64_t py) {
    const auto x = static_cast<double>(px);
    const auto y = static_cast<double>(py);
    const auto cut = [&](auto inside) {  // inside(point) is a signed distance
        std::vector<CGPoint> kept;
        for (std::size_t i = 0; i < polygon.size(); ++i) {
            const CGPoint a = polygon[i];
            const CGPoint b = polygon[(i + 1) % polygon.size()];
            const double da = inside(a);
            const double db = inside(b);
            if (da >= 0) kept.push_back(a);
            if ((da > 0 && db < 0) || (da < 0 && db > 0)) {
                const double t = da / (da - db);
                kept.push_back({a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t});
            }
        }
        polygon = kept;
    };
    cut([&](CGPoint p) { return p.x - x; });
    cut([&](CGPoint p) { return x + 1 - p.x; });
    cut([&](CGPoint p) { return p.y - y; });
    cut([&](CGPoint p) { return y + 1 - p.y; });
    double doubled = 0;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const CGPoint a = polygon[i];
        const CGPoint b = polygon[(i + 1) % polygon.size()];
        doubled += (a.x - x) * (b.y - y) - (b.x - x) * (a.y - y);
    }
    return std::abs(doubled) / 2;
}

/// Whatever lies where `distance(point)` is negative: counted at 96 × 96 points, each in a random
/// place of its own cell, so that an edge at any angle is within about a tenth of a level of 255.
/// @param distance  to the edge, to be trusted where it is under 1 px
template <class Distance>
double sampledCoverage(Distance distance, std::int64_t px, std::int64_t py) {
    constexpr int side = 96;
    const CGPoint middle{static_cast<double>(px) + 0.5, static_cast<double>(py) + 0.5};
    if (std::abs(distance(middle)) > 0.75) return distance(middle) < 0 ? 1 : 0;
    std::minstd_rand random(7);
    const auto place = [&](int cell) {
        return (cell + static_cast<double>(random()) / std::minstd_rand::max()) / side - 0.5;
    };
    int inside = 0;
    for (int i = 0; i < side; ++i)
        for (int j = 0; j < side; ++j)
            inside += distance(CGPoint{middle.x + place(j), middle.y + place(i)}) < 0 ? 1 : 0;
    return static_cast<double>(inside) / (side * side);
}

/// From a point to the polyline through `points`.
inline double distanceToPolyline(CGPoint p, std::span<const CGPoint> points) {
    double nearest = std::hypot(p.x - points[0].x, p.y - points[0].y);
    for (std::size_t i = 1; i < points.size(); ++i) {
        const CGPoint a = points[i - 1];
        const CGPoint d{points[i].x - a.x, points[i].y - a.y};
        const double square = d.x * d.x + d.y * d.y;
        const double t =
            square > 0 ? std::clamp(((p.x - a.x) * d.x + (p.y - a.y) * d.y) / square, 0.0, 1.0) : 0;
        nearest = std::min(nearest, std::hypot(p.x - a.x - t * d.x, p.y - a.y - t * d.y));
    }
    return nearest;
}

}  // namespace pictal::test
