#include "PictalCore/Geometry/AlignmentSnapper.h"

#include <algorithm>
#include <cmath>

namespace pictal::AlignmentSnapper {

AlignmentPointSnapResult snap(CGPoint center, const CGRect& container, CGFloat tolerance) {
    AlignmentPointSnapResult result{center, {}};
    if (container.isEmpty()) return result;
    const CGFloat reach = std::max(0.0, tolerance);
    if (std::abs(center.x - container.midX()) <= reach) {
        result.point.x = container.midX();
        result.guides.insert(AlignmentSnapGuides::verticalCenter);
    }
    if (std::abs(center.y - container.midY()) <= reach) {
        result.point.y = container.midY();
        result.guides.insert(AlignmentSnapGuides::horizontalCenter);
    }
    return result;
}

AlignmentRectSnapResult snap(const CGRect& rect, const CGRect& container, CGFloat tolerance) {
    const CGRect dragged = rect.standardized();
    const CGFloat width = dragged.size.width;
    const CGFloat height = dragged.size.height;
    if (dragged.isEmpty() || width > container.width() || height > container.height())
        return {dragged, {}};

    const auto [center, guides] = snap({dragged.midX(), dragged.midY()}, container, tolerance);
    // Both axes are rebuilt around the centre, also one that did not snap. What is a fraction wide
    // can come back a hair below a whole number, and is then rounded outward from there.
    const CGPoint origin{center.x - width * 0.5, center.y - height * 0.5};
    return {CGRect{origin, dragged.size}.integral(), guides};
}

}  // namespace pictal::AlignmentSnapper
