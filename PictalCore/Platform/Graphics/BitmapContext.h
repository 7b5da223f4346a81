#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/Platform/Foundation/CGGeometry.h"
#include "PictalCore/Platform/Graphics/AffineTransform.h"
#include "PictalCore/Platform/Graphics/BlendMode.h"
#include "PictalCore/Platform/Graphics/CGColor.h"
#include "PictalCore/Platform/Graphics/CGColorSpace.h"
#include "PictalCore/Platform/Graphics/CGImage.h"
#include "PictalCore/Platform/Graphics/FillRule.h"
#include "PictalCore/Platform/Graphics/InterpolationQuality.h"
#include "PictalCore/Platform/Graphics/Path.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace pictal {

/// The drawing surface: a raster of 8-bit RGBA pixels, transparent at first. One unit is one pixel,
/// the origin is the lower left corner and y grows upward, until the transform says otherwise.
///
/// Shapes are antialiased, strokes have round caps and joins and count as one area where they touch
/// themselves. Blending works on the stored 8-bit values. Nothing here fails once the context is
/// made: a shape with a coordinate that is not finite draws nothing.
class PICTAL_API BitmapContext {
  public:
    /// @return nothing for a size that is not positive, over 8,000,000 pixels a side or 8 GiB in
    ///         all, or that memory has no room for
    [[nodiscard]] static std::optional<BitmapContext> make(std::int64_t width, std::int64_t height,
                                                           const CGColorSpace& colorSpace);

    BitmapContext(BitmapContext&&) noexcept;
    BitmapContext& operator=(BitmapContext&&) noexcept;
    ~BitmapContext();

    [[nodiscard]] std::int64_t width() const;
    [[nodiscard]] std::int64_t height() const;

    /// The state is everything below that is set: transform, clip, colours, width, mode, alpha,
    /// antialiasing, interpolation, shadow. A restore without a save does nothing.
    void saveGState();
    void restoreGState();

    /// Applies `transform` before the one that is there.
    void concatenate(const AffineTransform& transform);

    void setFillColor(const CGColor& color);
    void setStrokeColor(const CGColor& color);
    /// In units of the transform at the time of drawing. 0, negative or NaN: strokes draw nothing.
    void setLineWidth(CGFloat width);
    void setBlendMode(BlendMode mode);
    /// Multiplies the alpha of everything that is drawn; 0…1.
    void setAlpha(CGFloat alpha);
    void setShouldAntialias(bool antialias);
    /// For images from now on; none at first. A turned image is drawn without, whatever is set.
    void setInterpolationQuality(InterpolationQuality quality);

    /// Everything drawn from now on casts a shadow of its shape, under itself. The offset is in
    /// pixels with y upward, whatever the transform; a blur of B is a Gaussian of standard
    /// deviation B / 2.
    void setShadow(CGSize offset, CGFloat blur, const CGColor& color);
    void removeShadow();

    /// Cuts what can be drawn on to what is inside as well; only restoring a state undoes it.
    void clip(const CGRect& rect);
    void clip(const Path& path, FillRule rule = FillRule::nonZero);
    /// To the area that stroking the path would paint.
    void clipToStroke(const Path& path);

    void fill(const CGRect& rect);
    void fill(const Path& path, FillRule rule = FillRule::nonZero);
    void fillEllipse(const CGRect& rect);
    void stroke(const CGRect& rect);
    void stroke(const Path& path);
    /// The parallel curve on both sides of the ellipse.
    void strokeEllipse(const CGRect& rect);
    /// Makes the rectangle transparent.
    void clear(const CGRect& rect);

    /// Draws the image into the rectangle, its top row at max y. Its edges are soft where they fall
    /// between pixels. An image of another colour space is converted on the way.
    void draw(const CGImage& image, const CGRect& rect);

    /// Gives up the context for its picture, without a copy.
    [[nodiscard]] CGImage makeImage() &&;

  private:
    struct Impl;
    explicit BitmapContext(std::unique_ptr<Impl> impl);

    std::unique_ptr<Impl> impl_;
};

}  // namespace pictal
