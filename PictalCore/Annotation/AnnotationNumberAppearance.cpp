#include "PictalCore/Annotation/AnnotationNumberAppearance.h"

#include <cmath>

namespace pictal::AnnotationNumberAppearance {

namespace {

// Luminance and contrast as WCAG 2 defines them, with sRGB's own threshold.
CGFloat linear(CGFloat component) {
    return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

}  // namespace

RGBAColor foreground(const RGBAColor& fill) {
    const CGFloat luminance =
        0.2126 * linear(fill.red) + 0.7152 * linear(fill.green) + 0.0722 * linear(fill.blue);
    const CGFloat withBlack = (luminance + 0.05) / 0.05;
    const CGFloat withWhite = 1.05 / (luminance + 0.05);
    return withWhite <= withBlack ? RGBAColor(0, 0, 0, 1) : RGBAColor(1, 1, 1, 1);
}

}  // namespace pictal::AnnotationNumberAppearance
