#include "PictalCore/Platform/Graphics/CGImage.h"

#include "PictalCore/Platform/Graphics/Kernels/Alpha.h"
#include "PictalCore/Platform/Graphics/Pixels/ImageOfPixels.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace pictal {

using detail::PixelBuffer;

struct CGImage::Storage {
    PixelBuffer pixels;
    CGColorSpace colorSpace;
    bool opaque = false;
};

namespace {

bool allOpaque(const PixelBuffer& pixels) {
    for (std::int64_t y = 0; y < pixels.height(); ++y) {
        std::uint32_t alphas = 0xFF000000;
        for (const std::uint32_t pixel : pixels.row(y))
            alphas &= pixel;
        if (alphas != 0xFF000000) return false;
    }
    return true;
}

/// The whole numbers from floor(low) to ceil(high) inside 0…limit.
std::pair<std::int64_t, std::int64_t> boundedRange(CGFloat low, CGFloat high, std::int64_t limit) {
    const auto bounded = [=](CGFloat value) {
        return static_cast<std::int64_t>(std::clamp(value, 0.0, static_cast<CGFloat>(limit)));
    };
    return {bounded(low), bounded(high)};
}

}  // namespace

CGImage::CGImage() = default;
CGImage::CGImage(const CGImage&) = default;
CGImage::CGImage(CGImage&&) noexcept = default;
CGImage& CGImage::operator=(const CGImage&) = default;
CGImage& CGImage::operator=(CGImage&&) noexcept = default;
CGImage::~CGImage() = default;

CGImage detail::imageOf(PixelBuffer&& pixels, const CGColorSpace& colorSpace, Opacity opacity) {
    CGImage image;
    if (pixels.width() == 0) return image;
    image.pixels_ = pixels.pixels();
    image.width_ = pixels.width();
    image.height_ = pixels.height();
    image.stride_ = pixels.stride();
    const bool opaque =
        opacity == Opacity::unknown ? allOpaque(pixels) : opacity == Opacity::opaque;
    image.storage_ = std::make_shared<const CGImage::Storage>(
        CGImage::Storage{std::move(pixels), colorSpace, opaque});
    return image;
}

std::optional<CGImage> CGImage::fromBytes(std::span<const std::byte> bytes, const Layout& layout,
                                          const CGColorSpace& colorSpace) {
    auto pixels = PixelBuffer::make(layout.width, layout.height, PixelBuffer::Contents::undefined);
    if (!pixels || layout.bytesPerRow < layout.width * 4) return std::nullopt;
    const auto rowBytes = static_cast<std::size_t>(layout.width) * 4;
    const auto step = static_cast<std::size_t>(layout.bytesPerRow);
    const auto rowsBefore = static_cast<std::size_t>(layout.height - 1);
    if (bytes.size() < rowBytes || (bytes.size() - rowBytes) / step < rowsBefore)
        return std::nullopt;

    for (std::int64_t y = 0; y < layout.height; ++y) {
        const std::span<std::uint32_t> row = pixels->row(y);
        std::memcpy(row.data(), bytes.data() + static_cast<std::size_t>(y) * step, rowBytes);
        for (std::uint32_t& pixel : row) {
            if (layout.alpha == Alpha::ignored) pixel |= 0xFF000000;
            if (layout.alpha == Alpha::straight) pixel = kernels::premultiplied(pixel);
        }
    }
    return detail::imageOf(*std::move(pixels), colorSpace);
}

const CGColorSpace& CGImage::colorSpace() const {
    static const CGColorSpace none;
    return storage_ ? storage_->colorSpace : none;
}

bool CGImage::isOpaque() const {
    return storage_ && storage_->opaque;
}

std::optional<CGImage> CGImage::cropping(const CGRect& rect) const {
    const CGRect whole = rect.integral();
    if (whole.isEmpty()) return std::nullopt;
    const auto [left, right] = boundedRange(whole.minX(), whole.maxX(), width_);
    const auto [top, bottom] = boundedRange(whole.minY(), whole.maxY(), height_);
    if (left >= right || top >= bottom) return std::nullopt;
    CGImage crop = *this;
    crop.pixels_ += top * stride_ + left;
    crop.width_ = right - left;
    crop.height_ = bottom - top;
    return crop;
}

bool CGImage::isSameImage(const CGImage& other) const {
    return storage_ == other.storage_ && pixels_ == other.pixels_ && width_ == other.width_ &&
           height_ == other.height_;
}

}  // namespace pictal
