#include "PictalCore/Styling/ScreenshotCardEffect.h"

#include "PictalCore/Platform/Foundation/Coding/JSONCoding.h"

namespace pictal {

PICTAL_DEFINE_JSON(ScreenshotCardEffect)

}  // namespace pictal
