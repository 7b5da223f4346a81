#pragma once

#include "PictalCore/OCR/PaddleOCRImageChannelOrder.h"

#include <cstdint>
#include <string>
#include <vector>

namespace pictal {

/// How 0…255 becomes what a model takes: value × scale / deviation - mean / deviation.
struct PaddleOCRNormalizeConfig {
    float scale = 1.0F / 255;
    /// One a channel, in the order in which the channels go into the tensor.
    std::vector<float> mean{0.485F, 0.456F, 0.406F};
    std::vector<float> standardDeviation{0.229F, 0.224F, 0.225F};

    friend bool operator==(const PaddleOCRNormalizeConfig&,
                           const PaddleOCRNormalizeConfig&) = default;
};

/// What a text detection model wants of its input, and how its output is read. Nothing here is
/// checked: a configuration is taken as it was written.
struct PaddleOCRDetectionConfig {
    std::string modelName = "PP-OCRv6_tiny_det";
    /// A cell of the map belongs to text when its probability is above this.
    float threshold = 0.2F;
    /// A region counts when its mean probability is at least this.
    float boxThreshold = 0.4F;
    std::int64_t maxCandidates = 3000;
    /// How far a box is grown beyond its region; 1 is as little as there is.
    float unclipRatio = 1.4F;
    /// The side, in pixels, that `limitType` speaks of.
    std::int64_t limitSideLength = 736;
    /// "max": the longer side is made no longer than the limit. "min": the shorter side no shorter.
    /// "resize_long": the longer side becomes the limit. Anything else is "max".
    std::string limitType = "max";
    /// No side is made longer than this; below 1 there is no such limit.
    std::int64_t maxSideLimit = 4000;
    PaddleOCRImageChannelOrder channelOrder = PaddleOCRImageChannelOrder::bgr;
    PaddleOCRNormalizeConfig normalize{};

    friend bool operator==(const PaddleOCRDetectionConfig&,
                           const PaddleOCRDetectionConfig&) = default;
};

}  // namespace pictal
