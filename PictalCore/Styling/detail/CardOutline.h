#pragma once

#include <cstdint>

namespace pictal::detail {

/// A rounded rectangle in the middle of its canvas: `padding` pixels from every side.
struct CardOutline {
    std::int64_t width = 0;
    std::int64_t height = 0;
    std::int64_t padding = 0;
    /// 0…half the shorter side
    double radius = 0;

    [[nodiscard]] std::int64_t canvasWidth() const { return width + 2 * padding; }
    [[nodiscard]] std::int64_t canvasHeight() const { return height + 2 * padding; }
};

}  // namespace pictal::detail
