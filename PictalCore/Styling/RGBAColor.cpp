#include "PictalCore/Styling/RGBAColor.h"

#include "PictalCore/Styling/Coding/StyleCoding.h"

namespace pictal {

namespace detail {

JSONValue JSONCodec<RGBAColor>::encode(const RGBAColor& color) {
    return JSONObject()
        .set("red", color.red)
        .set("green", color.green)
        .set("blue", color.blue)
        .set("alpha", color.alpha);
}

RGBAColor JSONCodec<RGBAColor>::decode(const JSONDecoder& decoder) {
    RGBAColor color;
    color.red = decoder.require<CGFloat>("red");
    color.green = decoder.require<CGFloat>("green");
    color.blue = decoder.require<CGFloat>("blue");
    color.alpha = decoder.require<CGFloat>("alpha");
    return color;
}

}  // namespace detail

PICTAL_DEFINE_JSON(RGBAColor)

}  // namespace pictal
