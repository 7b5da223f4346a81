#pragma once

#include "PictalCore/Platform/Graphics/Pixels/ColorProfile.h"

#include <array>

/// RGB spaces that are told by a few published numbers, and the arithmetic between them.
namespace pictal::detail {

/// Red, green and blue, 0…1 and beyond; not premultiplied.
using ColorComponents = std::array<double, 3>;

struct RGBNumbers {
    Chromaticities chromaticities;
    /// That of sRGB or a power.
    ToneCurve curve;
};

/// IEC 61966-2-1.
inline constexpr RGBNumbers standardRGB{};
/// SMPTE EG 432-1's primaries with the white and the curve of sRGB.
inline constexpr RGBNumbers displayP3{
    {.red = {0.680, 0.320}, .green = {0.265, 0.690}, .blue = {0.150, 0.060}}, {}};
/// IEC 61966-2-5.
inline constexpr RGBNumbers adobeRGB1998{
    {.red = {0.64, 0.33}, .green = {0.21, 0.71}, .blue = {0.15, 0.06}},
    ToneCurve::power(563 / 256.0)};

/// Carries one colour between two spaces of the same white; relative
/// colorimetric, each channel cut to 0…1. Components outside 0…1 that come in are colours outside
/// the space, as far as its curve goes on.
[[nodiscard]] ColorComponents converted(const ColorComponents& color, const RGBNumbers& from,
                                        const RGBNumbers& to);

}  // namespace pictal::detail
