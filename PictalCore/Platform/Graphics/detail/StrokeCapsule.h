#pragma once

#include "PictalCore/Platform/Graphics/detail/Capsule.h"

#include <cstdint>

namespace pictal::detail {

/// The capsule of a segment of a stroke, in the rows that it is needed in.
struct StrokeCapsule {
    Capsule capsule;
    std::uint32_t segment = 0;
    std::int32_t firstRow = 0;
    std::int32_t endRow = 0;
    /// Whether the tips of its caps belong to the outline: where the path goes on in the same
    /// direction, a neighbour hides them.
    bool topShows = false;
    bool bottomShows = false;
};

}  // namespace pictal::detail
