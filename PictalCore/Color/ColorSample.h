#pragma once

#include "PictalCore/Color/ColorEncoding.h"
#include "PictalCore/Color/RGBColor.h"

#include <string>

namespace pictal {

/// What the colour picker keeps of a pixel. All three are stored and decoded as given, the name
/// even where it no longer matches the colour.
struct ColorSample {
    RGBColor color;
    ColorEncoding encoding = ColorEncoding::sRGB;
    std::string nearestName;

    friend bool operator==(const ColorSample&, const ColorSample&) = default;
};

PICTAL_JSON_CODED(ColorSample);

}  // namespace pictal
