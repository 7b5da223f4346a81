#pragma once

#include "PictalCore/Platform/Graphics/AffineTransform.h"
#include "PictalCore/Platform/Graphics/FillRule.h"
#include "PictalCore/Platform/Graphics/Path.h"
#include "PictalCore/Platform/Graphics/detail/CoverageSink.h"
#include "PictalCore/Platform/Graphics/detail/PixelRect.h"

namespace pictal::detail {

/// What is drawn, clipped to, or casts a shadow. Shapes look at what they are made of, which must
/// last as long: drawing copies no path.
class Shape {
  public:
    virtual ~Shape() = default;

    /// Reports the coverage inside an area of the shape, moved right and down by pixels.
    virtual void cover(CGPoint moved, const PixelRect& area, CoverageSink& sink) const = 0;
};

class FilledPath final : public Shape {
  public:
    FilledPath(const Path& path, FillRule rule, const AffineTransform& toDevice)
        : path_(path), rule_(rule), toDevice_(toDevice) {}

    void cover(CGPoint moved, const PixelRect& area, CoverageSink& sink) const override;

  private:
    const Path& path_;
    FillRule rule_;
    AffineTransform toDevice_;
};

class StrokedPath final : public Shape {
  public:
    /// @param width  in units of the path; where the transform stretches one direction more than
    ///               another, the pen stays round and keeps its area
    StrokedPath(const Path& path, CGFloat width, const AffineTransform& toDevice);

    void cover(CGPoint moved, const PixelRect& area, CoverageSink& sink) const override;

  private:
    const Path& path_;
    CGFloat deviceWidth_;
    AffineTransform toDevice_;
};

}  // namespace pictal::detail
