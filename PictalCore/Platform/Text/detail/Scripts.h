#pragma once

#include "PictalCore/Platform/Text/detail/GraphemeText.h"

#include <cstdint>
#include <vector>

namespace pictal::detail {

/// The script of each character, as an ISO 15924 code whose first letter is in the highest byte.
/// What belongs to no script of its own, such as a comma or a digit, has that of the text before
/// it, a closing bracket that of its opening one.
[[nodiscard]] std::vector<std::uint32_t> scriptsOf(const GraphemeText& text);

}  // namespace pictal::detail
