#pragma once

#include "PictalCore/Platform/Foundation/CGGeometry.h"

#include <cmath>
#include <optional>

namespace pictal {

/// A linear map of the plane followed by a move. Points are rows, multiplied from the left:
///
///                            | a  b |
///     (x', y') = (x, y)  ×   | c  d |   +  (tx, ty)
struct AffineTransform {
    CGFloat a = 1;
    CGFloat b = 0;
    CGFloat c = 0;
    CGFloat d = 1;
    CGFloat tx = 0;
    CGFloat ty = 0;

    [[nodiscard]] static constexpr AffineTransform identity() { return {}; }
    [[nodiscard]] static constexpr AffineTransform translation(CGFloat dx, CGFloat dy) {
        return {1, 0, 0, 1, dx, dy};
    }
    [[nodiscard]] static constexpr AffineTransform scale(CGFloat sx, CGFloat sy) {
        return {sx, 0, 0, sy, 0, 0};
    }

    /// This transform first, then `next`.
    [[nodiscard]] constexpr AffineTransform concatenated(const AffineTransform& next) const {
        const CGPoint moved = next.applied({tx, ty});
        return {a * next.a + b * next.c,
                a * next.b + b * next.d,
                c * next.a + d * next.c,
                c * next.b + d * next.d,
                moved.x,
                moved.y};
    }
    [[nodiscard]] constexpr CGPoint applied(CGPoint point) const {
        return {point.x * a + point.y * c + tx, point.x * b + point.y * d + ty};
    }
    /// What takes everything back.
    /// @return nothing where the plane is squeezed into a line, or a number is not finite
    [[nodiscard]] std::optional<AffineTransform> inverted() const {
        const CGFloat determinant = a * d - b * c;
        const AffineTransform linear{
            d / determinant, -b / determinant, -c / determinant, a / determinant, 0, 0};
        const auto inverse = translation(-tx, -ty).concatenated(linear);
        for (const CGFloat number :
             {inverse.a, inverse.b, inverse.c, inverse.d, inverse.tx, inverse.ty})
            if (!std::isfinite(number)) return std::nullopt;
        return inverse;
    }

    friend constexpr bool operator==(const AffineTransform&, const AffineTransform&) = default;
};

}  // namespace pictal
