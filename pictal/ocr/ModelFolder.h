#pragma once

#include "PictalCore/OCR/PaddleOCRDetectionConfig.h"
#include "PictalCore/OCR/PaddleOCRRecognitionConfig.h"
#include "pictal/Outcome.h"
#include "pictal/ocr/Runtime.h"

#include <string>

namespace pictal::program {

/// The models with their configurations, and what runs them.
struct LoadedModels {
    Runtime runtime;
    Runtime::Model detector, recogniser;
    PaddleOCRDetectionConfig detection;
    PaddleOCRRecognitionConfig recognition;
    std::string folder;
};

/// PICTAL_OCR_MODELS, or pictal/ocr among the user's data.
[[nodiscard]] std::string usualModelFolder();

/// @param folder   has det.onnx, rec.onnx, det.yml and rec.yml
/// @param library  of the runtime; empty: PICTAL_ONNXRUNTIME, that of the folder, or the loader's
[[nodiscard]] std::expected<LoadedModels, Failure> loadModels(const std::string& folder,
                                                              const std::string& library,
                                                              int threads);

}  // namespace pictal::program
