#include "PictalCore/Geometry/WindowHitTester.h"

#include <algorithm>

namespace pictal::WindowHitTester {

const WindowCandidate* hitTest(CGPoint point, std::span<const WindowCandidate> candidates,
                               CGSize minimumSize) {
    const auto hit = std::ranges::find_if(candidates, [&](const WindowCandidate& window) {
        const CGRect& frame = window.appKitFrame;
        return frame.contains(point) && frame.width() >= minimumSize.width &&
               frame.height() >= minimumSize.height;
    });
    return hit == candidates.end() ? nullptr : &*hit;
}

}  // namespace pictal::WindowHitTester
