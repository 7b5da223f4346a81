#include "PictalCore/Platform/Graphics/detail/PathFlattening.h"

#include "PictalCore/Platform/Graphics/detail/Curves.h"
#include "PictalCore/Platform/Graphics/detail/LineSimplifier.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace pictal::detail {
namespace {

constexpr CGFloat fillTolerance = 0.001;
constexpr CGFloat strokeTolerance = 0.01;

CGRect outset(const PixelRect& pixels, CGFloat margin) {
    return CGRect(static_cast<CGFloat>(pixels.left), static_cast<CGFloat>(pixels.top),
                  static_cast<CGFloat>(pixels.width()), static_cast<CGFloat>(pixels.height()))
        .insetBy(-margin, -margin);
}

enum class Lines : std::uint8_t { asTheyAre, simplified };

FlatPath flattened(const Path& path, const AffineTransform& transform, const Flattening& how,
                   Lines lines) {
    std::vector<CGPoint> points;
    points.reserve(path.points().size());
    for (const CGPoint& point : path.points()) {
        const CGPoint device = transform.applied(point);
        if (!std::isfinite(device.x) || !std::isfinite(device.y)) return {};
        points.push_back(
            {std::clamp(device.x, -farthest, farthest), std::clamp(device.y, -farthest, farthest)});
    }

    FlatPath flat;
    LineSimplifier simplifier(flat);
    CGPoint current;
    bool underWay = false;
    const CGPoint* next = points.data();
    for (const Path::Verb verb : path.verbs()) {
        // What a curve is made of depends on what is visible, so it stays as it is.
        if (verb != Path::Verb::line) simplifier.finish();
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
                if (lines == Lines::simplified)
                    simplifier.addLine(current, next[0]);
                else
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
    simplifier.finish();
    if (underWay) flat.finish(false);
    return flat;
}

}  // namespace

FlatPath flattenedForFill(const Path& path, const AffineTransform& transform,
                          const PixelRect& visible) {
    return flattened(path, transform, {fillTolerance, outset(visible, 0)}, Lines::asTheyAre);
}

FlatPath flattenedForStroke(const Path& path, const AffineTransform& transform, CGFloat width,
                            const PixelRect& visible) {
    // A giant pen brings giant curves into sight, which must not become millions of chords.
    const CGFloat tolerance = std::max(strokeTolerance, width * 0x1p-30);
    return flattened(path, transform, {tolerance, outset(visible, width / 2)}, Lines::simplified);
}

}  // namespace pictal::detail
