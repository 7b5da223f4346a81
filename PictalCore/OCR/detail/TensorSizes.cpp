#include "PictalCore/OCR/detail/TensorSizes.h"

#include <algorithm>
#include <cmath>

namespace pictal::detail {

namespace {

constexpr std::int64_t unit = 32;  // what the detector halves five times
constexpr std::int64_t widestLine = 3200;
constexpr float beyond = 0x1p40F;

/// Towards zero, at least `least`.
std::int64_t whole(float side, std::int64_t least) {
    return std::max(static_cast<std::int64_t>(std::clamp(side, 0.0F, beyond)), least);
}

float singlePrecision(std::int64_t side) {
    return static_cast<float>(side);
}

float detectionScale(const PaddleOCRImageSize& image, const PaddleOCRDetectionConfig& config) {
    const auto [width, height] = image;
    const std::int64_t side = config.limitSideLength;
    const float limit = singlePrecision(std::max(side, unit));
    if (config.limitType == "min") {
        if (std::min(width, height) >= side) return 1;
        return limit / singlePrecision(width < height ? width : height);
    }
    if (config.limitType == "resize_long") return limit / singlePrecision(std::max(width, height));
    if (std::max(width, height) <= side) return 1;
    return limit / singlePrecision(height < width ? width : height);
}

std::int64_t roundedToUnit(std::int64_t side) {
    const double units = std::round(static_cast<double>(side) / static_cast<double>(unit));
    return std::max(static_cast<std::int64_t>(units) * unit, unit);
}

}  // namespace

PaddleOCRImageSize detectionSize(const PaddleOCRImageSize& image,
                                 const PaddleOCRDetectionConfig& config) {
    const float scale = detectionScale(image, config);
    std::int64_t width = whole(scale * singlePrecision(image.width), 1);
    std::int64_t height = whole(scale * singlePrecision(image.height), 1);
    const std::int64_t longer = std::max(width, height);
    if (config.maxSideLimit >= 1 && longer > config.maxSideLimit) {
        const float fit = singlePrecision(config.maxSideLimit) / singlePrecision(longer);
        width = whole(fit * singlePrecision(width), 1);
        height = whole(fit * singlePrecision(height), 1);
    }
    return {roundedToUnit(width), roundedToUnit(height)};
}

RecognitionWidths recognitionWidths(const PaddleOCRImageSize& image, std::int64_t height,
                                    std::int64_t minimumWidth) {
    const float aspect = singlePrecision(image.width) / singlePrecision(image.height);
    const float least = singlePrecision(minimumWidth) / singlePrecision(height);
    const float tall = singlePrecision(height);
    const std::int64_t wanted = whole(std::ceil(std::max(aspect, least) * tall), 0);
    const std::int64_t canvas = std::min(std::max(wanted, minimumWidth), widestLine);
    return {canvas, std::min(whole(std::ceil(aspect * tall), 1), canvas)};
}

}  // namespace pictal::detail
