#pragma once

#include "PictalCore/OCR/PaddleOCRDetectionConfig.h"
#include "PictalCore/OCR/PaddleOCRRecognitionConfig.h"
#include "pictal/Outcome.h"

#include <string>

/// The configuration texts that come with the models.
namespace pictal::program {

[[nodiscard]] std::expected<PaddleOCRDetectionConfig, Failure> readDetectionConfig(
    const std::string& path);
[[nodiscard]] std::expected<PaddleOCRRecognitionConfig, Failure> readRecognitionConfig(
    const std::string& path);

}  // namespace pictal::program
