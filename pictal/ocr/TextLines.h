#pragma once

#include "PictalCore/OCR/PaddleOCRCTCDecoder.h"
#include "PictalCore/OCR/PaddleOCRDetectionBox.h"
#include "PictalCore/OCR/PaddleOCRRecognitionConfig.h"
#include "PictalCore/Platform/Graphics/CGImage.h"
#include "pictal/Outcome.h"

#include <span>
#include <string>
#include <vector>

/// From boxes to lines of text and to what is printed of them.
namespace pictal::program {

/// What the recogniser should see of a box: a fifth of its height more on every side, whole pixels.
/// Boxes are tight, and first and last letters would be shaved off: with it 2.3 % of the characters
/// of small text are wrong, without it 5.7 %.
/// @return nothing when that is not in the image
[[nodiscard]] std::optional<CGImage> lineImage(const CGImage& image,
                                               const PaddleOCRDetectionBox& box);

/// A decoder whose characters are the model's classes, or a warning on standard error.
[[nodiscard]] std::expected<PaddleOCRCTCDecoder, Failure> decoderFor(
    const PaddleOCRRecognitionConfig& config, const std::string& configName);
void warnOfOtherClasses(const PaddleOCRCTCDecoder& decoder, std::int64_t classes);

/// A number of single precision as short as it can be read back.
[[nodiscard]] double shortNumber(float number);

}  // namespace pictal::program
