#pragma once

#include "PictalCore/Export.h"

#include <optional>
#include <string_view>

/// Numbers as the C library's conversions take them in the C locale, whatever the process's: signs,
/// hexadecimal ones, "inf" and "nan" too. All of the text has to be the number, but for white space
/// before it; an embedded zero byte makes it none. What is too large is infinite.
namespace pictal::CNumbers {

[[nodiscard]] PICTAL_API std::optional<float> toFloat(std::string_view text);
[[nodiscard]] PICTAL_API std::optional<double> toDouble(std::string_view text);

}  // namespace pictal::CNumbers
