#pragma once

#include "PictalCore/Platform/Graphics/AffineTransform.h"
#include "PictalCore/Platform/Graphics/CGImage.h"
#include "PictalCore/Platform/Graphics/InterpolationQuality.h"
#include "PictalCore/Platform/Graphics/Pixels/ColorConversion.h"
#include "PictalCore/Platform/Graphics/detail/ScaledImageSource.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace pictal::detail {

/// An image placed on a canvas, read span by span in the canvas's colour space. Each canvas pixel
/// takes the image pixel that its centre falls on, or the nearest one, unless it interpolates.
class ImageSource {
  public:
    /// @param imageToDevice  from image pixels to canvas pixels, both with y down
    /// @return nothing when that squeezes the image into a line
    [[nodiscard]] static std::optional<ImageSource> make(const CGImage& image,
                                                         const AffineTransform& imageToDevice,
                                                         const ColorConversion& conversion);

    /// From now on pixels are interpolated, where that is wanted and the image is upright.
    /// @param area  what of the canvas will be asked for
    void interpolate(InterpolationQuality quality, const PixelRect& area);

    [[nodiscard]] bool isOpaque() const { return image_.isOpaque(); }
    /// The pixels that belong on columns left…left + count − 1 of a canvas row. The span lasts
    /// until the next call.
    [[nodiscard]] std::span<const std::uint32_t> pixels(std::int64_t row, std::int64_t left,
                                                        std::int64_t count);

  private:
    ImageSource(const CGImage& image, const AffineTransform& deviceToImage,
                const ColorConversion& conversion);

    struct Offset {
        std::int64_t x;
        std::int64_t y;
    };
    [[nodiscard]] static std::optional<Offset> wholeOffset(const AffineTransform& transform);
    /// The image's own memory, where its pixels fall on the canvas's; empty elsewhere.
    [[nodiscard]] std::span<const std::uint32_t> stored(std::int64_t row, std::int64_t left,
                                                        std::int64_t count) const;
    [[nodiscard]] std::span<const std::uint32_t> sampled(std::int64_t row, std::int64_t left,
                                                         std::int64_t count);

    CGImage image_;
    AffineTransform deviceToImage_;
    ColorConversion conversion_;
    std::optional<Offset> offset_;  // none: scaled, turned, or between the pixels
    std::optional<ScaledImageSource> interpolated_;
    std::vector<std::uint32_t> scratch_;
};

}  // namespace pictal::detail
