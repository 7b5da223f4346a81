#pragma once

#include "PictalCore/Platform/Graphics/AffineTransform.h"
#include "PictalCore/Platform/Graphics/CGImage.h"
#include "PictalCore/Platform/Graphics/Pixels/ScaledRows.h"
#include "PictalCore/Platform/Graphics/detail/PixelRect.h"

#include <cstdint>
#include <optional>
#include <span>

namespace pictal::detail {

/// An upright image placed on a canvas with high interpolation: exact means where it shrinks, a
/// Catmull–Rom cubic where it grows or lies between the canvas's pixels. Its own colour space.
class ScaledImageSource {
  public:
    /// @param deviceToImage  from canvas pixels to image pixels, both with y down
    /// @param area           what of the canvas may be asked for
    /// @return nothing for an image that is turned or does not meet the area
    [[nodiscard]] static std::optional<ScaledImageSource> make(const CGImage& image,
                                                               const AffineTransform& deviceToImage,
                                                               const PixelRect& area);

    /// As ImageSource's.
    [[nodiscard]] std::span<const std::uint32_t> pixels(std::int64_t row, std::int64_t left,
                                                        std::int64_t count);

  private:
    ScaledImageSource(const CGImage& image, const ScaledRows::Axis& columns,
                      const ScaledRows::Axis& rows);

    ScaledRows rows_;
    PixelRect area_;
    std::int64_t current_;
    std::span<const std::uint32_t> currentPixels_;
};

}  // namespace pictal::detail
