#include "PictalCore/Styling/BackgroundStyle.h"

#include "PictalCore/Platform/Foundation/Coding/JSONCoding.h"

namespace pictal {

PICTAL_DEFINE_JSON(BackgroundStyle)

}  // namespace pictal
