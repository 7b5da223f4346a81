#pragma once

#include "PictalCore/Annotation/ScreenshotAnnotation.h"
#include "PictalCore/Export.h"
#include "PictalCore/Platform/Graphics/CGImage.h"

#include <expected>
#include <span>

namespace pictal {

enum class AnnotationRendererError {
    /// The canvas does not fit memory or the limits of pictures; crop the picture first.
    cannotCreateContext,
    /// The finished canvas gave no picture.
    cannotCreateImage,
};

/// Burns annotations into a picture. Their coordinates are pixels of the picture, the origin in its
/// lower left corner, y upward.
struct PICTAL_API AnnotationRenderer {
    /// Draws the annotations in order, later ones over earlier ones, but every mosaic before
    /// everything else. An annotation whose geometry does not fit its tool draws nothing.
    ///
    /// @return a picture of the same size in sRGB; `image` itself when there are no annotations
    [[nodiscard]] std::expected<CGImage, AnnotationRendererError> render(
        const CGImage& image, std::span<const ScreenshotAnnotation> annotations) const;

    /// Whether this version draws what the tool makes; what it does not draw is left out.
    [[nodiscard]] static bool draws(AnnotationTool tool);
};

}  // namespace pictal
