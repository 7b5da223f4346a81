#include "PictalCore/Geometry/PinnedImageWindowLayout.h"

#include <algorithm>

namespace pictal::PinnedImageWindowLayout {

namespace {

/// Unlike `!isEmpty()`, also true of a frame that was dragged infinitely far: it comes back.
bool hasArea(const CGRect& frame) {
    return frame.width() > 0 && frame.height() > 0;
}

CGFloat clampedOrigin(CGFloat origin, CGFloat length, CGFloat visibleMin, CGFloat visibleMax,
                      CGFloat minimumVisibleLength) {
    const CGFloat kept = std::min(length, minimumVisibleLength);
    return std::min(std::max(visibleMin - length + kept, origin), visibleMax - kept);
}

}  // namespace

CGSize fittedPanelSize(CGSize imageSize, CGSize maxSize, CGSize minSize) {
    if (!(imageSize.width > 0) || !(imageSize.height > 0)) return minSize;
    const CGFloat fitting =
        std::min(maxSize.height / imageSize.height, maxSize.width / imageSize.width);
    const CGFloat scale = fitting > 1 ? 1 : fitting;
    return {std::max(minSize.width, imageSize.width * scale),
            std::max(minSize.height, imageSize.height * scale)};
}

CGRect movedFrame(const CGRect& frame, CGSize screenOffset, const CGRect& visibleFrame,
                  CGFloat minimumVisibleLength) {
    return clampedFrame(frame.offsetBy(screenOffset.width, screenOffset.height), visibleFrame,
                        minimumVisibleLength);
}

CGRect clampedFrame(const CGRect& frame, const CGRect& visibleFrame, CGFloat minimumVisibleLength) {
    if (!hasArea(frame) || !hasArea(visibleFrame)) return frame;
    return {clampedOrigin(frame.minX(), frame.width(), visibleFrame.minX(), visibleFrame.maxX(),
                          minimumVisibleLength),
            clampedOrigin(frame.minY(), frame.height(), visibleFrame.minY(), visibleFrame.maxY(),
                          minimumVisibleLength),
            frame.width(), frame.height()};
}

std::optional<CGRect> unionOf(std::span<const CGRect> frames) {
    CGRect all = CGRect::null();
    for (const CGRect& frame : frames)
        if (frame.size.width > 0 && frame.size.height > 0) all = all.unionOf(frame);
    return all.isNull() ? std::nullopt : std::optional(all);
}

}  // namespace pictal::PinnedImageWindowLayout
