#pragma once

#include "PictalCore/OCR/PaddleOCRImageChannelOrder.h"

#include <cstdint>
#include <string>
#include <vector>

namespace pictal {

/// What a text recognition model wants of its input, and what its classes mean.
struct PaddleOCRRecognitionConfig {
    std::string modelName = "PP-OCRv6_tiny_rec";
    /// Channels, height, least width.
    std::vector<std::int64_t> imageShape{3, 48, 320};
    PaddleOCRImageChannelOrder channelOrder = PaddleOCRImageChannelOrder::bgr;
    /// The text of each class in the order of the classes, without the blank and the space that
    /// the decoder puts around them.
    std::vector<std::string> characterDictionary;

    friend bool operator==(const PaddleOCRRecognitionConfig&,
                           const PaddleOCRRecognitionConfig&) = default;
};

}  // namespace pictal
