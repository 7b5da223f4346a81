#pragma once

#include "PictalCore/Platform/Graphics/CGImage.h"

#include <array>
#include <optional>
#include <vector>

namespace pictal::detail {

/// The different pixels of a picture that has at most 256, those that are not opaque first.
class PNGPalette {
  public:
    /// @return nothing for more
    [[nodiscard]] static std::optional<PNGPalette> of(const CGImage& image);

    /// Straight, not premultiplied.
    [[nodiscard]] std::vector<std::uint32_t> straightColors() const;
    /// 1, 2, 4 or 8: the least that can count the colours.
    [[nodiscard]] int bitDepth() const;
    /// Whether every colour is an opaque grey.
    [[nodiscard]] bool isGrey() const;
    /// Writes a row of indices, the first pixel in the highest bits.
    void pack(std::span<const std::uint32_t> row, std::uint8_t* to) const;

  private:
    PNGPalette();
    /// @return whether there was room for them
    bool add(std::span<const std::uint32_t> row);
    [[nodiscard]] std::size_t slotOf(std::uint32_t pixel) const;
    void putTranslucentFirst();

    static constexpr std::size_t greatestCount = 256;
    /// A table of four times as many places: a pixel is at its hash or behind it.
    static constexpr std::size_t slotCount = 4 * greatestCount;

    std::vector<std::uint32_t> colors_;
    std::array<std::int16_t, slotCount> slots_;  // −1: free
};

}  // namespace pictal::detail
