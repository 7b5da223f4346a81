#pragma once

#include "PictalCore/OCR/PaddleOCRDetectionBox.h"
#include "pictal/Outcome.h"

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

/// {"boxes": [{"box": [minX, minY, maxX, maxY], "confidence": 0.9}]}
namespace pictal::program {

/// [minX, minY, maxX, maxY]
[[nodiscard]] nlohmann::ordered_json boxJSON(const PaddleOCRDetectionBox& box);
[[nodiscard]] std::string boxesJSON(const std::vector<PaddleOCRDetectionBox>& boxes);
/// Boxes need no confidence, and other keys do not matter.
[[nodiscard]] std::expected<std::vector<PaddleOCRDetectionBox>, Failure> readBoxes(
    const std::string& path);
/// The document as printed.
[[nodiscard]] std::string documentText(const nlohmann::ordered_json& document);

}  // namespace pictal::program
