#include "PictalCore/Platform/Graphics/detail/EllipseOutline.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace pictal::detail {

namespace {

/// Fewer would not look round, and more than any picture shows.
constexpr CGFloat fewestPoints = 16;
constexpr CGFloat mostPoints = 20000;

/// The curve at a distance from the ellipse: outside it and one way round when positive, inside it
/// and the other way round when negative, so that the areas of the two subtract where both cross
/// one pixel.
void addParallelCurve(Path& path, const CGRect& rect, CGFloat distance, int points) {
    const CGFloat a = rect.width() / 2;
    const CGFloat b = rect.height() / 2;
    for (int i = 0; i < points; ++i) {
        const CGFloat angle = std::copysign(2 * std::numbers::pi * i / points, distance);
        const CGFloat cosine = std::cos(angle);
        const CGFloat sine = std::sin(angle);
        const CGFloat normal = distance / std::hypot(b * cosine, a * sine);
        const CGPoint point{rect.midX() + cosine * (a + normal * b),
                            rect.midY() + sine * (b + normal * a)};
        if (i == 0)
            path.moveTo(point);
        else
            path.lineTo(point);
    }
    path.close();
}

}  // namespace

std::optional<Path> ellipseOutline(const CGRect& rect, CGFloat width, CGFloat tolerance) {
    const CGFloat longer = std::max(rect.width(), rect.height()) / 2;
    const CGFloat shorter = std::min(rect.width(), rect.height()) / 2;
    const CGFloat half = width / 2;
    // The ellipse bends with the smallest radius, shorter² / longer, at the ends of its long axis.
    if (!(half > 0) || !(half * longer < shorter * shorter)) return std::nullopt;
    // A chord of the angle d is at most longer × d² / 8 away from its arc.
    const CGFloat count =
        std::ceil(2 * std::numbers::pi / std::sqrt(8 * tolerance / (longer + half)));
    if (!(count <= mostPoints)) return std::nullopt;
    Path path;
    const auto points = static_cast<int>(std::max(count, fewestPoints));
    addParallelCurve(path, rect, half, points);
    addParallelCurve(path, rect, -half, points);
    return path;
}

}  // namespace pictal::detail
