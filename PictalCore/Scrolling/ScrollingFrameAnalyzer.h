#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/Platform/Foundation/Cancellation.h"
#include "PictalCore/Platform/Graphics/CGImage.h"
#include "PictalCore/Scrolling/ScrollingFrameAnalysis.h"
#include "PictalCore/Scrolling/ScrollingFrameMeasurement.h"

#include <expected>
#include <stop_token>

namespace pictal {

enum class ScrollingFrameAnalyzerError {
    /// The frames differ in size, or are less than one pixel wide or two high. Capture the same
    /// region again.
    incompatibleFrameSizes,
};

/// Tells how far content that scrolls has moved since the frame before, or that this cannot be
/// told. It never guesses.
///
/// Offsets are those that carry the earlier frame onto the later one, in pixels, positive downward:
/// after scrolling down by 120 pixels the content has moved up, and the offset is −120.
struct PICTAL_API ScrollingFrameAnalyzer {
    template <class T>
    using Result = std::expected<T, OrCancelled<ScrollingFrameAnalyzerError>>;

    /// What `measure` accepts, as a verdict.
    [[nodiscard]] Result<ScrollingFrameAnalysis> analyze(
        const CGImage& previous, const CGImage& current,
        const std::stop_token& cancellation = {}) const;

    /// The measurements behind the verdict. Cancellation is looked at once, before anything else.
    [[nodiscard]] Result<ScrollingFrameMeasurement> measure(
        const CGImage& previous, const CGImage& current,
        const std::stop_token& cancellation = {}) const;
};

}  // namespace pictal
