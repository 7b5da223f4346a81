#include "pictal/ocr/TextRecognizer.h"

#include "PictalCore/OCR/PaddleOCRDBPostProcessor.h"
#include "PictalCore/OCR/PaddleOCRImagePreprocessor.h"
#include "pictal/ocr/TextLines.h"
#include "pictal/ocr/Tiles.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <utility>

#include <fmt/format.h>

namespace pictal::program {

namespace {

/// Lines of like length go together, since a batch is as wide as its longest; more at once take
/// memory and no less time.
constexpr std::size_t linesABatch = 6;

std::unexpected<Failure> modelFailed(const LoadedModels& models, const char* model,
                                     const std::string& reason) {
    return workFailed(
        fmt::format("{}/{}: the model cannot be run: {}", models.folder, model, reason));
}

std::expected<std::vector<PaddleOCRDetectionBox>, Failure> detectedBoxes(
    const CGImage& image, const LoadedModels& models, const PaddleOCRDetectionConfig& config) {
    auto tensor = PaddleOCRImagePreprocessor::detectionTensor(image, config);
    if (!tensor) return badInput(tensor.error().description() + " Try a lower --side-limit.");
    const auto output = models.detector.run(tensor->data, tensor->shape);
    if (!output) return modelFailed(models, "det.onnx", output.error());
    const auto [width, height] = tensor->resizedSize;
    if (output->shape != std::vector<std::int64_t>{1, 1, height, width})
        return badInput(
            fmt::format("{}/det.onnx: its output is no map of the picture; is this a "
                        "model for text detection?",
                        models.folder));
    return PaddleOCRDBPostProcessor(config).process(output->data, width, height, image.width(),
                                                    image.height());
}

std::expected<std::vector<PaddleOCRDetectionBox>, Failure> boxesOfAll(const CGImage& image,
                                                                      const LoadedModels& models,
                                                                      std::int64_t sideLimit,
                                                                      Progress::Shown shown) {
    PaddleOCRDetectionConfig config = models.detection;
    config.limitSideLength = sideLimit;
    config.limitType = "max";
    if (config.maxSideLimit >= 1) config.maxSideLimit = std::max(config.maxSideLimit, sideLimit);
    const auto tiles = tilesOf(image.width(), image.height(), sideLimit);
    Progress progress("Looking for text", tiles.size(), shown);
    std::vector<std::vector<PaddleOCRDetectionBox>> boxes;
    for (const Tile& tile : tiles) {
        const auto part = image.cropping(CGRect(0, static_cast<CGFloat>(tile.top),
                                                static_cast<CGFloat>(image.width()),
                                                static_cast<CGFloat>(tile.bottom - tile.top)));
        auto found = detectedBoxes(part.value_or(image), models, config);
        if (!found) return std::unexpected(found.error());
        boxes.push_back(*std::move(found));
        progress.step();
    }
    return mergedBoxes(tiles, boxes);
}

/// The boxes that hold a part of the image, by the proportions of what the recogniser will see.
struct LinesByLength {
    std::vector<CGImage> images;
    std::vector<std::size_t> order;  // of boxes

    LinesByLength(const CGImage& image, const std::vector<PaddleOCRDetectionBox>& boxes) {
        std::vector<std::pair<double, std::size_t>> lengths;
        std::vector<CGImage> found(boxes.size());
        for (std::size_t i = 0; i < boxes.size(); ++i) {
            const auto line = lineImage(image, boxes[i]);
            if (!line) continue;
            found[i] = *line;
            lengths.emplace_back(
                static_cast<double>(line->width()) / static_cast<double>(line->height()), i);
        }
        std::ranges::sort(lengths);
        for (const auto& [length, box] : lengths) {
            images.push_back(found[box]);
            order.push_back(box);
        }
    }
};

}  // namespace

std::expected<std::vector<RecognizedLine>, Failure> recognizedLines(const CGImage& image,
                                                                    const LoadedModels& models,
                                                                    std::int64_t sideLimit,
                                                                    Progress::Shown shown) {
    const auto decoder = decoderFor(models.recognition, models.folder + "/rec.yml");
    if (!decoder) return std::unexpected(decoder.error());
    const auto boxes = boxesOfAll(image, models, sideLimit, shown);
    if (!boxes) return std::unexpected(boxes.error());

    const LinesByLength lines(image, *boxes);
    std::vector<PaddleOCRDecodedText> texts(boxes->size());
    Progress progress("Reading", lines.order.size(), shown);
    for (std::size_t start = 0; start < lines.order.size(); start += linesABatch) {
        const std::size_t count = std::min(linesABatch, lines.order.size() - start);
        auto tensor = PaddleOCRImagePreprocessor::recognitionBatch(
            std::span(lines.images).subspan(start, count), models.recognition);
        if (!tensor)
            return badInput(
                fmt::format("{}/rec.yml: {}", models.folder, tensor.error().description()));
        const auto output = models.recogniser.run(tensor->data, tensor->shape);
        if (!output) return modelFailed(models, "rec.onnx", output.error());
        const auto decoded = decoder->decodeBatch(output->data, output->shape);
        if (!decoded || decoded->size() != count)
            return badInput(
                fmt::format("{}/rec.onnx: its output is no lines of text; is this a "
                            "model for text recognition?",
                            models.folder));
        if (start == 0) warnOfOtherClasses(*decoder, output->shape[2]);
        for (std::size_t i = 0; i < count; ++i) {
            texts[lines.order[start + i]] = (*decoded)[i];
            progress.step();
        }
    }

    std::vector<RecognizedLine> result;
    for (std::size_t i = 0; i < boxes->size(); ++i)
        if (!texts[i].text.empty()) result.push_back({(*boxes)[i], std::move(texts[i])});
    return result;
}

}  // namespace pictal::program
