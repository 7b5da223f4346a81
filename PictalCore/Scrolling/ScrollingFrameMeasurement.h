#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/Scrolling/ImageTranslation.h"
#include "PictalCore/Scrolling/ScrollingConsensus.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace pictal {

/// How two frames lie to one another, band by band and as a whole.
struct PICTAL_API ScrollingFrameMeasurement {
    struct Band {
        /// Rows of both frames.
        ScrollingConsensus::Band rows;
        /// Nothing where they could not be measured.
        std::optional<ImageTranslation> translation;

        friend bool operator==(const Band&, const Band&) = default;
    };

    /// From the top.
    std::vector<Band> bands;
    std::optional<ImageTranslation> wholeFrame;
    /// What bands and whole frame together stand for; `y` is not rounded.
    std::optional<ImageTranslation> accepted;
    /// Rows at the top and at the bottom that are the same in both frames, such as a header and a
    /// footer that stay while the content scrolls.
    std::int64_t stillRowsAtTop = 0;
    std::int64_t stillRowsAtBottom = 0;

    friend bool operator==(const ScrollingFrameMeasurement&,
                           const ScrollingFrameMeasurement&) = default;
};

}  // namespace pictal
