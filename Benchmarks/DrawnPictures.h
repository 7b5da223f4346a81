#pragma once

#include "PictalCore/Platform/Graphics/CGImage.h"

#include <cstdint>
#include <vector>

namespace pictal {

/// Opaque words to draw on.
class Canvas {
  public:
    static constexpr std::int64_t width = 2880;
    static constexpr std::int64_t height = 1800;

    explicit Canvas(std::uint32_t color = 0)
        : pixels_(static_cast<std::size_t>(width * height), color) {}

    [[nodiscard]] static bool contains(std::int64_t x, std::int64_t y) {
        return x >= 0 && x < width && y >= 0 && y < height;
    }
    [[nodiscard]] std::uint32_t& at(std::int64_t x, std::int64_t y) {
        return pixels_[static_cast<std::size_t>(y * width + x)];
    }
    /// Paints over a pixel as much as `coverage` of 255; outside nothing.
    void blend(std::int64_t x, std::int64_t y, std::uint32_t color, std::uint32_t coverage);
    [[nodiscard]] CGImage image() const;

  private:
    std::vector<std::uint32_t> pixels_;
};

/// Full of small text on a dark ground, in cells of one size and in eight colours.
[[nodiscard]] CGImage terminalPicture();
/// A column of text with a photograph in it.
[[nodiscard]] CGImage articlePicture();
/// Land in many colours with shaded relief, roads, houses and names.
[[nodiscard]] CGImage mapPicture();

}  // namespace pictal
