#pragma once

#include "PictalCore/Platform/Graphics/detail/FlatPath.h"

#include <array>

namespace pictal::detail {

/// How closely chords follow a curve, and where that matters.
struct Flattening {
    CGFloat tolerance = 0;
    CGRect visible;
};

struct Cubic {
    CGPoint start, control1, control2, end;

    [[nodiscard]] static Cubic fromQuad(CGPoint start, CGPoint control, CGPoint end);
    /// The curve lies within the convex hull of these.
    [[nodiscard]] std::array<CGPoint, 4> hull() const { return {start, control1, control2, end}; }
    [[nodiscard]] std::array<Cubic, 2> halves() const;
    /// How many chords of equal parameter length stay within the tolerance.
    [[nodiscard]] CGFloat chordCount(CGFloat tolerance) const;
    /// Adds the ends of `count` chords.
    void addChords(int count, FlatPath& flat) const;
};

/// The points centre + u cos t + v sin t, t from `from` to `to`.
struct Arc {
    CGPoint center, u, v;
    CGFloat from = 0;
    CGFloat to = 0;
    CGPoint start, end;

    [[nodiscard]] static Arc quarter(CGPoint start, CGPoint corner, CGPoint end);
    [[nodiscard]] CGPoint at(CGFloat cosine, CGFloat sine) const {
        return {center.x + u.x * cosine + v.x * sine, center.y + u.y * cosine + v.y * sine};
    }
    [[nodiscard]] std::array<CGPoint, 3> hull() const;
    [[nodiscard]] std::array<Arc, 2> halves() const;
    [[nodiscard]] CGFloat chordCount(CGFloat tolerance) const;
    void addChords(int count, FlatPath& flat) const;
};

/// Adds the curve, but its start, as chords. Which chords a visible piece gets does not depend on
/// what is visible.
void flatten(const Cubic& curve, const Flattening& how, FlatPath& flat);
void flatten(const Arc& curve, const Flattening& how, FlatPath& flat);

}  // namespace pictal::detail
