#pragma once

#include "PictalCore/Platform/Foundation/JSON.h"
#include "PictalCore/Platform/Foundation/RawValue.h"

namespace pictal {

/// The colour space in which a pixel is read.
enum class ColorEncoding {
    native,      ///< the numbers that the image stores, in its own space
    genericRGB,  ///< device RGB, whose numbers are those of sRGB
    sRGB,
    adobeRGB1998,
    displayP3,
};

template <>
struct RawValues<ColorEncoding> {
    static constexpr std::array table{
        RawCase{ColorEncoding::native, "native"},
        RawCase{ColorEncoding::genericRGB, "genericRGB"},
        RawCase{ColorEncoding::sRGB, "sRGB"},
        RawCase{ColorEncoding::adobeRGB1998, "adobeRGB1998"},
        RawCase{ColorEncoding::displayP3, "displayP3"},
    };
};

PICTAL_JSON_CODED(ColorEncoding);

}  // namespace pictal
