#include "PictalCore/Platform/Graphics/Path.h"

#include <algorithm>

namespace pictal {

void Path::moveTo(CGPoint point) {
    verbs_.push_back(Verb::move);
    points_.push_back(point);
    start_ = point;
}

void Path::startIfNeeded(CGPoint first) {
    if (verbs_.empty()) moveTo(first);
    if (verbs_.back() == Verb::close) moveTo(start_);
}

void Path::lineTo(CGPoint end) {
    startIfNeeded(end);
    verbs_.push_back(Verb::line);
    points_.push_back(end);
}

void Path::quadCurveTo(CGPoint control, CGPoint end) {
    startIfNeeded(control);
    verbs_.push_back(Verb::quad);
    points_.insert(points_.end(), {control, end});
}

void Path::curveTo(CGPoint control1, CGPoint control2, CGPoint end) {
    startIfNeeded(control1);
    verbs_.push_back(Verb::cubic);
    points_.insert(points_.end(), {control1, control2, end});
}

void Path::quarterTo(CGPoint corner, CGPoint end) {
    startIfNeeded(corner);
    verbs_.push_back(Verb::quarter);
    points_.insert(points_.end(), {corner, end});
}

void Path::close() {
    if (!verbs_.empty() && verbs_.back() != Verb::close) verbs_.push_back(Verb::close);
}

void Path::addRect(const CGRect& rect) {
    if (rect.isNull()) return;
    moveTo({rect.minX(), rect.minY()});
    lineTo({rect.maxX(), rect.minY()});
    lineTo({rect.maxX(), rect.maxY()});
    lineTo({rect.minX(), rect.maxY()});
    close();
}

void Path::addEllipse(const CGRect& rect) {
    if (rect.isNull()) return;
    moveTo({rect.midX(), rect.minY()});
    quarterTo({rect.maxX(), rect.minY()}, {rect.maxX(), rect.midY()});
    quarterTo({rect.maxX(), rect.maxY()}, {rect.midX(), rect.maxY()});
    quarterTo({rect.minX(), rect.maxY()}, {rect.minX(), rect.midY()});
    quarterTo({rect.minX(), rect.minY()}, {rect.midX(), rect.minY()});
    close();
}

void Path::addRoundedRect(const CGRect& rect, CGFloat radius) {
    const CGFloat half = std::min(rect.width(), rect.height()) / 2;
    const CGFloat r = std::min(radius, half);
    if (!(r > 0)) return addRect(rect);
    if (rect.isNull()) return;
    const CGFloat left = rect.minX();
    const CGFloat right = rect.maxX();
    const CGFloat top = rect.minY();
    const CGFloat bottom = rect.maxY();
    moveTo({left + r, top});
    lineTo({right - r, top});
    quarterTo({right, top}, {right, top + r});
    lineTo({right, bottom - r});
    quarterTo({right, bottom}, {right - r, bottom});
    lineTo({left + r, bottom});
    quarterTo({left, bottom}, {left, bottom - r});
    lineTo({left, top + r});
    quarterTo({left, top}, {left + r, top});
    close();
}

void Path::addPath(const Path& other) {
    if (other.isEmpty()) return;
    // By index, so that a path can be added to itself.
    const std::size_t verbCount = other.verbs_.size();
    const std::size_t pointCount = other.points_.size();
    for (std::size_t i = 0; i < verbCount; ++i)
        verbs_.push_back(other.verbs_[i]);
    for (std::size_t i = 0; i < pointCount; ++i)
        points_.push_back(other.points_[i]);
    start_ = other.start_;
}

CGRect Path::boundingBox() const {
    if (points_.empty()) return CGRect::null();
    CGPoint low = points_.front();
    CGPoint high = low;
    for (const CGPoint& point : points_) {
        if (point.x != point.x || point.y != point.y) return CGRect::null();
        low = {std::min(low.x, point.x), std::min(low.y, point.y)};
        high = {std::max(high.x, point.x), std::max(high.y, point.y)};
    }
    return {low.x, low.y, high.x - low.x, high.y - low.y};
}

}  // namespace pictal
