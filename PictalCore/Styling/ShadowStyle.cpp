#include "PictalCore/Styling/ShadowStyle.h"

#include "PictalCore/Styling/Coding/StyleCoding.h"

namespace pictal {

namespace detail {

JSONValue JSONCodec<ShadowStyle>::encode(const ShadowStyle& shadow) {
    return JSONObject()
        .set("blur", shadow.blur)
        .set("offsetX", shadow.offsetX)
        .set("offsetY", shadow.offsetY)
        .set("opacity", shadow.opacity)
        .set("color", shadow.color);
}

ShadowStyle JSONCodec<ShadowStyle>::decode(const JSONDecoder& decoder) {
    ShadowStyle shadow;
    shadow.blur = decoder.require<CGFloat>("blur");
    shadow.offsetX = decoder.require<CGFloat>("offsetX");
    shadow.offsetY = decoder.require<CGFloat>("offsetY");
    shadow.opacity = decoder.require<CGFloat>("opacity");
    shadow.color = decoder.require<RGBAColor>("color");
    return shadow;
}

}  // namespace detail

PICTAL_DEFINE_JSON(ShadowStyle)

}  // namespace pictal
