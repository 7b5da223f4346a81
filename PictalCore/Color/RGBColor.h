#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/Platform/Foundation/Clamping.h"
#include "PictalCore/Platform/Foundation/JSON.h"

#include <string>

namespace pictal {

/// A colour as the colour picker reads it: components and alpha, premultiplied, in whichever space
/// it was read. The initialiser clamps into 0…1 and keeps NaN; decoding and assignment store what
/// they are given.
struct PICTAL_API RGBColor {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    /// Opaque black.
    constexpr RGBColor() = default;
    constexpr RGBColor(double red, double green, double blue, double alpha);

    /// "#FF8000". Alpha is not written; components outside 0…1 count as the nearer end, NaN as 0.
    [[nodiscard]] std::string hexString() const;
    /// "RGB(255, 128, 0)", by the same rules.
    [[nodiscard]] std::string rgbString() const;

    friend constexpr bool operator==(const RGBColor&, const RGBColor&) = default;
};

constexpr RGBColor::RGBColor(double r, double g, double b, double a)
    : red(clampedToUnit(r)),
      green(clampedToUnit(g)),
      blue(clampedToUnit(b)),
      alpha(clampedToUnit(a)) {}

PICTAL_JSON_CODED(RGBColor);

}  // namespace pictal
