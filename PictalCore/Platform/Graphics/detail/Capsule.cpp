#include "PictalCore/Platform/Graphics/detail/Capsule.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace pictal::detail {
namespace {

/// The first of the evenly spaced lines at or below y; their number when there is none.
std::size_t firstFrom(CGFloat y, std::span<const CGFloat> lines) {
    const auto count = static_cast<CGFloat>(lines.size());
    const CGFloat spacing = lines.size() > 1 ? lines[1] - lines[0] : 1;
    return static_cast<std::size_t>(std::ceil(std::clamp((y - lines[0]) / spacing, 0.0, count)));
}

}  // namespace

Capsule::Capsule(CGPoint a, CGPoint b, CGFloat radius)
    : upper_(a.y <= b.y ? a : b), lower_(a.y <= b.y ? b : a), radius_(radius) {
    const CGPoint vector{lower_.x - upper_.x, lower_.y - upper_.y};
    const CGFloat length = std::hypot(vector.x, vector.y);
    if (length > 0) direction_ = {vector.x / length, vector.y / length};
}

CGFloat Capsule::axisAt(CGFloat y) const {
    if (y <= upper_.y) return upper_.x;
    if (y >= lower_.y) return lower_.x;
    return upper_.x + (y - upper_.y) * (lower_.x - upper_.x) / (lower_.y - upper_.y);
}

Interval Capsule::extent(CGFloat top, CGFloat bottom) const {
    const CGFloat first = axisAt(top - radius_);
    const CGFloat last = axisAt(bottom + radius_);
    return {std::min(first, last) - radius_, std::max(first, last) + radius_};
}

std::optional<std::pair<Interval, Interval>> Capsule::straightPiece(CGFloat top,
                                                                    CGFloat bottom) const {
    const CGFloat reach = radius_ * std::abs(direction_.x);
    if (!(top >= upper_.y + reach && bottom <= lower_.y - reach && top < bottom)) return {};
    const CGFloat half = radius_ / direction_.y;
    const CGFloat x1 = axisAt(top);
    const CGFloat x2 = axisAt(bottom);
    return {{{x1 - half, x1 + half}, {x2 - half, x2 + half}}};
}

void Capsule::followSide(CGFloat side, CGFloat origin, std::span<const CGFloat> lines,
                         std::span<CGFloat> xs) const {
    const CGFloat upperY = upper_.y - origin;
    const CGFloat lowerY = lower_.y - origin;
    const CGPoint toSide{side * radius_ * direction_.y, -side * radius_ * direction_.x};

    const std::size_t sideBegin = firstFrom(upperY + toSide.y, lines);
    const std::size_t sideEnd = firstFrom(lowerY + toSide.y, lines);
    const auto followCap = [&](std::size_t begin, std::size_t end, CGFloat x, CGFloat y) {
        for (std::size_t i = begin; i < end; ++i) {
            const CGFloat distance = std::abs(lines[i] - y);
            const CGFloat square = (radius_ - distance) * (radius_ + distance);
            xs[i] = x + side * std::sqrt(square > 0 ? square : 0);
        }
    };
    followCap(0, sideBegin, upper_.x, upperY);
    if (sideBegin < sideEnd) {
        const CGFloat slope = direction_.x / direction_.y;
        const CGFloat x = upper_.x + toSide.x - (upperY + toSide.y) * slope;
        for (std::size_t i = sideBegin; i < sideEnd; ++i)
            xs[i] = x + lines[i] * slope;
    }
    followCap(sideEnd, lines.size(), lower_.x, lowerY);
}

void Capsule::intersect(CGFloat origin, std::span<const CGFloat> lines, std::span<CGFloat> lows,
                        std::span<CGFloat> highs) const {
    followSide(-1, origin, lines, lows);
    followSide(1, origin, lines, highs);
}

}  // namespace pictal::detail
