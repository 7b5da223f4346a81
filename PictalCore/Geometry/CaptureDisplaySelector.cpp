#include "PictalCore/Geometry/CaptureDisplaySelector.h"

namespace pictal::CaptureDisplaySelector {

std::optional<std::int64_t> bestDisplayIndex(const CGRect& rect, std::span<const CGRect> displays) {
    std::optional<std::int64_t> best;
    CGFloat largestArea = 0;
    std::int64_t index = 0;
    for (const CGRect& display : displays) {
        const CGRect common = rect.intersection(display);
        const CGFloat area = common.size.width * common.size.height;
        if (area > largestArea) {
            largestArea = area;
            best = index;
        }
        ++index;
    }
    return best;
}

CGRect localRect(const CGRect& rect, const CGRect& display) {
    return rect.intersection(display).offsetBy(-display.minX(), -display.minY());
}

}  // namespace pictal::CaptureDisplaySelector
