#pragma once

#include "PictalCore/Platform/Graphics/Kernels/Targets.h"

#include <cstddef>
#include <span>

namespace pictal::detail {

using FirstGreatest = std::size_t (*)(std::span<const float> values);

/// Where the first of the greatest values is; numbers only, unless all are NaN: then 0.
/// @param values  at least one
[[nodiscard]] std::size_t firstGreatest(std::span<const float> values);

/// @param target  one that is available
[[nodiscard]] FirstGreatest firstGreatestAt(kernels::Target target);

}  // namespace pictal::detail
