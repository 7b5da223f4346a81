#include "PictalCore/Annotation/AnnotationMosaicMode.h"

#include "PictalCore/Annotation/detail/AnnotationCoding.h"

namespace pictal {

namespace detail {

JSONValue JSONCodec<AnnotationMosaicMode>::encode(AnnotationMosaicMode mode) {
    return JSONValue{std::string(rawValue(mode))};
}

AnnotationMosaicMode JSONCodec<AnnotationMosaicMode>::decode(const JSONDecoder& decoder) {
    const auto text = decoder.decode<std::string>();
    if (text == "pixelate") return AnnotationMosaicMode::block;
    const auto mode = fromRawValue<AnnotationMosaicMode>(text);
    if (!mode)
        decoder.fail(DecodingError::Kind::dataCorrupted, "Unknown annotation mosaic mode: " + text);
    return mode.value_or(AnnotationMosaicMode::block);
}

}  // namespace detail

PICTAL_DEFINE_JSON(AnnotationMosaicMode)

}  // namespace pictal
