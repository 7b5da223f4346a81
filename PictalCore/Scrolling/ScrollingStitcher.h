#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/Platform/Foundation/Cancellation.h"
#include "PictalCore/Platform/Graphics/CGImage.h"
#include "PictalCore/Scrolling/ScrollingStitchFrame.h"
#include "PictalCore/Scrolling/ScrollingStitcherError.h"

#include <cstdint>
#include <expected>
#include <span>
#include <stop_token>

namespace pictal {

/// Paints frames that overlap into one long picture, and cuts out what is new in a frame.
///
/// Results are in sRGB; pixels of other colour spaces are converted, all others stay as they are.
struct PICTAL_API ScrollingStitcher {
    using Result = std::expected<CGImage, OrCancelled<ScrollingStitcherError>>;

    /// Paints the frames by their positions, the higher first, and of those at one position the
    /// earlier first; a later one covers what is under it, as far as it is opaque. The top row of
    /// the result belongs to the highest frame. Rows and columns that no frame covers stay
    /// transparent. One frame alone is the result as it is.
    /// @param maximumOutputHeight  rows that the result may have; checked before memory is taken
    [[nodiscard]] Result stitch(std::span<const ScrollingStitchFrame> frames,
                                std::int64_t maximumOutputHeight,
                                const std::stop_token& cancellation = {}) const;

    /// The lowest `height` rows, as a picture that shares nothing with `image`.
    [[nodiscard]] static Result copyNewContent(const CGImage& image, std::int64_t height,
                                               const std::stop_token& cancellation = {});
    /// The highest `height` rows, likewise.
    [[nodiscard]] static Result copyNewContentFromTop(const CGImage& image, std::int64_t height,
                                                      const std::stop_token& cancellation = {});
};

}  // namespace pictal
