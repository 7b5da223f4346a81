#pragma once

#include <cstdint>

namespace pictal {

/// How paint meets what is already there.
enum class BlendMode : std::uint8_t {
    normal,          ///< paint over it
    copy,            ///< replace it, alpha included
    clear,           ///< take it away
    destinationOut,  ///< take away as much as the paint is opaque
};

}  // namespace pictal
