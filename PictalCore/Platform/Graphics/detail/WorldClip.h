#pragma once

#include "PictalCore/Platform/Foundation/CGGeometry.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace pictal::detail {

/// No raster reaches farther from the origin than this (2^23 px), and inside it fixed point numbers
/// fit their 64 bits with room for products.
inline constexpr CGFloat worldEdge = 0x1p28;

/// The x at which the line through a and b crosses this y. The products keep all their bits: for
/// ends as far out as 1e18 px the answer near the origin is right to a small part of a pixel.
[[nodiscard]] inline CGFloat crossing(CGPoint a, CGPoint b, CGFloat y) {
    const CGFloat product = b.x * a.y;
    const CGFloat lost = std::fma(b.x, a.y, -product);
    const CGFloat determinant = std::fma(a.x, b.y, -product) - lost;
    return (determinant + y * (b.x - a.x)) / (b.y - a.y);
}

/// Calls `use(from, to)` for the pieces of an edge that leads down: inside the world as they are,
/// what is left or right of it moved onto its side, what is above or below left out. Pieces share
/// their ends.
template <class Use>
void forPiecesInWorld(CGPoint upper, CGPoint lower, Use use) {
    const auto isInside = [](CGPoint p) {
        return std::abs(p.x) <= worldEdge && std::abs(p.y) <= worldEdge;
    };
    if (isInside(upper) && isInside(lower)) return use(upper, lower);

    const CGFloat top = std::clamp(upper.y, -worldEdge, worldEdge);
    const CGFloat bottom = std::clamp(lower.y, -worldEdge, worldEdge);
    const auto yWhereXIs = [&](CGFloat x) {
        if (upper.x == lower.x) return top;
        return std::clamp(crossing({upper.y, upper.x}, {lower.y, lower.x}, x), top, bottom);
    };
    const auto pointAt = [&](CGFloat y) {
        const CGFloat x = y == upper.y   ? upper.x
                          : y == lower.y ? lower.x
                                         : crossing(upper, lower, y);
        return CGPoint{std::clamp(x, -worldEdge, worldEdge), y};
    };
    std::array ys{top, yWhereXIs(-worldEdge), yWhereXIs(worldEdge), bottom};
    std::sort(ys.begin(), ys.end());
    for (std::size_t i = 1; i < ys.size(); ++i)
        if (ys[i - 1] < ys[i]) use(pointAt(ys[i - 1]), pointAt(ys[i]));
}

}  // namespace pictal::detail
