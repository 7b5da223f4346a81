#include "PictalCore/OCR/PaddleOCRModelConfigParser.h"

#include "PictalCore/OCR/detail/ConfigText.h"
#include "PictalCore/Platform/Foundation/Unicode.h"

#include <optional>

namespace pictal {

using detail::ConfigText;
using Error = PaddleOCRModelConfigParserError;

Error Error::missingField(std::string name) {
    return Error(MissingField{std::move(name)});
}
Error Error::emptyCharacterDictionary() {
    return Error(EmptyCharacterDictionary{});
}

std::string Error::description() const {
    if (const auto* field = as<MissingField>())
        return "PP-OCR model config is missing " + field->name + ".";
    return "PP-OCR recognition character dictionary is empty.";
}

namespace {

/// Replaces a default by what the text says, if it says it.
template <class T>
void assign(T& field, std::optional<T> value) {
    if (value) field = *std::move(value);
}

PaddleOCRImageChannelOrder channelOrder(const ConfigText& text) {
    const std::string mode = text.string("img_mode").value_or("");
    return Unicode::lowercased(Unicode::trimmingWhiteSpace(mode)) == "rgb"
               ? PaddleOCRImageChannelOrder::rgb
               : PaddleOCRImageChannelOrder::bgr;
}

}  // namespace

std::expected<PaddleOCRDetectionConfig, Error> PaddleOCRModelConfigParser::parseDetectionConfig(
    std::string_view text) {
    const ConfigText values(text);
    PaddleOCRDetectionConfig config;
    assign(config.modelName, values.string("model_name"));
    assign(config.threshold, values.number("thresh"));
    assign(config.boxThreshold, values.number("box_thresh"));
    assign(config.maxCandidates, values.integer("max_candidates"));
    assign(config.unclipRatio, values.number("unclip_ratio"));
    assign(config.limitSideLength, values.integer("resize_long"));
    assign(config.limitSideLength, values.integer("limit_side_len"));  // wins over resize_long
    assign(config.limitType, values.string("limit_type"));
    assign(config.maxSideLimit, values.integer("max_side_limit"));
    config.channelOrder = channelOrder(values);
    assign(config.normalize.scale, values.number("scale"));
    assign(config.normalize.mean, values.numbers("mean"));
    assign(config.normalize.standardDeviation, values.numbers("std"));
    return config;
}

std::expected<PaddleOCRRecognitionConfig, Error> PaddleOCRModelConfigParser::parseRecognitionConfig(
    std::string_view text) {
    const ConfigText values(text);
    PaddleOCRRecognitionConfig config;
    config.characterDictionary = values.strings("character_dict");
    if (config.characterDictionary.empty())
        return std::unexpected(Error::emptyCharacterDictionary());
    assign(config.modelName, values.string("model_name"));
    assign(config.imageShape, values.integers("image_shape"));
    config.channelOrder = channelOrder(values);
    return config;
}

}  // namespace pictal
