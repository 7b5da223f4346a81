#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/OCR/PaddleOCRDetectionBox.h"
#include "PictalCore/OCR/PaddleOCRDetectionConfig.h"

#include <cstdint>
#include <span>
#include <vector>

namespace pictal {

/// Turns the detector's map of probabilities into upright boxes of text in reading order.
struct PICTAL_API PaddleOCRDBPostProcessor {
    /// A cell belongs to text when its probability is above this.
    float threshold;
    /// A region counts when its mean probability is at least this.
    float boxThreshold;
    /// No more regions are looked for once so many have been found; the first is always taken.
    std::int64_t maxCandidates;
    /// Each side is moved outwards by half of what this is above 1, times the shorter side, and by
    /// at least one cell.
    float unclipRatio;
    /// A region with a side of fewer cells is noise.
    std::int64_t minimumSideLength;

    PaddleOCRDBPostProcessor(float threshold, float boxThreshold, std::int64_t maxCandidates,
                             float unclipRatio, std::int64_t minimumSideLength);
    /// As a model's configuration says, with a least side of three cells.
    explicit PaddleOCRDBPostProcessor(const PaddleOCRDetectionConfig& config);

    /// @param probabilityMap  row-major, the top row first; a NaN is no text
    /// @param mapWidth        in cells, as is the height
    /// @param originalWidth   in pixels, as is the height
    /// @return no boxes when a size is below 1 or the map is shorter than its size says
    [[nodiscard]] std::vector<PaddleOCRDetectionBox> process(std::span<const float> probabilityMap,
                                                             std::int64_t mapWidth,
                                                             std::int64_t mapHeight,
                                                             std::int64_t originalWidth,
                                                             std::int64_t originalHeight) const;
};

}  // namespace pictal
