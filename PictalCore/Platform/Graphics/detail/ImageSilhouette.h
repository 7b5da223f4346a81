#pragma once

#include "PictalCore/Platform/Graphics/detail/AlphaFilter.h"
#include "PictalCore/Platform/Graphics/detail/Shape.h"

namespace pictal::detail {

/// What an image covers, as far as its pixels are opaque: the shape that casts its shadow.
class ImageSilhouette final : public Shape {
  public:
    /// @param frame  the outline of the image in the same place
    ImageSilhouette(const CGImage& image, const AffineTransform& imageToDevice,
                    InterpolationQuality quality, const Shape& frame)
        : image_(image), imageToDevice_(imageToDevice), quality_(quality), frame_(frame) {}

    void cover(CGPoint moved, const PixelRect& area, CoverageSink& sink) const override {
        const auto place =
            imageToDevice_.concatenated(AffineTransform::translation(moved.x, moved.y));
        auto source = ImageSource::make(image_, place, {});  // alpha is alike in all spaces
        if (!source) return;
        source->interpolate(quality_, area);
        AlphaFilter filter(*source, sink);
        frame_.cover(moved, area, filter);
    }

  private:
    const CGImage& image_;
    AffineTransform imageToDevice_;
    InterpolationQuality quality_;
    const Shape& frame_;
};

}  // namespace pictal::detail
