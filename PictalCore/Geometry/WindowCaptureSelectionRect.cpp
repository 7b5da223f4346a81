#include "PictalCore/Geometry/WindowCaptureSelectionRect.h"

#include <algorithm>

namespace pictal::WindowCaptureSelectionRect {

CGRect visibleContentFrame(const CGRect& windowFrame, CGSize imagePixelSize,
                           CGFloat backingScaleFactor, bool allowsExpansion, CGFloat maximumInset) {
    const CGRect frame = windowFrame.standardized();
    if (frame.isEmpty() || !(imagePixelSize.width > 0) || !(imagePixelSize.height > 0) ||
        !(backingScaleFactor > 0))
        return frame;

    const CGFloat width = imagePixelSize.width / backingScaleFactor;
    const CGFloat height = imagePixelSize.height / backingScaleFactor;
    const CGRect content{frame.midX() - width * 0.5, frame.midY() - height * 0.5, width, height};
    const CGFloat insetX = (frame.size.width - width) * 0.5;
    const CGFloat insetY = (frame.size.height - height) * 0.5;

    const bool shrinks = frame.size.width + 0.5 >= width && frame.size.height + 0.5 >= height;
    if (shrinks) {
        const bool accepted =
            std::max(insetX, insetY) > 0.25 && insetX <= maximumInset && insetY <= maximumInset;
        return accepted ? content : frame;
    }
    const bool accepted = allowsExpansion && std::max(-insetX, 0.0) <= maximumInset &&
                          std::max(-insetY, 0.0) <= maximumInset;
    return accepted ? content : frame;
}

}  // namespace pictal::WindowCaptureSelectionRect
