#include "PictalCore/Platform/Graphics/detail/Shape.h"

#include "PictalCore/Platform/Graphics/detail/FillRasterizer.h"
#include "PictalCore/Platform/Graphics/detail/PathFlattening.h"
#include "PictalCore/Platform/Graphics/detail/StrokeRasterizer.h"

#include <cmath>

namespace pictal::detail {

namespace {

AffineTransform movedBy(CGPoint moved, const AffineTransform& toDevice) {
    return toDevice.concatenated(AffineTransform::translation(moved.x, moved.y));
}

}  // namespace

void FilledPath::cover(CGPoint moved, const PixelRect& area, CoverageSink& sink) const {
    rasterizeFill(flattenedForFill(path_, movedBy(moved, toDevice_), area), rule_, area, sink);
}

StrokedPath::StrokedPath(const Path& path, CGFloat width, const AffineTransform& toDevice)
    : path_(path),
      deviceWidth_(width * std::sqrt(std::abs(toDevice.a * toDevice.d - toDevice.b * toDevice.c))),
      toDevice_(toDevice) {}

void StrokedPath::cover(CGPoint moved, const PixelRect& area, CoverageSink& sink) const {
    rasterizeStroke(flattenedForStroke(path_, movedBy(moved, toDevice_), deviceWidth_, area),
                    deviceWidth_, area, sink);
}

}  // namespace pictal::detail
