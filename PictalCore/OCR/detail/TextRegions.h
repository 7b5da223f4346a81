#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace pictal::detail {

/// Cells that touch at their sides, with the cells they span, the last ones included.
struct TextRegion {
    std::int64_t minX;
    std::int64_t minY;
    std::int64_t maxX;
    std::int64_t maxY;
    float sum;  ///< of the probabilities, in the order in which the region was walked
    std::int64_t count;
};

/// Finds the regions of a map, each once, in the order of their first cells. The sums depend on
/// the order of the walk: a stack, whose cells push their left, right, upper and lower neighbours.
class TextRegions {
  public:
    /// @param map  width × height cells, which have to outlive this
    TextRegions(std::span<const float> map, std::int64_t width, std::int64_t height,
                float threshold);

    [[nodiscard]] std::optional<TextRegion> next();

  private:
    struct Cell {
        std::int64_t x;
        std::int64_t y;
    };
    [[nodiscard]] TextRegion grown(Cell seed);
    void push(std::int64_t x, std::int64_t y);

    std::span<const float> map_;
    std::int64_t width_;
    std::int64_t height_;
    std::vector<std::uint8_t> open_;  // 1: text that no region has yet
    std::vector<Cell> stack_;
    std::size_t scanned_ = 0;
};

}  // namespace pictal::detail
