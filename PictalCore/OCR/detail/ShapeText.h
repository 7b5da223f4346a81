#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace pictal::detail {

/// "[3, 48]"
[[nodiscard]] inline std::string shapeText(std::span<const std::int64_t> shape) {
    std::string text = "[";
    for (const std::int64_t side : shape)
        text += (text.size() > 1 ? ", " : "") + std::to_string(side);
    return text + "]";
}

}  // namespace pictal::detail
