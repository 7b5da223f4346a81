#include "PictalCore/OCR/PaddleOCRImagePreprocessor.h"

#include "PictalCore/OCR/detail/ShapeText.h"
#include "PictalCore/OCR/detail/TensorPlanes.h"
#include "PictalCore/OCR/detail/TensorSizes.h"

#include <algorithm>
#include <new>

namespace pictal {

using namespace detail;
using Error = PaddleOCRImagePreprocessorError;

Error Error::invalidRecognitionShape(std::vector<std::int64_t> shape) {
    return Error(InvalidRecognitionShape{std::move(shape)});
}
Error Error::invalidImageSize() {
    return Error(InvalidImageSize{});
}
Error Error::cannotCreateBitmapContext() {
    return Error(CannotCreateBitmapContext{});
}

std::string Error::description() const {
    if (const auto* invalid = as<InvalidRecognitionShape>())
        return "PP-OCR recognition image shape is invalid: " + shapeText(invalid->shape) + ".";
    if (as<InvalidImageSize>()) return "Image size is invalid for OCR preprocessing.";
    return "Could not create OCR preprocessing bitmap context.";
}

namespace {

/// The list, or the one that the models were trained with where it is not one a channel.
std::vector<float> threeOf(const std::vector<float>& list, const std::vector<float>& standard) {
    return list.size() == 3 ? list : standard;
}

LevelTable detectionTable(float scale, float mean, float deviation) {
    LevelTable table;
    for (std::size_t level = 0; level < table.size(); ++level)
        table[level] = (scale * static_cast<float>(level)) / deviation - (mean / deviation);
    return table;
}

std::array<LevelTable, 3> detectionTables(const PaddleOCRNormalizeConfig& config) {
    const PaddleOCRNormalizeConfig standard;
    const auto mean = threeOf(config.mean, standard.mean);
    const auto deviation = threeOf(config.standardDeviation, standard.standardDeviation);
    std::array<LevelTable, 3> tables;
    for (std::size_t channel = 0; channel < 3; ++channel)
        tables[channel] = detectionTable(config.scale, mean[channel], deviation[channel]);
    return tables;
}

std::array<LevelTable, 3> recognitionTables() {
    LevelTable table;
    for (std::size_t level = 0; level < table.size(); ++level)
        table[level] = static_cast<float>(level) / 127.5F - 1;
    return {table, table, table};
}

PaddleOCRImageSize sizeOf(const CGImage& image) {
    return {image.width(), image.height()};
}

std::size_t count(std::int64_t number) {
    return static_cast<std::size_t>(number);
}

/// Zeros; nothing when they do not fit memory.
std::expected<std::vector<float>, Error> zeros(std::size_t pictures,
                                               const PaddleOCRImageSize& size) {
    try {
        return std::vector<float>(pictures * 3 * count(size.height) * count(size.width));
    } catch (const std::exception&) {  // no memory, or more than a vector may hold
        return std::unexpected(Error::cannotCreateBitmapContext());
    }
}

}  // namespace

std::expected<PaddleOCRTensor, Error> PaddleOCRImagePreprocessor::detectionTensor(
    const CGImage& image, const PaddleOCRDetectionConfig& config) {
    if (image.width() < 1 || image.height() < 1) return std::unexpected(Error::invalidImageSize());
    const PaddleOCRImageSize size = detectionSize(sizeOf(image), config);
    if (!isPossible(size)) return std::unexpected(Error::cannotCreateBitmapContext());
    auto data = zeros(1, size);
    if (!data) return std::unexpected(data.error());
    const std::size_t plane = count(size.height) * count(size.width);
    if (!drawPlanes(image, size, config.channelOrder, detectionTables(config.normalize),
                    {*data, count(size.width), plane}))
        return std::unexpected(Error::cannotCreateBitmapContext());
    return PaddleOCRTensor{*std::move(data), {1, 3, size.height, size.width}, sizeOf(image), size};
}

std::expected<PaddleOCRTensor, Error> PaddleOCRImagePreprocessor::recognitionTensor(
    const CGImage& image, const PaddleOCRRecognitionConfig& config) {
    return recognitionBatch({&image, 1}, config);
}

std::expected<PaddleOCRTensor, Error> PaddleOCRImagePreprocessor::recognitionBatch(
    std::span<const CGImage> images, const PaddleOCRRecognitionConfig& config) {
    if (images.empty()) return std::unexpected(Error::invalidImageSize());
    const auto& shape = config.imageShape;
    if (shape.size() < 3 || shape[0] != 3 || shape[1] < 1 || shape[2] < 1)
        return std::unexpected(Error::invalidRecognitionShape(shape));

    const std::int64_t height = shape[1];
    PaddleOCRImageSize batch{0, height};
    for (const CGImage& image : images) {
        if (image.width() < 1 || image.height() < 1)
            return std::unexpected(Error::invalidImageSize());
        const auto widths = recognitionWidths(sizeOf(image), height, shape[2]);
        if (!isPossible({widths.canvas, height}))
            return std::unexpected(Error::cannotCreateBitmapContext());
        batch.width = std::max(batch.width, widths.canvas);
    }
    auto data = zeros(images.size(), batch);
    if (!data) return std::unexpected(data.error());

    const auto tables = recognitionTables();
    const std::size_t plane = count(height) * count(batch.width);
    for (std::size_t i = 0; i < images.size(); ++i) {
        const auto widths = recognitionWidths(sizeOf(images[i]), height, shape[2]);
        const auto place = std::span(*data).subspan(i * 3 * plane, 3 * plane);
        if (!drawPlanes(images[i], {widths.resized, height}, config.channelOrder, tables,
                        {place, count(batch.width), plane}))
            return std::unexpected(Error::cannotCreateBitmapContext());
    }
    return PaddleOCRTensor{*std::move(data),
                           {static_cast<std::int64_t>(images.size()), 3, height, batch.width},
                           sizeOf(images.front()),
                           batch};
}

}  // namespace pictal
