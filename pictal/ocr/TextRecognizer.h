#pragma once

#include "PictalCore/OCR/PaddleOCRCTCDecoder.h"
#include "PictalCore/OCR/PaddleOCRDetectionBox.h"
#include "PictalCore/Platform/Graphics/CGImage.h"
#include "pictal/Outcome.h"
#include "pictal/Progress.h"
#include "pictal/ocr/ModelFolder.h"

#include <cstdint>
#include <vector>

namespace pictal::program {

struct RecognizedLine {
    PaddleOCRDetectionBox box;
    PaddleOCRDecodedText text;
};

/// All lines of text in reading order; those without a character are left out.
/// @param sideLimit  the detector's, in pixels
[[nodiscard]] std::expected<std::vector<RecognizedLine>, Failure> recognizedLines(
    const CGImage& image, const LoadedModels& models, std::int64_t sideLimit,
    Progress::Shown shown);

}  // namespace pictal::program
