#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace pictal::detail {

/// Counts the pixels that a compressor would find nowhere before: a drawn picture, however busy,
/// is made of few colours that come again, while a photograph has a new one almost everywhere.
class FreshColors {
  public:
    /// @param above  the row above; empty where there is none
    /// @return how many pixels equal neither their left nor their upper neighbour, nor a colour
    ///         that was seen lately
    [[nodiscard]] std::size_t count(std::span<const std::uint32_t> row,
                                    std::span<const std::uint32_t> above);

  private:
    /// Each colour has one place, which the last one of that place holds.
    std::array<std::uint32_t, 1024> seen_{};
};

}  // namespace pictal::detail
