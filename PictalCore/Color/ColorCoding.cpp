#include "PictalCore/Color/ColorSample.h"
#include "PictalCore/Platform/Foundation/Coding/JSONFields.h"

namespace pictal {

namespace detail {

template <>
struct JSONFields<RGBColor> {
    static constexpr std::tuple list{field("red", &RGBColor::red), field("green", &RGBColor::green),
                                     field("blue", &RGBColor::blue),
                                     field("alpha", &RGBColor::alpha)};
};

template <>
struct JSONFields<ColorSample> {
    static constexpr std::tuple list{field("color", &ColorSample::color),
                                     field("encoding", &ColorSample::encoding),
                                     field("nearestName", &ColorSample::nearestName)};
};

}  // namespace detail

PICTAL_DEFINE_JSON(RGBColor)
PICTAL_DEFINE_JSON(ColorEncoding)
PICTAL_DEFINE_JSON(ColorSample)

}  // namespace pictal
