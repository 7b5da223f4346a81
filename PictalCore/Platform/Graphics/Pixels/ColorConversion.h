#pragma once

#include "PictalCore/Platform/Graphics/CGColorSpace.h"
#include "PictalCore/Platform/Graphics/Pixels/RGBNumbers.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>

namespace pictal::detail {

/// Carries premultiplied pixels from one colour space to another, a row at a time; relative
/// colorimetric, within a level of exact arithmetic. A default one changes nothing.
class ColorConversion {
  public:
    /// Costs nothing to sRGB, for which the space keeps the conversion; otherwise milliseconds.
    /// @return nothing when the colour management cannot make it (memory, a damaged profile)
    [[nodiscard]] static std::optional<ColorConversion> make(const CGColorSpace& from,
                                                             const CGColorSpace& to);
    ColorConversion() = default;

    /// Whether converting changes nothing.
    [[nodiscard]] bool isIdentity() const { return !conversion_; }
    /// Both spans have the same length and may be the same memory. Opaque pixels take some 10 ns
    /// each, translucent ones ten times as long.
    void convert(std::span<const std::uint32_t> from, std::span<std::uint32_t> to) const;

    /// One colour, in double precision, each channel cut to 0…1. The first one of a profile takes
    /// half a millisecond, others a microsecond.
    /// @param to  sRGB, device RGB, one of the named spaces, or the same space
    /// @return nothing for another space, or when there is no memory
    [[nodiscard]] static std::optional<ColorComponents> convert(const ColorComponents& color,
                                                                const CGColorSpace& from,
                                                                const CGColorSpace& to);

  private:
    std::shared_ptr<const ProfileConversion> conversion_;  // none: the numbers are the same
};

}  // namespace pictal::detail
