#include "PictalCore/Annotation/AnnotationTool.h"

#include "PictalCore/Platform/Foundation/Coding/JSONCoding.h"

namespace pictal {

PICTAL_DEFINE_JSON(AnnotationTool)

}  // namespace pictal
