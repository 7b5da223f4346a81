#pragma once

#include "PictalCore/Platform/Graphics/Pixels/ToneCurve.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

/// ICC profiles made from measurements, and what a profile says.
namespace pictal::detail {

struct Chromaticity {
    double x = 0;
    double y = 0;
};

/// The white and the primaries of an RGB space; by default those of sRGB.
struct Chromaticities {
    Chromaticity white{0.3127, 0.3290};
    Chromaticity red{0.64, 0.33};
    Chromaticity green{0.30, 0.60};
    Chromaticity blue{0.15, 0.06};
};

/// @return the same bytes for the same numbers; nothing for primaries that span no colours
[[nodiscard]] std::optional<std::vector<std::byte>> makeRGBProfile(
    const Chromaticities& chromaticities, const ToneCurve& curve = {});
[[nodiscard]] std::optional<std::vector<std::byte>> makeGreyProfile(const ToneCurve& curve);

/// Red, green and blue, 65535 the brightest.
using WideRGB = std::array<std::uint16_t, 3>;

/// The sRGB colours of `count` evenly spaced levels of grey, from black to white.
/// @return nothing when the profile is no usable one of a grey space
[[nodiscard]] std::optional<std::vector<WideRGB>> greyLevelsInSRGB(
    std::span<const std::byte> profile, std::size_t count);

/// The name that the profile gives itself, printable ASCII only; empty when it has none.
[[nodiscard]] std::string profileName(std::span<const std::byte> profile);

}  // namespace pictal::detail
