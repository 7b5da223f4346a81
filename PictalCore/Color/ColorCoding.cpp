#include "PictalCore/Color/ColorSample.h"
#include "PictalCore/Platform/Foundation/Coding/JSONCoding.h"

namespace pictal {

namespace detail {

template <>
struct JSONCodec<RGBColor> {
    static JSONValue encode(const RGBColor& color) {
        return JSONObject()
            .set("red", color.red)
            .set("green", color.green)
            .set("blue", color.blue)
            .set("alpha", color.alpha);
    }
    static RGBColor decode(const JSONDecoder& decoder) {
        RGBColor color;
        color.red = decoder.require<double>("red");
        color.green = decoder.require<double>("green");
        color.blue = decoder.require<double>("blue");
        color.alpha = decoder.require<double>("alpha");
        return color;
    }
};

template <>
struct JSONCodec<ColorSample> {
    static JSONValue encode(const ColorSample& sample) {
        return JSONObject()
            .set("color", sample.color)
            .set("encoding", sample.encoding)
            .set("nearestName", sample.nearestName);
    }
    static ColorSample decode(const JSONDecoder& decoder) {
        ColorSample sample;
        sample.color = decoder.require<RGBColor>("color");
        sample.encoding = decoder.require<ColorEncoding>("encoding");
        sample.nearestName = decoder.require<std::string>("nearestName");
        return sample;
    }
};

}  // namespace detail

PICTAL_DEFINE_JSON(RGBColor)
PICTAL_DEFINE_JSON(ColorEncoding)
PICTAL_DEFINE_JSON(ColorSample)

}  // namespace pictal
