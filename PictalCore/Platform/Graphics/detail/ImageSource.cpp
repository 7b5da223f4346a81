#include "PictalCore/Platform/Graphics/detail/ImageSource.h"

#include "PictalCore/Platform/Graphics/Kernels/Arithmetic.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace pictal::detail {

namespace {

/// The pixel that a coordinate falls on, or the nearest one there is.
std::int64_t nearest(CGFloat coordinate, std::int64_t count) {
    const auto last = static_cast<CGFloat>(count - 1);
    return static_cast<std::int64_t>(std::clamp(std::floor(coordinate), 0.0, last));
}

}  // namespace

ImageSource::ImageSource(const CGImage& image, const AffineTransform& deviceToImage,
                         ColorConversion conversion)
    : image_(image),
      deviceToImage_(deviceToImage),
      conversion_(std::move(conversion)),
      placedPixelByPixel_(deviceToImage ==
                          AffineTransform::translation(std::round(deviceToImage.tx),
                                                       std::round(deviceToImage.ty))) {}

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
    std::span<const std::uint32_t> source;
    const auto x = left + static_cast<std::int64_t>(deviceToImage_.tx);
    const auto y = row + static_cast<std::int64_t>(deviceToImage_.ty);
    const bool inside = placedPixelByPixel_ && x >= 0 && y >= 0 && x + count <= image_.width() &&
                        y < image_.height();
    if (inside)
        source =
            image_.row(y).subspan(static_cast<std::size_t>(x), static_cast<std::size_t>(count));
    else
        source = sampled(row, left, count);
    if (conversion_.isIdentity()) return source;
    scratch_.resize(std::max(scratch_.size(), source.size()));
    const auto converted = std::span(scratch_).first(source.size());
    conversion_.convert(source, converted);
    return converted;
}

void AlphaFilter::solid(std::int64_t row, std::int64_t left, std::int64_t right) {
    const std::vector<std::uint8_t> whole(static_cast<std::size_t>(right - left), 255);
    varied(row, left, whole);
}

void AlphaFilter::varied(std::int64_t row, std::int64_t left,
                         std::span<const std::uint8_t> coverage) {
    const auto pixels = source_.pixels(row, left, static_cast<std::int64_t>(coverage.size()));
    scratch_.resize(coverage.size());
    for (std::size_t i = 0; i < coverage.size(); ++i)
        scratch_[i] = static_cast<std::uint8_t>(
            kernels::divideBy255(kernels::alphaOf(pixels[i]) * coverage[i]));
    next_.varied(row, left, scratch_);
}

}  // namespace pictal::detail
