#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/Styling/RGBAColor.h"

/// How a number's badge looks, for editors that show it before it is drawn.
namespace pictal::AnnotationNumberAppearance {

/// The colour of the numeral: opaque black or white, whichever contrasts more with the disc; black
/// where both do alike. The disc's alpha does not count; a NaN component gives white.
[[nodiscard]] PICTAL_API RGBAColor foreground(const RGBAColor& fill);

}  // namespace pictal::AnnotationNumberAppearance
