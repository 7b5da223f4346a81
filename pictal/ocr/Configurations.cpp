#include "pictal/ocr/Configurations.h"

#include "PictalCore/OCR/PaddleOCRModelConfigParser.h"
#include "pictal/InputFile.h"
#include "pictal/InputOutput.h"

#include <fmt/format.h>

namespace pictal::program {

std::expected<PaddleOCRDetectionConfig, Failure> readDetectionConfig(const std::string& path) {
    const auto text = readTextInput(path);
    if (!text) return std::unexpected(text.error());
    const auto config = PaddleOCRModelConfigParser::parseDetectionConfig(*text);
    if (!config)
        return badInput(fmt::format("{}: {}", inputName(path), config.error().description()));
    return *config;
}

std::expected<PaddleOCRRecognitionConfig, Failure> readRecognitionConfig(const std::string& path) {
    const auto text = readTextInput(path);
    if (!text) return std::unexpected(text.error());
    auto config = PaddleOCRModelConfigParser::parseRecognitionConfig(*text);
    if (config) return *std::move(config);
    const char* const remedy = text->contains("\r\n")
                                   ? "its lines end in CR LF; end them in LF alone"
                                   : "it needs a list \"character_dict:\" with an entry a line";
    return badInput(
        fmt::format("{}: {} {}", inputName(path), config.error().description(), remedy));
}

}  // namespace pictal::program
