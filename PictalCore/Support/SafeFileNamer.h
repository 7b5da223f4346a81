#pragma once

#include "PictalCore/Export.h"

#include <cstdint>
#include <string>
#include <string_view>

/// Turns any text into the stem of a file name: letters, marks and digits of every script, hyphens
/// and underscores. The caller appends the extension.
namespace pictal::SafeFileNamer {

/// Everything that is not allowed becomes a hyphen; runs of hyphens become one, and none is left at
/// the ends. "My Screenshot 2024/05/01" gives "My-Screenshot-2024-05-01".
///
/// @param fallback  taken as it is when nothing of `raw` is left; "file" when it is empty too
/// @param maxLength  in characters as people count them; a negative one counts as 0. What is cut
///     loses the hyphens and underscores at its ends too, and may be empty.
[[nodiscard]] PICTAL_API std::string stem(std::string_view raw, std::string_view fallback,
                                          std::int64_t maxLength);

}  // namespace pictal::SafeFileNamer
