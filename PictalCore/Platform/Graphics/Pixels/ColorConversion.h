#pragma once

#include "PictalCore/Platform/Graphics/CGColorSpace.h"
#include "PictalCore/Platform/Graphics/Pixels/ProfileConversion.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>

namespace pictal::detail {

/// Carries premultiplied pixels from one colour space to another, a row at a time. A default one
/// changes nothing.
class ColorConversion {
  public:
    /// Costs nothing to sRGB, for which the space keeps the conversion; otherwise milliseconds.
    /// @return nothing when the colour management cannot make it (memory, a damaged profile)
    [[nodiscard]] static std::optional<ColorConversion> make(const CGColorSpace& from,
                                                             const CGColorSpace& to);
    ColorConversion() = default;

    /// Whether converting changes nothing.
    [[nodiscard]] bool isIdentity() const { return !transform_; }
    /// Both spans have the same length and may be the same memory.
    void convert(std::span<const std::uint32_t> from, std::span<std::uint32_t> to) const;

    /// One colour of the space, in sRGB: in double precision and not bounded, so that a colour
    /// which sRGB does not hold can go on to a space that does. The first one of a profile takes
    /// half a millisecond, the others half a microsecond.
    /// @return nothing when there is no memory
    [[nodiscard]] static std::optional<ColorComponents> colorInSRGB(const ColorComponents& color,
                                                                    const CGColorSpace& space);

  private:
    /// With what keeps it alive; none: the numbers are the same.
    std::shared_ptr<const colorManagement::Transform> transform_;
};

}  // namespace pictal::detail
