#include "pictal/ocr/TextLines.h"

#include "pictal/Messages.h"

#include <array>
#include <charconv>

#include <fmt/format.h>

namespace pictal::program {

std::optional<CGImage> lineImage(const CGImage& image, const PaddleOCRDetectionBox& box) {
    const double more = 0.2 * (double{box.maxY()} - double{box.minY()});
    const CGRect rect(double{box.minX()}, double{box.minY()},
                      double{box.maxX()} - double{box.minX()},
                      double{box.maxY()} - double{box.minY()});
    return image.cropping(rect.insetBy(-more, -more));
}

std::expected<PaddleOCRCTCDecoder, Failure> decoderFor(const PaddleOCRRecognitionConfig& config,
                                                       const std::string& configName) {
    auto decoder = PaddleOCRCTCDecoder::make(config.characterDictionary);
    if (decoder) return *std::move(decoder);
    return badInput(fmt::format("{}: {}", configName, decoder.error().description()));
}

void warnOfOtherClasses(const PaddleOCRCTCDecoder& decoder, std::int64_t classes) {
    const auto labels = static_cast<std::int64_t>(decoder.characters().size());
    if (classes == labels) return;
    complain(
        fmt::format("warning: the output has {} classes, the dictionary {} characters and two "
                    "more; the text may be wrong: take the configuration of this model",
                    classes, labels - 2));
}

double shortNumber(float number) {
    std::array<char, 32> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    double value = double{number};
    std::from_chars(text.data(), end, value);
    return value;
}

}  // namespace pictal::program
