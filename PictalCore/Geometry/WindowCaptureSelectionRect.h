#pragma once

#include "PictalCore/Platform/Foundation/CGGeometry.h"

/// The rectangle that the image of a captured window covers on screen. The image can be a little
/// smaller than the window's frame (content without its margin) or larger (with the shadow).
namespace pictal::WindowCaptureSelectionRect {

/// @param windowFrame         in points
/// @param backingScaleFactor  pixels per point
/// @param allowsExpansion     whether the result may be larger than the frame
/// @param maximumInset        greatest difference on each side, in points, that is believed
/// @return a rectangle of the image's size in points, not rounded, around the frame's centre; the
///         standardised frame where the image is about as large, differs too much, or is larger
///         and may not be, or where a size or the scale is not positive
[[nodiscard]] PICTAL_API CGRect visibleContentFrame(const CGRect& windowFrame,
                                                    CGSize imagePixelSize,
                                                    CGFloat backingScaleFactor,
                                                    bool allowsExpansion, CGFloat maximumInset);

}  // namespace pictal::WindowCaptureSelectionRect
