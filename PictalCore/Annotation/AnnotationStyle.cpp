#include "PictalCore/Annotation/AnnotationStyle.h"

#include "PictalCore/Annotation/detail/AnnotationCoding.h"
#include "PictalCore/Styling/Coding/StyleCoding.h"

namespace pictal {

namespace detail {

JSONValue JSONCodec<AnnotationStyle>::encode(const AnnotationStyle& style) {
    return JSONObject()
        .set("stroke", style.stroke)
        .set("fill", style.fill)
        .set("lineWidth", style.lineWidth)
        .set("opacity", style.opacity)
        .set("fontSize", style.fontSize)
        .set("textOutline", style.textOutline)
        .set("textOutlineWidth", style.textOutlineWidth)
        .set("mosaicMode", style.mosaicMode);
}

AnnotationStyle JSONCodec<AnnotationStyle>::decode(const JSONDecoder& decoder) {
    const auto stroke = decoder.require<RGBAColor>("stroke");
    const auto fill = decoder.require<RGBAColor>("fill");
    const auto lineWidth = decoder.require<CGFloat>("lineWidth");
    const auto opacity = decoder.require<CGFloat>("opacity");
    const auto fontSize = decoder.require<CGFloat>("fontSize");
    const auto textOutline = decoder.require<RGBAColor>("textOutline");
    // Younger than the others: stored styles may lack them.
    const auto textOutlineWidth = decoder.optional<CGFloat>("textOutlineWidth").value_or(2);
    const auto mosaicMode =
        decoder.optional<AnnotationMosaicMode>("mosaicMode").value_or(AnnotationMosaicMode::block);
    return {stroke, fill, lineWidth, opacity, fontSize, textOutline, textOutlineWidth, mosaicMode};
}

}  // namespace detail

PICTAL_DEFINE_JSON(AnnotationStyle)

}  // namespace pictal
