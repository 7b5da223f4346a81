#include "PictalCore/Geometry/SelectionCoordinateMapper.h"

namespace pictal::SelectionCoordinateMapper {

std::optional<CGRect> localRect(const CGRect& globalRect, const CGRect& container) {
    const CGRect visible = container.intersection(globalRect);
    if (visible.isEmpty()) return std::nullopt;
    return CGRect{visible.minX() - container.minX(), container.maxY() - visible.maxY(),
                  visible.width(), visible.height()}
        .integral();
}

CGRect globalRect(const CGRect& localRect, const CGRect& container) {
    return CGRect{container.minX() + localRect.minX(), container.maxY() - localRect.maxY(),
                  localRect.width(), localRect.height()}
        .integral();
}

}  // namespace pictal::SelectionCoordinateMapper
