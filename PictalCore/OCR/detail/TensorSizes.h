#pragma once

#include "PictalCore/OCR/PaddleOCRDetectionConfig.h"
#include "PictalCore/OCR/PaddleOCRTensor.h"

#include <cstdint>

/// How large pictures become for the models. Proportions are single precision, since the models
/// were trained with sizes that were. Sides that would not fit a number are 2^40, which is more
/// than any picture's.
namespace pictal::detail {

[[nodiscard]] PaddleOCRImageSize detectionSize(const PaddleOCRImageSize& image,
                                               const PaddleOCRDetectionConfig& config);

struct RecognitionWidths {
    std::int64_t canvas;   ///< what a line takes in a batch
    std::int64_t resized;  ///< how much of that the picture fills
};

/// @param height        of the tensor
/// @param minimumWidth  of the canvas
[[nodiscard]] RecognitionWidths recognitionWidths(const PaddleOCRImageSize& image,
                                                  std::int64_t height, std::int64_t minimumWidth);

}  // namespace pictal::detail
