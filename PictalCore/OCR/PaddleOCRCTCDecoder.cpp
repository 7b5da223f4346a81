#include "PictalCore/OCR/PaddleOCRCTCDecoder.h"

#include "PictalCore/OCR/detail/GreatestValue.h"
#include "PictalCore/OCR/detail/ShapeText.h"

#include <algorithm>

namespace pictal {

using Error = PaddleOCRCTCDecoderError;

Error Error::invalidOutputShape(std::vector<std::int64_t> shape) {
    return Error(InvalidOutputShape{std::move(shape)});
}
Error Error::outputElementCountMismatch(std::int64_t expected, std::int64_t actual) {
    return Error(OutputElementCountMismatch{expected, actual});
}
Error Error::emptyDictionary() {
    return Error(EmptyDictionary{});
}

std::string Error::description() const {
    if (const auto* invalid = as<InvalidOutputShape>())
        return "PP-OCR recognition output shape is invalid: " + detail::shapeText(invalid->shape) +
               ".";
    if (const auto* mismatch = as<OutputElementCountMismatch>())
        return "PP-OCR recognition output element count mismatch: expected " +
               std::to_string(mismatch->expected) + ", got " + std::to_string(mismatch->actual) +
               ".";
    return "PP-OCR character dictionary is empty.";
}

namespace {

/// Nothing when all is well.
std::expected<void, Error> check(std::span<const float> data, std::span<const std::int64_t> shape) {
    const auto invalid = [&] {
        return std::unexpected(Error::invalidOutputShape({shape.begin(), shape.end()}));
    };
    if (shape.size() != 3 || std::ranges::min(shape) < 1) return invalid();
    std::int64_t expected = shape[0];
    if (__builtin_mul_overflow(expected, shape[1], &expected) ||
        __builtin_mul_overflow(expected, shape[2], &expected))
        return invalid();
    const auto actual = static_cast<std::int64_t>(data.size());
    if (actual != expected)
        return std::unexpected(Error::outputElementCountMismatch(expected, actual));
    return {};
}

}  // namespace

std::expected<PaddleOCRCTCDecoder, Error> PaddleOCRCTCDecoder::make(
    std::vector<std::string> characterDictionary) {
    if (characterDictionary.empty()) return std::unexpected(Error::emptyDictionary());
    characterDictionary.insert(characterDictionary.begin(), "blank");
    characterDictionary.emplace_back(" ");
    return PaddleOCRCTCDecoder(std::move(characterDictionary));
}

PaddleOCRDecodedText PaddleOCRCTCDecoder::decoded(std::span<const float> steps,
                                                  std::size_t classes) const {
    PaddleOCRDecodedText result;
    float sum = 0, count = 0;
    std::size_t previous = 0;  // as after a blank
    for (; !steps.empty(); steps = steps.subspan(classes)) {
        const std::size_t best = detail::firstGreatest(steps.first(classes));
        if (best != 0 && best != previous && best < characters_.size()) {
            result.text += characters_[best];
            sum += steps[best];
            ++count;
        }
        previous = best;
    }
    if (count > 0) result.confidence = sum / count;
    return result;
}

std::expected<std::vector<PaddleOCRDecodedText>, Error> PaddleOCRCTCDecoder::decodeBatch(
    std::span<const float> outputData, std::span<const std::int64_t> outputShape) const {
    if (const auto checked = check(outputData, outputShape); !checked)
        return std::unexpected(checked.error());
    const auto classes = static_cast<std::size_t>(outputShape[2]);
    const std::size_t line = static_cast<std::size_t>(outputShape[1]) * classes;
    std::vector<PaddleOCRDecodedText> texts;
    for (std::size_t start = 0; start < outputData.size(); start += line)
        texts.push_back(decoded(outputData.subspan(start, line), classes));
    return texts;
}

std::expected<PaddleOCRDecodedText, Error> PaddleOCRCTCDecoder::decode(
    std::span<const float> outputData, std::span<const std::int64_t> outputShape) const {
    if (const auto checked = check(outputData, outputShape); !checked)
        return std::unexpected(checked.error());
    const auto classes = static_cast<std::size_t>(outputShape[2]);
    return decoded(outputData.first(static_cast<std::size_t>(outputShape[1]) * classes), classes);
}

}  // namespace pictal
