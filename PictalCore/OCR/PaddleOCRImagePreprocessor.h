#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/OCR/PaddleOCRDetectionConfig.h"
#include "PictalCore/OCR/PaddleOCRRecognitionConfig.h"
#include "PictalCore/OCR/PaddleOCRTensor.h"
#include "PictalCore/Platform/Graphics/CGImage.h"

#include <cstdint>
#include <expected>
#include <span>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace pictal {

class PICTAL_API PaddleOCRImagePreprocessorError {
  public:
    /// The configuration's shape is not 3, a height and a width: correct the configuration.
    struct InvalidRecognitionShape {
        std::vector<std::int64_t> shape;
        friend bool operator==(const InvalidRecognitionShape&,
                               const InvalidRecognitionShape&) = default;
    };
    /// There is no image, or one without pixels.
    struct InvalidImageSize {
        friend bool operator==(InvalidImageSize, InvalidImageSize) = default;
    };
    /// What the configuration asks for is larger than a picture or memory can be, or the image's
    /// colours cannot be converted.
    struct CannotCreateBitmapContext {
        friend bool operator==(CannotCreateBitmapContext, CannotCreateBitmapContext) = default;
    };

    [[nodiscard]] static PaddleOCRImagePreprocessorError invalidRecognitionShape(
        std::vector<std::int64_t> shape);
    [[nodiscard]] static PaddleOCRImagePreprocessorError invalidImageSize();
    [[nodiscard]] static PaddleOCRImagePreprocessorError cannotCreateBitmapContext();

    template <class Case>
    [[nodiscard]] const Case* as() const {
        return std::get_if<Case>(&case_);
    }

    [[nodiscard]] std::string description() const;

    friend bool operator==(const PaddleOCRImagePreprocessorError&,
                           const PaddleOCRImagePreprocessorError&) = default;

  private:
    using Cases =
        std::variant<InvalidRecognitionShape, InvalidImageSize, CannotCreateBitmapContext>;
    explicit PaddleOCRImagePreprocessorError(Cases value) : case_(std::move(value)) {}

    Cases case_;
};

/// Turns pictures into the tensors that the models take. A picture is resized once, straight to its
/// final size, over white; its colours become sRGB.
namespace PaddleOCRImagePreprocessor {

/// The whole picture for the detector: sides that are multiples of 32 pixels, in about the
/// picture's proportions.
[[nodiscard]] PICTAL_API std::expected<PaddleOCRTensor, PaddleOCRImagePreprocessorError>
detectionTensor(const CGImage& image, const PaddleOCRDetectionConfig& config);

/// A line of text for the recogniser; a batch of one.
[[nodiscard]] PICTAL_API std::expected<PaddleOCRTensor, PaddleOCRImagePreprocessorError>
recognitionTensor(const CGImage& image, const PaddleOCRRecognitionConfig& config);

/// Lines of text, brought to one height. What is shorter than the longest has zeros behind it; a
/// line of more than 3,200 pixels is squeezed into so many.
[[nodiscard]] PICTAL_API std::expected<PaddleOCRTensor, PaddleOCRImagePreprocessorError>
recognitionBatch(std::span<const CGImage> images, const PaddleOCRRecognitionConfig& config);

}  // namespace PaddleOCRImagePreprocessor

}  // namespace pictal
