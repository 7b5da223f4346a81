#pragma once

#include "PictalCore/Export.h"

#include <limits>

/// Points, sizes and rectangles, and the one definition of the rectangle rules.
///
/// Which way y grows is the caller's business: minY is only the smaller edge. Containment is
/// half-open: (minX, minY) is inside, (maxX, maxY) is not. Every rule is defined for NaN, infinite
/// and huge values: comparisons with NaN fail, and where a result would be no rectangle it is null.
namespace pictal {

using CGFloat = double;

struct CGPoint {
    CGFloat x = 0;
    CGFloat y = 0;

    friend constexpr bool operator==(const CGPoint&, const CGPoint&) = default;
};

struct CGSize {
    CGFloat width = 0;
    CGFloat height = 0;

    friend constexpr bool operator==(const CGSize&, const CGSize&) = default;
};

/// A rectangle as it was given: width and height may be negative. The accessors `minX()`,
/// `width()` and the like read the standardised rectangle, `size.width` the stored one.
struct PICTAL_API CGRect {
    CGPoint origin;
    CGSize size;

    constexpr CGRect() = default;
    constexpr CGRect(CGPoint rectOrigin, CGSize rectSize) : origin(rectOrigin), size(rectSize) {}
    constexpr CGRect(CGFloat x, CGFloat y, CGFloat width, CGFloat height)
        : origin{x, y}, size{width, height} {}

    /// The rectangle that is no place at all: what two rectangles apart have in common. Offset,
    /// inset, integral and union treat it as nothing.
    [[nodiscard]] static constexpr CGRect null() {
        constexpr CGFloat infinity = std::numeric_limits<CGFloat>::infinity();
        return {infinity, infinity, 0, 0};
    }

    [[nodiscard]] constexpr bool isNull() const {
        constexpr CGFloat infinity = std::numeric_limits<CGFloat>::infinity();
        return origin.x == infinity || origin.y == infinity;
    }
    /// True for the null rectangle and for one without area. A NaN size is empty.
    [[nodiscard]] constexpr bool isEmpty() const {
        return isNull() || !(width() > 0) || !(height() > 0);
    }

    [[nodiscard]] constexpr CGFloat width() const {
        return size.width < 0 ? -size.width : size.width;
    }
    [[nodiscard]] constexpr CGFloat height() const {
        return size.height < 0 ? -size.height : size.height;
    }
    [[nodiscard]] constexpr CGFloat minX() const {
        return size.width < 0 ? origin.x + size.width : origin.x;
    }
    [[nodiscard]] constexpr CGFloat minY() const {
        return size.height < 0 ? origin.y + size.height : origin.y;
    }
    [[nodiscard]] constexpr CGFloat maxX() const { return minX() + width(); }
    [[nodiscard]] constexpr CGFloat maxY() const { return minY() + height(); }
    [[nodiscard]] constexpr CGFloat midX() const { return minX() + width() * 0.5; }
    [[nodiscard]] constexpr CGFloat midY() const { return minY() + height() * 0.5; }

    /// The same area with a width and height that are not negative.
    [[nodiscard]] constexpr CGRect standardized() const {
        return isNull() ? null() : CGRect{minX(), minY(), width(), height()};
    }
    /// The smallest rectangle with whole-number edges that holds this one: min x and min y rounded
    /// down, max x and max y rounded up.
    [[nodiscard]] CGRect integral() const;

    [[nodiscard]] constexpr CGRect offsetBy(CGFloat dx, CGFloat dy) const {
        return isNull() ? null() : CGRect{minX() + dx, minY() + dy, width(), height()};
    }
    /// Moves every edge inward by dx and dy (outward when negative). Null when nothing would be
    /// left: where an edge would pass the opposite one, or a size would be NaN.
    [[nodiscard]] constexpr CGRect insetBy(CGFloat dx, CGFloat dy) const {
        const CGRect inset{minX() + dx, minY() + dy, width() - 2 * dx, height() - 2 * dy};
        return isNull() || !(inset.size.width >= 0 && inset.size.height >= 0) ? null() : inset;
    }

    /// The smallest rectangle that holds both.
    [[nodiscard]] constexpr CGRect unionOf(const CGRect& other) const {
        if (isNull()) return other.standardized();
        if (other.isNull()) return standardized();
        return between(lesser(minX(), other.minX()), lesser(minY(), other.minY()),
                       greater(maxX(), other.maxX()), greater(maxY(), other.maxY()));
    }
    /// What both cover. Null when they are apart; two rectangles that only touch have an empty
    /// intersection, their common edge.
    [[nodiscard]] constexpr CGRect intersection(const CGRect& other) const {
        const CGRect common = between(greater(minX(), other.minX()), greater(minY(), other.minY()),
                                      lesser(maxX(), other.maxX()), lesser(maxY(), other.maxY()));
        const bool meets = common.size.width >= 0 && common.size.height >= 0;
        return isNull() || other.isNull() || !meets ? null() : common;
    }

    [[nodiscard]] constexpr bool contains(CGPoint point) const {
        return point.x >= minX() && point.x < maxX() && point.y >= minY() && point.y < maxY();
    }
    /// Compares the standardised rectangles exactly; all null rectangles are equal.
    friend constexpr bool operator==(const CGRect& a, const CGRect& b) {
        if (a.isNull() || b.isNull()) return a.isNull() && b.isNull();
        return a.minX() == b.minX() && a.minY() == b.minY() && a.width() == b.width() &&
               a.height() == b.height();
    }

  private:
    static constexpr CGFloat lesser(CGFloat a, CGFloat b) { return b < a ? b : a; }
    static constexpr CGFloat greater(CGFloat a, CGFloat b) { return b > a ? b : a; }
    static constexpr CGRect between(CGFloat left, CGFloat top, CGFloat right, CGFloat bottom) {
        return {left, top, right - left, bottom - top};
    }
};

}  // namespace pictal
