#include "PictalCore/Color/CGImageColorSampler.h"

#include "PictalCore/Color/ColorSampler.h"
#include "PictalCore/Platform/Graphics/Kernels/Arithmetic.h"
#include "PictalCore/Platform/Graphics/Pixels/ColorConversion.h"

#include <algorithm>
#include <cmath>

namespace pictal::CGImageColorSampler {

namespace {

CGColorSpace spaceOf(ColorEncoding encoding, const CGImage& image) {
    switch (encoding) {
        case ColorEncoding::native:
            return image.colorSpace();
        case ColorEncoding::genericRGB:
            break;
        case ColorEncoding::sRGB:
            return CGColorSpace::sRGB();
        case ColorEncoding::adobeRGB1998:
            return CGColorSpace::adobeRGB1998();
        case ColorEncoding::displayP3:
            return CGColorSpace::displayP3();
    }
    return CGColorSpace::deviceRGB();
}

/// The index that a coordinate falls on, 0…count − 1.
std::int64_t indexOf(CGFloat coordinate, std::int64_t count) {
    if (!(coordinate >= 1)) return 0;
    return static_cast<std::int64_t>(std::min(coordinate, static_cast<CGFloat>(count - 1)));
}

}  // namespace

std::expected<RGBColor, CGImageColorSamplerError> rgbColor(const CGImage& image, CGPoint point,
                                                           ColorEncoding encoding) {
    using namespace kernels;
    using detail::ColorComponents;
    const std::unexpected failure(CGImageColorSamplerError::cannotCreateContext);
    if (image.width() < 1 || image.height() < 1) return failure;
    const auto column = static_cast<std::size_t>(indexOf(point.x, image.width()));
    const std::uint32_t pixel = image.row(indexOf(point.y, image.height()))[column];
    const std::uint32_t alpha = alphaOf(pixel);
    const ColorComponents stored{static_cast<double>(redOf(pixel)),
                                 static_cast<double>(greenOf(pixel)),
                                 static_cast<double>(blueOf(pixel))};
    const CGColorSpace space = spaceOf(encoding, image);
    ColorComponents levels = stored;
    if (alpha != 0 && !image.colorSpace().hasSameNumbersAs(space)) {
        ColorComponents straight = stored;
        for (double& component : straight)
            component = std::min(component / alpha, 1.0);
        const auto converted =
            detail::ColorConversion::convert(straight, image.colorSpace(), space);
        if (!converted) return failure;
        for (std::size_t i = 0; i < levels.size(); ++i)
            levels[i] = std::round((*converted)[i] * alpha);
    }
    return RGBColor(levels[0] / 255, levels[1] / 255, levels[2] / 255, alpha / 255.0);
}

std::expected<ColorSample, CGImageColorSamplerError> sample(const CGImage& image, CGPoint point,
                                                            ColorEncoding encoding) {
    const auto color = rgbColor(image, point, encoding);
    if (!color) return std::unexpected(color.error());
    return ColorSampler::sample(*color, encoding, ColorSampler::defaultNames());
}

}  // namespace pictal::CGImageColorSampler
