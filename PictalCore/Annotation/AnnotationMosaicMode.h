#pragma once

#include "PictalCore/Platform/Foundation/JSON.h"
#include "PictalCore/Platform/Foundation/RawValue.h"

namespace pictal {

/// How a mosaic hides what is under it. JSON also knows "pixelate", an old name of `block`.
enum class AnnotationMosaicMode {
    /// Pixellates the picture inside a rectangle or along a brushed path.
    smear,
    /// Covers a rectangle with one solid colour.
    block,
};

template <>
struct RawValues<AnnotationMosaicMode> {
    static constexpr std::array table{
        RawCase{AnnotationMosaicMode::smear, "smear"},
        RawCase{AnnotationMosaicMode::block, "block"},
    };
};

PICTAL_JSON_CODED(AnnotationMosaicMode);

}  // namespace pictal
