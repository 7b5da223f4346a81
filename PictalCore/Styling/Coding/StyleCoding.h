#pragma once

#include "PictalCore/Platform/Foundation/Coding/JSONFields.h"
#include "PictalCore/Styling/RGBAColor.h"

namespace pictal::detail {

template <>
struct JSONFields<RGBAColor> {
    static constexpr std::tuple list{
        field("red", &RGBAColor::red), field("green", &RGBAColor::green),
        field("blue", &RGBAColor::blue), field("alpha", &RGBAColor::alpha)};
};

}  // namespace pictal::detail
