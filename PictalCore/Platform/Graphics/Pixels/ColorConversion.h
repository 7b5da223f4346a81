#pragma once

#include "PictalCore/Platform/Graphics/CGColorSpace.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>

namespace pictal::detail {

/// Carries premultiplied pixels from one colour space to another, a row at a time. A default one
/// changes nothing.
class ColorConversion {
  public:
    /// @return nothing when the colour management cannot make it (memory, a damaged profile)
    [[nodiscard]] static std::optional<ColorConversion> make(const CGColorSpace& from,
                                                             const CGColorSpace& to);
    ColorConversion() = default;

    /// Whether converting changes nothing.
    [[nodiscard]] bool isIdentity() const { return !transform_; }
    /// Both spans have the same length and may be the same memory.
    void convert(std::span<const std::uint32_t> from, std::span<std::uint32_t> to) const;

  private:
    struct Transform;
    explicit ColorConversion(std::shared_ptr<const Transform> transform);

    std::shared_ptr<const Transform> transform_;  // none: the numbers are the same
};

}  // namespace pictal::detail
