#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/Platform/Graphics/CGImage.h"
#include "PictalCore/Styling/ScreenshotStyle.h"

#include <cstddef>
#include <expected>
#include <vector>

namespace pictal {

enum class TransparentImageRendererError {
    /// The picture is empty, or the canvas is over the limits or does not fit memory. Make the
    /// picture, the shadow's blur or its offset smaller.
    cannotCreateContext,
    /// The colours of the picture cannot be converted to sRGB. Give it another colour space.
    cannotCreateImage,
    /// There is not enough memory to write a PNG. Make the picture smaller.
    cannotCreatePNGDestination,
    /// The picture is empty, and there is no PNG without pixels.
    cannotEncodePNG,
};

/// Presents a screenshot as a card: on a larger transparent canvas, with rounded corners and a soft
/// shadow of three layers.
///
/// All lengths of the style are pixels of the picture. A positive offset moves the shadow to the
/// right and down. An infinite corner radius makes a pill, NaN none. A NaN blur counts as no blur;
/// NaN offsets and colour components count as 0; a shadow whose opacity is NaN is not drawn. Blur
/// and offset make the margin, so what is too large for a canvas is an error; without blur there is
/// no margin and the shadow is cut off at the edge of the picture.
struct PICTAL_API TransparentImageRenderer {
    /// @return the card in sRGB, with the picture's opaque pixels as they were where no colour had
    ///         to be converted; or, for a style without a card, the image itself
    [[nodiscard]] std::expected<CGImage, TransparentImageRendererError> render(
        const CGImage& image, const ScreenshotStyle& style) const;

    /// Whether the result is no larger than a picture may be. A render that fails all the same,
    /// with `cannotCreateContext`, lacked the memory.
    [[nodiscard]] bool isWithinLimits(const CGImage& image, const ScreenshotStyle& style) const;

    /// @return the bytes of a PNG that decodes to the same pixels, with the image's colour space
    [[nodiscard]] std::expected<std::vector<std::byte>, TransparentImageRendererError> pngData(
        const CGImage& image) const;
};

}  // namespace pictal
