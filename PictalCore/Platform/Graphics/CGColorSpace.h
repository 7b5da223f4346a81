#pragma once

#include "PictalCore/Export.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <span>

namespace pictal {

namespace detail {
class ColorConversion;
class ProfileConversion;
struct RGBNumbers;
}  // namespace detail

/// What the numbers of a pixel mean. A value: copying is cheap, and two spaces are equal when they
/// are the same kind and, for a profile, the same bytes.
class PICTAL_API CGColorSpace {
  public:
    /// Untagged RGB: sRGB in all but name. Nothing is converted between the two.
    [[nodiscard]] static CGColorSpace deviceRGB() { return CGColorSpace(Kind::deviceRGB); }
    [[nodiscard]] static CGColorSpace sRGB() { return CGColorSpace(Kind::sRGB); }
    /// Wide spaces, by their published numbers. Their profiles are made once a process, so that
    /// they compare, are written and are read back like any other; without memory, device RGB.
    [[nodiscard]] static CGColorSpace displayP3();
    [[nodiscard]] static CGColorSpace adobeRGB1998();
    /// The space of an ICC profile; it keeps what converts the profile's colours to sRGB.
    /// @return nothing for bytes that are no RGB profile which colours can be converted from
    [[nodiscard]] static std::optional<CGColorSpace> fromICCProfile(
        std::span<const std::byte> profile);

    CGColorSpace() = default;

    [[nodiscard]] bool isDeviceRGB() const { return kind_ == Kind::deviceRGB; }
    [[nodiscard]] bool isSRGB() const { return kind_ == Kind::sRGB; }
    /// The profile's bytes; empty for device RGB and sRGB.
    [[nodiscard]] std::span<const std::byte> iccProfile() const;
    /// Whether pixels can go from one space to the other as they are.
    [[nodiscard]] bool hasSameNumbersAs(const CGColorSpace& other) const;

    friend PICTAL_API bool operator==(const CGColorSpace& a, const CGColorSpace& b);

  private:
    enum class Kind { deviceRGB, sRGB, icc };
    friend class detail::ColorConversion;
    explicit CGColorSpace(Kind kind) : kind_(kind) {}
    [[nodiscard]] static CGColorSpace of(const detail::RGBNumbers& numbers);

    Kind kind_ = Kind::deviceRGB;
    std::shared_ptr<const detail::ProfileConversion> profile_;
};

}  // namespace pictal
