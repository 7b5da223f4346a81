#include "pictal/ocr/Tiles.h"

#include <algorithm>

namespace pictal::program {

namespace {

/// Lines that are wholly inside the overlap are seen by both tiles; so many pixels, or a tenth of
/// a tile for large text.
constexpr std::int64_t leastOverlap = 128;
/// Two detections of one text differ by some pixels. Near the seam each tile keeps its own, and one
/// of the two goes afterwards.
constexpr float seamTolerance = 8;

float middleOf(const PaddleOCRDetectionBox& box) {
    return (box.minY() + box.maxY()) / 2;
}

float areaOf(const PaddleOCRDetectionBox& box) {
    return (box.maxX() - box.minX()) * (box.maxY() - box.minY());
}

/// Whether half of the smaller box lies in the other: neighbouring lines share less.
bool isSameText(const PaddleOCRDetectionBox& a, const PaddleOCRDetectionBox& b) {
    const float width = std::min(a.maxX(), b.maxX()) - std::max(a.minX(), b.minX());
    const float height = std::min(a.maxY(), b.maxY()) - std::max(a.minY(), b.minY());
    return width > 0 && height > 0 && width * height > 0.5F * std::min(areaOf(a), areaOf(b));
}

}  // namespace

std::vector<Tile> tilesOf(std::int64_t width, std::int64_t height, std::int64_t sideLimit) {
    const std::int64_t tallest = std::max({width, sideLimit, 4 * leastOverlap});
    if (height <= tallest) return {{0, height}};
    const std::int64_t overlap = std::max(leastOverlap, tallest / 10);
    const std::int64_t step = tallest - overlap;
    const std::int64_t count = (height - overlap + step - 1) / step;
    std::vector<Tile> tiles;
    for (std::int64_t i = 0; i < count; ++i) {
        // The last one ends with the picture and is as tall as the others.
        const std::int64_t top = std::min(i * step, height - tallest);
        tiles.push_back({top, top + tallest});
    }
    return tiles;
}

std::vector<PaddleOCRDetectionBox> mergedBoxes(
    const std::vector<Tile>& tiles, const std::vector<std::vector<PaddleOCRDetectionBox>>& boxes) {
    const auto seamAbove = [&](std::size_t i) {
        return static_cast<float>(tiles[i - 1].bottom + tiles[i].top) / 2;
    };
    std::vector<PaddleOCRDetectionBox> merged;
    std::size_t previousTile = 0;
    for (std::size_t i = 0; i < tiles.size(); ++i) {
        const std::size_t thisTile = merged.size();
        for (PaddleOCRDetectionBox box : boxes[i]) {
            for (PaddleOCRPoint& point : box.points)
                point.y += static_cast<float>(tiles[i].top);
            const float middle = middleOf(box);
            if (i > 0 && middle < seamAbove(i) - seamTolerance) continue;
            if (i + 1 < tiles.size() && middle > seamAbove(i + 1) + seamTolerance) continue;
            const bool isKnown = std::any_of(
                merged.begin() + static_cast<std::ptrdiff_t>(previousTile),
                merged.begin() + static_cast<std::ptrdiff_t>(thisTile),
                [&](const PaddleOCRDetectionBox& known) { return isSameText(known, box); });
            if (!isKnown) merged.push_back(std::move(box));
        }
        previousTile = thisTile;
    }
    return merged;
}

}  // namespace pictal::program
