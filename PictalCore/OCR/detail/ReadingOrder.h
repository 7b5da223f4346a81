#pragma once

#include "PictalCore/OCR/PaddleOCRDetectionBox.h"

#include <vector>

namespace pictal::detail {

/// Whether one box is read before another: on the line above, or further left on the same line.
/// Boxes are on one line when their tops are no further apart than half the lower one's height, or
/// 8 pixels. That is not transitive.
[[nodiscard]] bool isReadBefore(const PaddleOCRDetectionBox& a, const PaddleOCRDetectionBox& b);

/// A stable merge sort by that relation. The standard library's sorts may go astray on a relation
/// that is not transitive; this one makes its comparisons and ends.
void sortIntoReadingOrder(std::vector<PaddleOCRDetectionBox>& boxes);

}  // namespace pictal::detail
