#pragma once

#include "PictalCore/Platform/Graphics/AffineTransform.h"
#include "PictalCore/Platform/Graphics/CGImage.h"
#include "PictalCore/Platform/Graphics/Pixels/ColorConversion.h"
#include "PictalCore/Platform/Graphics/detail/CoverageSink.h"
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
    /// @param deviceToImage  from canvas pixels to image pixels, both with y down
    ImageSource(const CGImage& image, const AffineTransform& deviceToImage,
                ColorConversion conversion);

    /// From now on pixels are interpolated, where the image is upright.
    /// @param area  what of the canvas will be asked for
    void interpolate(const PixelRect& area);

    [[nodiscard]] bool isOpaque() const { return image_.isOpaque(); }
    /// The pixels that belong on columns left…left + count − 1 of a canvas row. The span lasts
    /// until the next call.
    [[nodiscard]] std::span<const std::uint32_t> pixels(std::int64_t row, std::int64_t left,
                                                        std::int64_t count);

  private:
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

/// Passes coverage on, weighed by the alpha of an image's pixels: the silhouette of the image.
class AlphaFilter final : public CoverageSink {
  public:
    AlphaFilter(ImageSource& source, CoverageSink& next) : source_(source), next_(next) {}

    void solid(std::int64_t row, std::int64_t left, std::int64_t right) override;
    void varied(std::int64_t row, std::int64_t left,
                std::span<const std::uint8_t> coverage) override;

  private:
    ImageSource& source_;
    CoverageSink& next_;
    std::vector<std::uint8_t> scratch_;
};

}  // namespace pictal::detail
