#include "PictalCore/Scrolling/ScrollingStitcher.h"

#include "PictalCore/Platform/Graphics/Pixels/ColorConversion.h"
#include "PictalCore/Platform/Graphics/Pixels/ImageOfPixels.h"
#include "PictalCore/Platform/Graphics/Pixels/PixelBuffer.h"
#include "PictalCore/Scrolling/ScrollingPainter.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <optional>
#include <vector>

namespace pictal {

using detail::ColorConversion;
using detail::PixelBuffer;

namespace {

using Frames = std::span<const ScrollingStitchFrame>;

ScrollingStitcherError translated(ScrollingPainterError error) {
    return error == ScrollingPainterError::cannotConvertColors
               ? ScrollingStitcherError::cannotCreateImage()
               : ScrollingStitcherError::cannotCreateContext();
}

/// The rows from the highest top to the lowest bottom; nothing when 64 bits do not hold them.
std::optional<std::int64_t> outputHeight(Frames frames) {
    std::int64_t top = frames.front().verticalPosition;
    std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
    for (const auto& [image, position] : frames) {
        std::int64_t bottom = 0;
        if (__builtin_add_overflow(position, image.height(), &bottom)) return std::nullopt;
        top = std::min(top, position);
        lowest = std::max(lowest, bottom);
    }
    std::int64_t height = 0;
    if (__builtin_sub_overflow(lowest, top, &height)) return std::nullopt;
    return height;
}

ScrollingStitcher::Result copyRows(const CGImage& image, std::int64_t top, std::int64_t height) {
    const auto strip =
        image.cropping({0, static_cast<CGFloat>(top), static_cast<CGFloat>(image.width()),
                        static_cast<CGFloat>(height)});
    if (!strip) return std::unexpected(ScrollingStitcherError::cannotCropFrame());
    auto pixels = PixelBuffer::make(image.width(), height, PixelBuffer::Contents::undefined);
    if (!pixels) return std::unexpected(ScrollingStitcherError::cannotCreateContext());
    const auto conversion = ColorConversion::make(image.colorSpace(), CGColorSpace::sRGB());
    if (!conversion) return std::unexpected(ScrollingStitcherError::cannotCreateImage());
    for (std::int64_t y = 0; y < height; ++y)
        conversion->convert(strip->row(y), pixels->row(y));
    return detail::imageOf(*std::move(pixels), CGColorSpace::sRGB());
}

ScrollingStitcher::Result copyStrip(const CGImage& image, std::int64_t height, bool fromTop,
                                    const std::stop_token& cancellation) {
    if (height < 1 || height > image.height())
        return std::unexpected(ScrollingStitcherError::invalidVerticalOffset(height));
    if (cancellation.stop_requested()) return std::unexpected(CancellationError{});
    return copyRows(image, fromTop ? 0 : image.height() - height, height);
}

}  // namespace

ScrollingStitcher::Result ScrollingStitcher::stitch(Frames frames, std::int64_t maximumOutputHeight,
                                                    const std::stop_token& cancellation) const {
    if (frames.empty()) return std::unexpected(ScrollingStitcherError::noFrames());
    const auto height = outputHeight(frames);
    if (!height || *height > maximumOutputHeight)
        return std::unexpected(ScrollingStitcherError::outputTooTall(maximumOutputHeight));
    if (cancellation.stop_requested()) return std::unexpected(CancellationError{});
    if (frames.size() == 1) return frames.front().image;

    std::vector<std::reference_wrapper<const ScrollingStitchFrame>> sorted(frames.begin(),
                                                                           frames.end());
    std::ranges::stable_sort(sorted, {}, &ScrollingStitchFrame::verticalPosition);
    const std::int64_t width = std::ranges::max(frames, {}, [](const auto& frame) {
                                   return frame.image.width();
                               }).image.width();
    auto canvas = PixelBuffer::make(width, *height, PixelBuffer::Contents::undefined);
    if (!canvas) return std::unexpected(ScrollingStitcherError::cannotCreateContext());

    std::int64_t y = 0;
    ScrollingPainter painter(width, [&](std::span<const std::uint32_t> row) {
        std::ranges::copy(row, canvas->row(y++).begin());
        return true;
    });
    for (const ScrollingStitchFrame& frame : sorted) {
        if (cancellation.stop_requested()) return std::unexpected(CancellationError{});
        if (const auto added = painter.add(frame); !added)
            return std::unexpected(translated(added.error()));
    }
    if (const auto finished = painter.finish(); !finished)
        return std::unexpected(translated(finished.error()));
    return detail::imageOf(*std::move(canvas), CGColorSpace::sRGB(),
                           painter.isOpaque() ? detail::Opacity::opaque : detail::Opacity::unknown);
}

ScrollingStitcher::Result ScrollingStitcher::copyNewContent(const CGImage& image,
                                                            std::int64_t height,
                                                            const std::stop_token& cancellation) {
    return copyStrip(image, height, false, cancellation);
}

ScrollingStitcher::Result ScrollingStitcher::copyNewContentFromTop(
    const CGImage& image, std::int64_t height, const std::stop_token& cancellation) {
    return copyStrip(image, height, true, cancellation);
}

}  // namespace pictal
