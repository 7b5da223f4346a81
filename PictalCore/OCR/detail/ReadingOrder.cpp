#include "PictalCore/OCR/detail/ReadingOrder.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace pictal::detail {

namespace {

constexpr float leastTolerance = 8;

/// A box and what is asked of it again and again.
struct Entry {
    float minX;
    float minY;
    float height;
    std::size_t box;
};

Entry entryOf(const PaddleOCRDetectionBox& box, std::size_t index) {
    return {box.minX(), box.minY(), std::max(box.maxY() - box.minY(), 1.0F), index};
}

bool precedes(const Entry& a, const Entry& b) {
    const float tolerance = std::max(0.5F * std::min(a.height, b.height), leastTolerance);
    if (std::abs(a.minY - b.minY) > tolerance) return a.minY < b.minY;
    return a.minX < b.minX;
}

/// Merges the sorted runs first…middle and middle…last of `from` into `to`.
void mergeRuns(const std::vector<Entry>& from, std::size_t first, std::size_t middle,
               std::size_t last, std::vector<Entry>& to) {
    std::size_t left = first, right = middle;
    for (std::size_t i = first; i < last; ++i) {
        const bool takesRight =
            left == middle || (right < last && precedes(from[right], from[left]));
        to[i] = from[takesRight ? right++ : left++];
    }
}

}  // namespace

bool isReadBefore(const PaddleOCRDetectionBox& a, const PaddleOCRDetectionBox& b) {
    return precedes(entryOf(a, 0), entryOf(b, 1));
}

void sortIntoReadingOrder(std::vector<PaddleOCRDetectionBox>& boxes) {
    std::vector<Entry> entries;
    entries.reserve(boxes.size());
    for (std::size_t i = 0; i < boxes.size(); ++i)
        entries.push_back(entryOf(boxes[i], i));
    std::vector<Entry> merged(entries.size());
    for (std::size_t run = 1; run < entries.size(); run *= 2) {
        for (std::size_t first = 0; first < entries.size(); first += 2 * run)
            mergeRuns(entries, first, std::min(first + run, entries.size()),
                      std::min(first + 2 * run, entries.size()), merged);
        entries.swap(merged);
    }
    std::vector<PaddleOCRDetectionBox> sorted;
    sorted.reserve(boxes.size());
    for (const Entry& entry : entries)
        sorted.push_back(std::move(boxes[entry.box]));
    boxes = std::move(sorted);
}

}  // namespace pictal::detail
