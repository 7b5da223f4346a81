#pragma once

#include "PictalCore/Platform/Graphics/Pixels/ColorManagement.h"

#include <array>
#include <cstddef>
#include <memory>
#include <mutex>
#include <span>
#include <vector>

namespace pictal::detail {

/// The way from one RGB profile to another, relative colorimetric. What converts is made when it is
/// first asked for and kept, since making it takes up to milliseconds.
class ProfileConversion {
  public:
    using Bytes = std::span<const std::byte>;

    /// @param to  a profile too; empty: sRGB
    /// @return null for bytes that are no RGB profiles between which whole pictures can go: trying
    ///         that is what shows whether a profile is usable
    [[nodiscard]] static std::shared_ptr<const ProfileConversion> make(Bytes from, Bytes to = {});
    /// To sRGB from a profile that is known to be sound.
    [[nodiscard]] static std::shared_ptr<const ProfileConversion> ofSoundProfile(Bytes profile);

    /// The profile that it converts from.
    [[nodiscard]] Bytes bytes() const { return from_; }
    /// For components stored like this: `rgba8` of opaque pixels, `rgbFloat` and `rgbDouble`, which
    /// are not cut to 0…1.
    /// @return null when there is no memory
    [[nodiscard]] const colorManagement::Transform& transform(colorManagement::Format format) const;

  private:
    ProfileConversion(Bytes from, Bytes to);

    struct Made {
        std::once_flag once;
        colorManagement::Transform transform;
    };

    std::vector<std::byte> from_;
    std::vector<std::byte> to_;
    colorManagement::Context context_;
    mutable std::array<Made, 3> made_;
};

}  // namespace pictal::detail
