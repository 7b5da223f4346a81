// Configurations of any text, maps and outputs of any values and shapes.

#include "PictalCore/OCR/PaddleOCRCTCDecoder.h"
#include "PictalCore/OCR/PaddleOCRDBPostProcessor.h"
#include "PictalCore/OCR/PaddleOCRImagePreprocessor.h"
#include "PictalCore/OCR/PaddleOCRModelConfigParser.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

using namespace pictal;

namespace {

void check(bool holds) {
    if (!holds) std::abort();
}

/// Small enough to be drawn, whatever the configuration asks for.
constexpr std::int64_t drawable = 2'000;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    auto detection = *PaddleOCRModelConfigParser::parseDetectionConfig(text);
    const auto recognition = PaddleOCRModelConfigParser::parseRecognitionConfig(text);

    std::vector<float> values(size / sizeof(float));
    if (!values.empty()) std::memcpy(values.data(), data, values.size() * sizeof(float));
    const std::int64_t width = size > 0 ? 1 + data[0] % 40 : 0;
    const auto height = width > 0 ? static_cast<std::int64_t>(values.size()) / width : 0;
    const auto boxes =
        PaddleOCRDBPostProcessor(detection).process(values, width, height, 1000, 800);
    check(boxes.size() <= values.size());

    static const CGImage image =
        *CGImage::fromBytes(std::vector<std::byte>(9 * 7 * 4, std::byte{0x55}),
                            {9, 7, 36, CGImage::Alpha::straight}, CGColorSpace::sRGB());
    detection.limitSideLength =
        std::clamp<std::int64_t>(detection.limitSideLength, -drawable, drawable);
    if (const auto tensor = PaddleOCRImagePreprocessor::detectionTensor(image, detection))
        check(tensor->shape[2] % 32 == 0 && tensor->shape[3] % 32 == 0);
    if (!recognition) return 0;
    const auto& shape = recognition->imageShape;
    if (shape.size() < 2 || shape[1] <= drawable)
        (void)PaddleOCRImagePreprocessor::recognitionTensor(image, *recognition);

    const auto decoder = PaddleOCRCTCDecoder::make(recognition->characterDictionary);
    check(decoder.has_value());
    (void)decoder->decodeBatch(values, shape);
    const std::int64_t line[] = {1, height, width};
    values.resize(static_cast<std::size_t>(width * height));
    const auto decoded = decoder->decode(values, line);
    check(decoded.has_value() == (height > 0));
    return 0;
}
