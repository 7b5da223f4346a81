#include "PictalCore/Platform/Graphics/detail/Curves.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace pictal::detail {
namespace {

/// Curves that need more chords are halved first, so that hidden halves are found.
constexpr CGFloat mostChords = 32;

CGPoint between(CGPoint a, CGPoint b, CGFloat t = 0.5) {
    return {a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t};
}

/// Whether all lie on the far side of one edge. Then so do the curve and its chord, and neither
/// changes what is filled inside.
template <std::size_t count>
bool isBeside(const std::array<CGPoint, count>& hull, const CGRect& visible) {
    const auto all = [&](auto condition) {
        return std::all_of(hull.begin(), hull.end(), condition);
    };
    return all([&](CGPoint p) { return p.x < visible.minX(); }) ||
           all([&](CGPoint p) { return p.x > visible.maxX(); }) ||
           all([&](CGPoint p) { return p.y < visible.minY(); }) ||
           all([&](CGPoint p) { return p.y > visible.maxY(); });
}

template <class Curve>
void addPieces(const Curve& curve, CGFloat tolerance, const CGRect& visible, FlatPath& flat) {
    const CGFloat count = std::ceil(curve.chordCount(tolerance));
    if (count <= 1 || isBeside(curve.hull(), visible)) {
        flat.add(curve.end);
    } else if (count <= mostChords) {
        curve.addChords(static_cast<int>(count), flat);
    } else {
        for (const Curve& half : curve.halves())
            addPieces(half, tolerance, visible, flat);
    }
}

template <class Curve>
void flattenFrom(const Curve& curve, const Flattening& how, FlatPath& flat) {
    // No finer than the coordinates themselves are: this also bounds the depth of the halving.
    CGFloat size = 0;
    for (const CGPoint& point : curve.hull())
        size = std::max({size, std::abs(point.x), std::abs(point.y)});
    addPieces(curve, std::max(how.tolerance, size * 0x1p-49), how.visible, flat);
}

}  // namespace

Cubic Cubic::fromQuad(CGPoint start, CGPoint control, CGPoint end) {
    return {start, between(control, start, 1.0 / 3), between(control, end, 1.0 / 3), end};
}

std::array<Cubic, 2> Cubic::halves() const {
    const CGPoint a = between(start, control1);
    const CGPoint b = between(control1, control2);
    const CGPoint c = between(control2, end);
    const CGPoint ab = between(a, b);
    const CGPoint bc = between(b, c);
    const CGPoint middle = between(ab, bc);
    return {{{start, a, ab, middle}, {middle, bc, c, end}}};
}

// A chord of parameter length h is off by at most h² / 8 of the greatest second derivative, which
// for a cubic is six times its second differences.
CGFloat Cubic::chordCount(CGFloat tolerance) const {
    const CGFloat bend1 =
        std::hypot(start.x - 2 * control1.x + control2.x, start.y - 2 * control1.y + control2.y);
    const CGFloat bend2 =
        std::hypot(control1.x - 2 * control2.x + end.x, control1.y - 2 * control2.y + end.y);
    return std::sqrt(6.0 / 8 * std::max(bend1, bend2) / tolerance);
}

void Cubic::addChords(int count, FlatPath& flat) const {
    for (int i = 1; i < count; ++i) {
        const CGFloat t = static_cast<CGFloat>(i) / count;
        const CGFloat s = 1 - t;
        const CGFloat w0 = s * s * s, w1 = 3 * s * s * t, w2 = 3 * s * t * t, w3 = t * t * t;
        flat.add({w0 * start.x + w1 * control1.x + w2 * control2.x + w3 * end.x,
                  w0 * start.y + w1 * control1.y + w2 * control2.y + w3 * end.y});
    }
    flat.add(end);
}

Arc Arc::quarter(CGPoint start, CGPoint corner, CGPoint end) {
    // The vectors first: exact where the corner shares coordinates with its neighbours.
    const CGPoint u{end.x - corner.x, end.y - corner.y};
    const CGPoint v{start.x - corner.x, start.y - corner.y};
    const CGPoint center{start.x + u.x, start.y + u.y};
    return {center, {-u.x, -u.y}, {-v.x, -v.y}, 0, std::numbers::pi / 2, start, end};
}

std::array<CGPoint, 3> Arc::hull() const {
    const CGFloat middle = (from + to) / 2;
    const CGFloat reach = 1 / std::cos((to - from) / 2);  // where the end tangents meet
    return {start, at(std::cos(middle) * reach, std::sin(middle) * reach), end};
}

std::array<Arc, 2> Arc::halves() const {
    const CGFloat middle = (from + to) / 2;
    const CGPoint split = at(std::cos(middle), std::sin(middle));
    return {{{center, u, v, from, middle, start, split}, {center, u, v, middle, to, split, end}}};
}

// The second derivative is at most the greater half axis, the greater singular value of (u v).
CGFloat Arc::chordCount(CGFloat tolerance) const {
    const CGFloat uu = u.x * u.x + u.y * u.y;
    const CGFloat vv = v.x * v.x + v.y * v.y;
    const CGFloat uv = u.x * v.x + u.y * v.y;
    const CGFloat halfAxis = std::sqrt((uu + vv) / 2 + std::hypot((uu - vv) / 2, uv));
    return (to - from) * std::sqrt(halfAxis / (8 * tolerance));
}

void Arc::addChords(int count, FlatPath& flat) const {
    const CGFloat step = (to - from) / count;
    const CGFloat turnCosine = std::cos(step), turnSine = std::sin(step);
    CGFloat cosine = std::cos(from), sine = std::sin(from);
    for (int i = 1; i < count; ++i) {
        const CGFloat turned = cosine * turnCosine - sine * turnSine;
        sine = sine * turnCosine + cosine * turnSine;
        cosine = turned;
        flat.add(at(cosine, sine));
    }
    flat.add(end);
}

void flatten(const Cubic& curve, const Flattening& how, FlatPath& flat) {
    flattenFrom(curve, how, flat);
}

void flatten(const Arc& curve, const Flattening& how, FlatPath& flat) {
    flattenFrom(curve, how, flat);
}

}  // namespace pictal::detail
