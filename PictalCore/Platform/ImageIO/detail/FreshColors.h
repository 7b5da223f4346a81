#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace pictal::detail {

/// Counts the pixels that a compressor would find nowhere before: a drawn picture, however busy,
/// is made of few colours that come again, while a photograph has a new one almost everywhere. A
/// smooth ramp of few colours shows in the pixels that differ from their neighbours.
class FreshColors {
  public:
    /// @param above  the row above; empty where there is none
    void add(std::span<const std::uint32_t> row, std::span<const std::uint32_t> above);

    [[nodiscard]] std::size_t pixels() const { return pixels_; }
    /// Those that equal neither their left nor their upper neighbour.
    [[nodiscard]] std::size_t changed() const { return changed_; }
    /// Those of them whose colour was not seen lately either.
    [[nodiscard]] std::size_t fresh() const { return fresh_; }
    /// Begins to count anew; what was seen stays.
    void restart() { pixels_ = changed_ = fresh_ = 0; }

  private:
    std::size_t pixels_ = 0;
    std::size_t changed_ = 0;
    std::size_t fresh_ = 0;
    /// Each colour has one place, which the last one of that place holds.
    std::array<std::uint32_t, 1024> seen_{};
};

}  // namespace pictal::detail
