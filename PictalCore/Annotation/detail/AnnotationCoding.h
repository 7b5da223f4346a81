#pragma once

#include "PictalCore/Annotation/AnnotationGeometry.h"
#include "PictalCore/Annotation/AnnotationMosaicMode.h"
#include "PictalCore/Annotation/AnnotationStyle.h"
#include "PictalCore/Platform/Foundation/Coding/JSONCoding.h"

namespace pictal::detail {

template <>
struct JSONCodec<AnnotationMosaicMode> {
    static JSONValue encode(AnnotationMosaicMode mode);
    static AnnotationMosaicMode decode(const JSONDecoder& decoder);
};

template <>
struct JSONCodec<AnnotationGeometry> {
    static JSONValue encode(const AnnotationGeometry& geometry);
    static AnnotationGeometry decode(const JSONDecoder& decoder);
};

template <>
struct JSONCodec<AnnotationStyle> {
    static JSONValue encode(const AnnotationStyle& style);
    static AnnotationStyle decode(const JSONDecoder& decoder);
};

}  // namespace pictal::detail
