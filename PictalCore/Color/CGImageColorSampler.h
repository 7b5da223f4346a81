#pragma once

#include "PictalCore/Color/ColorEncoding.h"
#include "PictalCore/Color/ColorSample.h"
#include "PictalCore/Color/RGBColor.h"
#include "PictalCore/Export.h"
#include "PictalCore/Platform/Foundation/CGGeometry.h"
#include "PictalCore/Platform/Graphics/CGImage.h"

#include <expected>

namespace pictal {

enum class CGImageColorSamplerError {
    /// The image has no pixels, or there is no memory for the conversion of its colours.
    cannotCreateContext,
};

/// Reads one pixel of an image, at a cost that does not depend on the image's size.
namespace CGImageColorSampler {

/// The pixel as four 8-bit levels over 255, premultiplied, as pixels are stored: half-transparent
/// red reads (0.5, 0, 0, 0.5). Converted from the image's space in double precision and rounded
/// once; where the spaces have the same numbers, those are read as they are.
/// @param point  pixels from the upper left corner, y downward; floored and kept inside the image,
///               NaN counts as 0
[[nodiscard]] PICTAL_API std::expected<RGBColor, CGImageColorSamplerError> rgbColor(
    const CGImage& image, CGPoint point, ColorEncoding encoding = ColorEncoding::sRGB);

/// The same with the nearest of `ColorSampler::defaultNames()`.
[[nodiscard]] PICTAL_API std::expected<ColorSample, CGImageColorSamplerError> sample(
    const CGImage& image, CGPoint point, ColorEncoding encoding);

}  // namespace CGImageColorSampler

}  // namespace pictal
