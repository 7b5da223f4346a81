#include "PictalCore/Styling/BackgroundStyle.h"

#include "PictalCore/Platform/Foundation/detail/JSONCoding.h"

namespace pictal {

PICTAL_DEFINE_JSON(BackgroundStyle)

}  // namespace pictal
