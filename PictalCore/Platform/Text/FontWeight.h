#pragma once

#include <cstdint>

namespace pictal {

/// Which face of the interface font a line is set in.
enum class FontWeight : std::uint8_t { regular, bold };

}  // namespace pictal
