#include "PictalCore/Color/ColorLoupeGeometry.h"

#include "PictalCore/Platform/Foundation/Clamping.h"

#include <algorithm>
#include <cmath>

namespace pictal::ColorLoupeGeometry {

namespace {

bool hasArea(CGSize size) {
    return size.width > 0 && size.height > 0;
}

CGFloat positionOf(CGFloat fraction, CGFloat extent) {
    return std::min(clampedToNonNegative(extent - 1), clampedToNonNegative(extent * fraction));
}

/// Where a crop of `side` out of `extent` pixels begins, with `center` in its middle.
CGFloat originOf(CGFloat center, CGFloat side, CGFloat extent) {
    return std::min(clampedToNonNegative(extent - side),
                    clampedToNonNegative(std::floor(center) - std::floor(side / 2)));
}

}  // namespace

CGPoint imagePoint(CGPoint point, CGRect rect, CGSize imageSize) {
    if (!(rect.width() > 0) || !(rect.height() > 0) || !hasArea(imageSize)) return {};
    const CGFloat across = (point.x - rect.minX()) / rect.width();
    const CGFloat down = (rect.maxY() - point.y) / rect.height();
    return {positionOf(across, imageSize.width), positionOf(down, imageSize.height)};
}

CGRect cropRect(CGPoint center, CGSize imageSize, std::int64_t sampleSide) {
    if (!hasArea(imageSize)) return {};
    const auto side = static_cast<CGFloat>(std::max<std::int64_t>(sampleSide, 1));
    const CGFloat width = std::min(imageSize.width, side);
    const CGFloat height = std::min(imageSize.height, side);
    return {originOf(center.x, width, imageSize.width),
            originOf(center.y, height, imageSize.height), width, height};
}

}  // namespace pictal::ColorLoupeGeometry
