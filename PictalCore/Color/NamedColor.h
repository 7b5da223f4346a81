#pragma once

#include "PictalCore/Color/RGBColor.h"

#include <string>

namespace pictal {

/// A plain-language name and the colour it stands for.
struct NamedColor {
    std::string name;
    RGBColor color;

    friend bool operator==(const NamedColor&, const NamedColor&) = default;
};

}  // namespace pictal
