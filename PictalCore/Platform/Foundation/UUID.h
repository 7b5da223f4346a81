#pragma once

#include "PictalCore/Export.h"

#include <string>

namespace pictal {

/// A fresh random identifier (RFC 9562, version 4): 36 characters, upper case, with hyphens.
[[nodiscard]] PICTAL_API std::string randomUUID();

}  // namespace pictal
