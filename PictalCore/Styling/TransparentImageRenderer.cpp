#include "PictalCore/Styling/TransparentImageRenderer.h"

#include "PictalCore/Platform/Foundation/Clamping.h"
#include "PictalCore/Platform/Graphics/Kernels/Arithmetic.h"
#include "PictalCore/Platform/Graphics/Pixels/ColorConversion.h"
#include "PictalCore/Platform/Graphics/Pixels/ImageOfPixels.h"
#include "PictalCore/Platform/ImageIO/PNG.h"
#include "PictalCore/Styling/detail/CardShadow.h"
#include "PictalCore/Styling/detail/RoundedMask.h"
#include "PictalCore/Styling/detail/ShadowLayers.h"

#include <algorithm>

namespace pictal {

namespace {

/// Keeps as much of a pixel as is covered, rounded once.
void cover(std::uint32_t& pixel, float coverage) {
    const auto kept = [coverage](std::uint32_t component) {
        return kernels::nearestLevel(static_cast<float>(component) * coverage);
    };
    pixel = kernels::pixelOf(kept(kernels::redOf(pixel)), kept(kernels::greenOf(pixel)),
                             kept(kernels::blueOf(pixel)), kept(kernels::alphaOf(pixel)));
}

/// Puts a row of the picture onto `canvas`, its place there; what the mask hides stays as it is.
void drawPictureRow(std::span<std::uint32_t> canvas, std::span<const std::uint32_t> picture,
                    const detail::RoundedMask::Row& mask,
                    const detail::ColorConversion& conversion) {
    const auto outside = static_cast<std::size_t>(mask.outside);
    const std::size_t shown = canvas.size() - 2 * outside;
    const auto pixels = canvas.subspan(outside, shown);
    conversion.convert(picture.subspan(outside, shown), pixels);
    // The edges of both ends may share the middle column of a small picture.
    for (std::size_t i = 0; i < std::min(mask.edge.size(), (shown + 1) / 2); ++i)
        cover(pixels[i], mask.edge[i]);
    for (std::size_t i = 0; i < std::min(mask.edge.size(), shown / 2); ++i)
        cover(pixels[shown - 1 - i], mask.edge[i]);
}

void fill(std::span<std::uint32_t> row, std::int64_t from, std::int64_t to, std::uint32_t pixel) {
    for (std::int64_t x = from; x < to; ++x)
        row[static_cast<std::size_t>(x)] = pixel;
}

}  // namespace

bool TransparentImageRenderer::isWithinLimits(const CGImage& image,
                                              const ScreenshotStyle& style) const {
    if (style.cardEffect != ScreenshotCardEffect::presentation) return true;
    const CGFloat padding = detail::shadowPadding(style.shadow);
    if (!(padding <= static_cast<CGFloat>(detail::maximumSide))) return false;
    const auto margins = 2 * static_cast<std::int64_t>(padding);
    return image.width() > 0 &&
           detail::PixelBuffer::isWithinLimits(image.width() + margins, image.height() + margins);
}

std::expected<CGImage, TransparentImageRendererError> TransparentImageRenderer::render(
    const CGImage& image, const ScreenshotStyle& style) const {
    using enum TransparentImageRendererError;
    if (style.cardEffect != ScreenshotCardEffect::presentation) return image;

    if (!isWithinLimits(image, style)) return std::unexpected(cannotCreateContext);
    const CGFloat padding = detail::shadowPadding(style.shadow);
    const CGFloat largestRadius = static_cast<CGFloat>(std::min(image.width(), image.height())) / 2;
    const detail::CardOutline outline{
        image.width(), image.height(), static_cast<std::int64_t>(padding),
        std::min(clampedToNonNegative(style.cornerRadius), largestRadius)};
    auto canvas = detail::PixelBuffer::make(outline.canvasWidth(), outline.canvasHeight(),
                                            detail::PixelBuffer::Contents::undefined);
    if (!canvas) return std::unexpected(cannotCreateContext);
    const auto conversion = detail::ColorConversion::make(image.colorSpace(), CGColorSpace::sRGB());
    if (!conversion) return std::unexpected(cannotCreateImage);

    detail::CardShadow shadow(style.shadow, outline);
    const detail::RoundedMask mask(outline.width, outline.height, outline.radius);
    for (std::int64_t y = 0; y < canvas->height(); ++y) {
        const std::span<std::uint32_t> row = canvas->row(y);
        const auto [left, between, right] = shadow.row(y);
        std::ranges::copy(left, row.begin());
        std::ranges::copy(right, row.end() - std::ssize(right));
        const std::int64_t begin = std::ssize(left);
        const std::int64_t end = canvas->width() - std::ssize(right);
        const std::int64_t pictureY = y - outline.padding;
        if (pictureY < 0 || pictureY >= outline.height) {
            fill(row, begin, end, between);
            continue;
        }
        const detail::RoundedMask::Row shown = mask.row(pictureY);
        fill(row, begin, outline.padding + shown.outside, 0);
        fill(row, outline.padding + outline.width - shown.outside, end, 0);
        drawPictureRow(row.subspan(static_cast<std::size_t>(outline.padding),
                                   static_cast<std::size_t>(outline.width)),
                       image.row(pictureY), shown, *conversion);
    }
    return detail::imageOf(*std::move(canvas), CGColorSpace::sRGB());
}

std::expected<std::vector<std::byte>, TransparentImageRendererError>
TransparentImageRenderer::pngData(const CGImage& image) const {
    using enum TransparentImageRendererError;
    auto bytes = PNG::write(image);
    if (bytes) return *std::move(bytes);
    return std::unexpected(bytes.error() == PNG::WriteError::emptyImage
                               ? cannotEncodePNG
                               : cannotCreatePNGDestination);
}

}  // namespace pictal
