#pragma once

#include "PictalCore/Platform/Graphics/Pixels/ColorManagement.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

namespace pictal::detail {

/// Red, green and blue, 0…1 and beyond; not premultiplied.
using ColorComponents = std::array<double, 3>;

/// An RGB profile and its conversions to sRGB. Making them is what shows whether the profile is
/// usable, and takes milliseconds, so a colour space keeps them.
class ProfileConversion {
  public:
    /// @return null for bytes that are no RGB profile which colours can be converted from
    [[nodiscard]] static std::shared_ptr<const ProfileConversion> make(
        std::span<const std::byte> profile);

    [[nodiscard]] std::span<const std::byte> bytes() const { return bytes_; }
    /// Whole pictures: straight RGBA words.
    [[nodiscard]] const colorManagement::Transform& pixelsToSRGB() const { return pixels_; }
    /// One colour, in double precision. What sRGB does not hold comes out below 0 or above 1.
    /// @return nothing when there is no memory for the conversion, which is made by the first call
    [[nodiscard]] std::optional<ColorComponents> toSRGB(const ColorComponents& color) const;

  private:
    explicit ProfileConversion(std::span<const std::byte> profile);
    [[nodiscard]] colorManagement::Transform transformToSRGB(colorManagement::Format format) const;

    std::vector<std::byte> bytes_;
    colorManagement::Context context_;
    colorManagement::Transform pixels_;
    mutable std::once_flag colorsOnce_;
    mutable colorManagement::Transform colors_;
};

}  // namespace pictal::detail
