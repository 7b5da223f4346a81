#include "PictalCore/Annotation/AnnotationTool.h"

#include "PictalCore/Platform/Foundation/detail/JSONCoding.h"

namespace pictal {

PICTAL_DEFINE_JSON(AnnotationTool)

}  // namespace pictal
