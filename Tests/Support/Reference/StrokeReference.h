#pragma once

#include "PictalCore/Platform/Foundation/CGGeometry.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

/// What a stroke covers of a pixel row, the plain way: on many lines, the union of what each line
/// cuts out of two discs and a rectangle a segment.
namespace pictal::test {

/// What the line at y cuts out of the segment's surroundings; low > high where nothing.
inline std::pair<double, double> crossSection(CGPoint a, CGPoint b, double radius, double y) {
    double low = HUGE_VAL, high = -HUGE_VAL;
    const auto take = [&](double x) { low = std::min(low, x), high = std::max(high, x); };
    for (const CGPoint end : {a, b})
        if (const double square = radius * radius - (y - end.y) * (y - end.y); square >= 0)
            take(end.x - std::sqrt(square)), take(end.x + std::sqrt(square));
    const double length = std::hypot(b.x - a.x, b.y - a.y);
    if (length == 0) return {low, high};
    const double nx = (a.y - b.y) / length * radius, ny = (b.x - a.x) / length * radius;
    const CGPoint corners[] = {
        {a.x + nx, a.y + ny}, {b.x + nx, b.y + ny}, {b.x - nx, b.y - ny}, {a.x - nx, a.y - ny}};
    for (int i = 0; i < 4; ++i) {
        const CGPoint u = corners[i], v = corners[(i + 1) % 4];
        if ((u.y <= y) != (v.y <= y)) take(u.x + (v.x - u.x) * (y - u.y) / (v.y - u.y));
    }
    return {low, high};
}

/// The share of each pixel of columns left…right − 1 of a row that lies within half of `width` of
/// the polyline.
inline std::vector<double> strokedRow(std::span<const CGPoint> points, double width,
                                      std::int64_t row, std::int64_t left, std::int64_t right) {
    constexpr int lines = 1024;
    std::vector<double> shares(static_cast<std::size_t>(right - left));
    std::vector<std::pair<double, double>> sections;
    for (int line = 0; line < lines; ++line) {
        const double y = static_cast<double>(row) + (line + 0.5) / lines;
        sections.clear();
        for (std::size_t i = 0; i < points.size(); ++i) {
            const CGPoint a = points[i > 0 ? i - 1 : 0], b = points[i];
            if (std::min(a.y, b.y) - width > y || std::max(a.y, b.y) + width < y) continue;
            const auto section = crossSection(a, b, width / 2, y);
            if (section.first < section.second) sections.push_back(section);
        }
        std::ranges::sort(sections);
        auto done = static_cast<double>(left);
        for (const auto& [low, high] : sections) {
            const double from = std::max(low, done),
                         to = std::min(high, static_cast<double>(right));
            done = std::max(done, to);
            for (double x = std::floor(from); from < to && x < to; ++x)
                shares[static_cast<std::size_t>(x - static_cast<double>(left))] +=
                    (std::min(to, x + 1) - std::max(from, x)) / lines;
        }
    }
    return shares;
}

}  // namespace pictal::test
