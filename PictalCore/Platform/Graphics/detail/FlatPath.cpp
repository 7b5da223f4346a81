#include "PictalCore/Platform/Graphics/detail/FlatPath.h"

#include "PictalCore/Platform/Graphics/detail/Curves.h"

#include <algorithm>
#include <cmath>

namespace pictal::detail {
namespace {

constexpr CGFloat fillTolerance = 0.001;
constexpr CGFloat strokeTolerance = 0.01;

CGRect outset(const PixelRect& pixels, CGFloat margin) {
    return CGRect(static_cast<CGFloat>(pixels.left), static_cast<CGFloat>(pixels.top),
                  static_cast<CGFloat>(pixels.width()), static_cast<CGFloat>(pixels.height()))
        .insetBy(-margin, -margin);
}

FlatPath flattened(const Path& path, const AffineTransform& transform, const Flattening& how) {
    std::vector<CGPoint> points;
    points.reserve(path.points().size());
    for (const CGPoint& point : path.points()) {
        const CGPoint device = transform.applied(point);
        if (!std::isfinite(device.x) || !std::isfinite(device.y)) return {};
        points.push_back(
            {std::clamp(device.x, -farthest, farthest), std::clamp(device.y, -farthest, farthest)});
    }

    FlatPath flat;
    CGPoint current;
    bool underWay = false;
    const CGPoint* next = points.data();
    for (const Path::Verb verb : path.verbs()) {
        if (verb == Path::Verb::move) {
            if (underWay) flat.finish(false);
            underWay = false;
            current = *next++;
            continue;
        }
        if (!underWay) flat.add(current);
        underWay = true;
        switch (verb) {
            case Path::Verb::move:
            case Path::Verb::close:
                break;
            case Path::Verb::line:
                flat.add(next[0]);
                next += 1;
                break;
            case Path::Verb::quad:
                flatten(Cubic::fromQuad(current, next[0], next[1]), how, flat);
                next += 2;
                break;
            case Path::Verb::cubic:
                flatten(Cubic{current, next[0], next[1], next[2]}, how, flat);
                next += 3;
                break;
            case Path::Verb::quarter:
                flatten(Arc::quarter(current, next[0], next[1]), how, flat);
                next += 2;
                break;
        }
        if (verb == Path::Verb::close) {
            flat.finish(true);
            underWay = false;
        } else {
            current = next[-1];
        }
    }
    if (underWay) flat.finish(false);
    return flat;
}

}  // namespace

FlatPath::Contour FlatPath::contour(std::size_t index) const {
    const std::size_t begin = index == 0 ? 0 : ends_[index - 1].end;
    return {std::span(points_).subspan(begin, ends_[index].end - begin), ends_[index].closed};
}

void FlatPath::add(CGPoint point) {
    const std::size_t begin = ends_.empty() ? 0 : ends_.back().end;
    if (points_.size() == begin || points_.back() != point) points_.push_back(point);
}

void FlatPath::finish(bool closed) {
    const std::size_t begin = ends_.empty() ? 0 : ends_.back().end;
    if (points_.size() > begin) ends_.push_back({points_.size(), closed});
}

FlatPath flattenedForFill(const Path& path, const AffineTransform& transform,
                          const PixelRect& visible) {
    return flattened(path, transform, {fillTolerance, outset(visible, 0)});
}

FlatPath flattenedForStroke(const Path& path, const AffineTransform& transform, CGFloat width,
                            const PixelRect& visible) {
    // A giant pen brings giant curves into sight, which must not become millions of chords.
    const CGFloat tolerance = std::max(strokeTolerance, width * 0x1p-30);
    return flattened(path, transform, {tolerance, outset(visible, width / 2)});
}

}  // namespace pictal::detail
