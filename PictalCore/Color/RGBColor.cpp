#include "PictalCore/Color/RGBColor.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace pictal {

namespace {

/// 0…255, halves away from zero.
int channel(double component) {
    return component > 0 ? static_cast<int>(std::lround(std::min(component, 1.0) * 255)) : 0;
}

void appendHex(std::string& text, int value) {
    static constexpr char digits[] = "0123456789ABCDEF";
    text += digits[value / 16];
    text += digits[value % 16];
}

}  // namespace

std::string RGBColor::hexString() const {
    std::string text = "#";
    for (const double component : {red, green, blue})
        appendHex(text, channel(component));
    return text;
}

std::string RGBColor::rgbString() const {
    return "RGB(" + std::to_string(channel(red)) + ", " + std::to_string(channel(green)) + ", " +
           std::to_string(channel(blue)) + ")";
}

}  // namespace pictal
