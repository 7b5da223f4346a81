#include "PictalCore/Platform/Foundation/CGGeometry.h"

#include <cmath>

namespace pictal {

CGRect CGRect::integral() const {
    if (isNull()) return null();
    const CGFloat left = std::floor(minX());
    const CGFloat top = std::floor(minY());
    return between(left, top, std::ceil(maxX()), std::ceil(maxY()));
}

}  // namespace pictal
