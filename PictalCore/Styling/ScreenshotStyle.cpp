#include "PictalCore/Styling/ScreenshotStyle.h"

namespace pictal {

void ScreenshotStyle::setPresentationCardEnabled(bool enabled) {
    cardEffect = enabled ? ScreenshotCardEffect::presentation : ScreenshotCardEffect::none;
    if (enabled && cornerRadius == 0 && shadow == ShadowStyle::none) {
        cornerRadius = presentationCard.cornerRadius;
        shadow = presentationCard.shadow;
    }
}

}  // namespace pictal
