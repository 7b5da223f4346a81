#include "PictalCore/OCR/PaddleOCRDBPostProcessor.h"

#include "PictalCore/OCR/detail/ReadingOrder.h"
#include "PictalCore/OCR/detail/TextRegions.h"

#include <algorithm>

namespace pictal {

namespace {

float singlePrecision(std::int64_t number) {
    return static_cast<float>(number);
}

}  // namespace

PaddleOCRDBPostProcessor::PaddleOCRDBPostProcessor(float ofCells, float ofRegions,
                                                   std::int64_t most, float ratio,
                                                   std::int64_t least)
    : threshold(ofCells),
      boxThreshold(ofRegions),
      maxCandidates(most),
      unclipRatio(ratio),
      minimumSideLength(least) {}

PaddleOCRDBPostProcessor::PaddleOCRDBPostProcessor(const PaddleOCRDetectionConfig& config)
    : PaddleOCRDBPostProcessor(config.threshold, config.boxThreshold, config.maxCandidates,
                               config.unclipRatio, 3) {}

std::vector<PaddleOCRDetectionBox> PaddleOCRDBPostProcessor::process(
    std::span<const float> probabilityMap, std::int64_t mapWidth, std::int64_t mapHeight,
    std::int64_t originalWidth, std::int64_t originalHeight) const {
    if (std::min({mapWidth, mapHeight, originalWidth, originalHeight}) < 1) return {};
    const auto width = static_cast<std::size_t>(mapWidth);
    const auto height = static_cast<std::size_t>(mapHeight);
    if (height > probabilityMap.size() / width) return {};  // the product may not fit a number

    const float scaleX = singlePrecision(originalWidth) / singlePrecision(mapWidth);
    const float scaleY = singlePrecision(originalHeight) / singlePrecision(mapHeight);
    std::vector<PaddleOCRDetectionBox> boxes;
    boxes.reserve(static_cast<std::size_t>(std::clamp<std::int64_t>(maxCandidates, 0, 64)));
    detail::TextRegions regions(probabilityMap.first(width * height), mapWidth, mapHeight,
                                threshold);
    while (const auto region = regions.next()) {
        const std::int64_t shorter =
            std::min(region->maxX - region->minX, region->maxY - region->minY) + 1;
        if (shorter < minimumSideLength) continue;
        const float score = region->sum / singlePrecision(region->count);
        if (score < boxThreshold) continue;

        const float margin =
            std::max(singlePrecision(shorter) * std::max(unclipRatio - 1, 0.0F) * 0.5F, 1.0F);
        const float left = scaleX * std::max(singlePrecision(region->minX) - margin, 0.0F);
        const float top = scaleY * std::max(singlePrecision(region->minY) - margin, 0.0F);
        const float right = scaleX * std::min(singlePrecision(region->maxX) + margin,
                                              singlePrecision(mapWidth - 1));
        const float bottom = scaleY * std::min(singlePrecision(region->maxY) + margin,
                                               singlePrecision(mapHeight - 1));
        boxes.push_back({{{left, top}, {right, top}, {right, bottom}, {left, bottom}}, score});
        if (static_cast<std::int64_t>(boxes.size()) >= maxCandidates) break;
    }
    detail::sortIntoReadingOrder(boxes);
    return boxes;
}

}  // namespace pictal
