#pragma once

#include "PictalCore/Platform/Foundation/Coding/JSONCoding.h"
#include "PictalCore/Styling/RGBAColor.h"
#include "PictalCore/Styling/ShadowStyle.h"

namespace pictal::detail {

template <>
struct JSONCodec<RGBAColor> {
    static JSONValue encode(const RGBAColor& color);
    static RGBAColor decode(const JSONDecoder& decoder);
};

template <>
struct JSONCodec<ShadowStyle> {
    static JSONValue encode(const ShadowStyle& shadow);
    static ShadowStyle decode(const JSONDecoder& decoder);
};

}  // namespace pictal::detail
