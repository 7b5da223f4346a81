#include "PictalCore/Platform/Graphics/detail/ImageSource.h"

#include <algorithm>
#include <cmath>

namespace pictal::detail {

namespace {

/// The pixel that a coordinate falls on, or the nearest one there is.
std::int64_t nearest(CGFloat coordinate, std::int64_t count) {
    const auto last = static_cast<CGFloat>(count - 1);
    return static_cast<std::int64_t>(std::clamp(std::floor(coordinate), 0.0, last));
}

}  // namespace

std::optional<ImageSource::Offset> ImageSource::wholeOffset(const AffineTransform& transform) {
    const CGFloat x = std::round(transform.tx);
    const CGFloat y = std::round(transform.ty);
    constexpr CGFloat limit = 0x1p40;  // beyond any raster, and exact
    if (transform != AffineTransform::translation(x, y) || std::abs(x) > limit ||
        std::abs(y) > limit)
        return std::nullopt;
    return Offset{static_cast<std::int64_t>(x), static_cast<std::int64_t>(y)};
}

std::optional<ImageSource> ImageSource::make(const CGImage& image,
                                             const AffineTransform& imageToDevice,
                                             const ColorConversion& conversion) {
    const auto deviceToImage = imageToDevice.inverted();
    if (!deviceToImage) return std::nullopt;
    return ImageSource(image, *deviceToImage, conversion);
}

ImageSource::ImageSource(const CGImage& image, const AffineTransform& deviceToImage,
                         const ColorConversion& conversion)
    : image_(image),
      deviceToImage_(deviceToImage),
      conversion_(conversion),
      offset_(wholeOffset(deviceToImage)) {}

void ImageSource::interpolate(InterpolationQuality quality, const PixelRect& area) {
    if (quality == InterpolationQuality::high && !offset_)
        interpolated_ = ScaledImageSource::make(image_, deviceToImage_, area);
}

std::span<const std::uint32_t> ImageSource::stored(std::int64_t row, std::int64_t left,
                                                   std::int64_t count) const {
    if (!offset_) return {};
    const std::int64_t x = left + offset_->x;
    const std::int64_t y = row + offset_->y;
    if (x < 0 || y < 0 || x + count > image_.width() || y >= image_.height()) return {};
    return image_.row(y).subspan(static_cast<std::size_t>(x), static_cast<std::size_t>(count));
}

std::span<const std::uint32_t> ImageSource::sampled(std::int64_t row, std::int64_t left,
                                                    std::int64_t count) {
    scratch_.resize(std::max(scratch_.size(), static_cast<std::size_t>(count)));
    const auto y = static_cast<CGFloat>(row) + 0.5;
    for (std::int64_t i = 0; i < count; ++i) {
        const CGPoint place = deviceToImage_.applied({static_cast<CGFloat>(left + i) + 0.5, y});
        const std::int64_t column = nearest(place.x, image_.width());
        scratch_[static_cast<std::size_t>(i)] =
            image_.row(nearest(place.y, image_.height()))[static_cast<std::size_t>(column)];
    }
    return std::span(scratch_).first(static_cast<std::size_t>(count));
}

std::span<const std::uint32_t> ImageSource::pixels(std::int64_t row, std::int64_t left,
                                                   std::int64_t count) {
    std::span<const std::uint32_t> source = stored(row, left, count);
    if (source.empty() && interpolated_) source = interpolated_->pixels(row, left, count);
    if (source.empty()) source = sampled(row, left, count);
    if (conversion_.isIdentity()) return source;
    scratch_.resize(std::max(scratch_.size(), source.size()));
    const auto converted = std::span(scratch_).first(source.size());
    conversion_.convert(source, converted);
    return converted;
}

}  // namespace pictal::detail
