#pragma once

#include "PictalCore/Color/ColorSample.h"
#include "PictalCore/Color/NamedColor.h"
#include "PictalCore/Export.h"

#include <span>
#include <string>
#include <vector>

/// Names colours by the nearest entry of a table.
namespace pictal::ColorSampler {

/// Eleven everyday names; the earlier one wins a tie.
[[nodiscard]] PICTAL_API const std::vector<NamedColor>& defaultNames();

/// The name at the least Euclidean distance in red, green and blue as they are; alpha does not
/// count. Equally near, the first one; a distance that is not a number is never less than another.
/// @return "Unknown" when there are no names
[[nodiscard]] PICTAL_API std::string nearestName(const RGBColor& color,
                                                 std::span<const NamedColor> names);

/// The colour as given, with its name.
[[nodiscard]] PICTAL_API ColorSample sample(const RGBColor& color, ColorEncoding encoding,
                                            std::span<const NamedColor> names);

}  // namespace pictal::ColorSampler
