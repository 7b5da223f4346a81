#include "PictalCore/OCR/PaddleOCRDetectionBox.h"

#include <algorithm>

namespace pictal {

namespace {

float least(const std::vector<PaddleOCRPoint>& points, float PaddleOCRPoint::* side) {
    return points.empty() ? 0 : std::ranges::min(points, {}, side).*side;
}
float greatest(const std::vector<PaddleOCRPoint>& points, float PaddleOCRPoint::* side) {
    return points.empty() ? 0 : std::ranges::max(points, {}, side).*side;
}

}  // namespace

float PaddleOCRDetectionBox::minX() const {
    return least(points, &PaddleOCRPoint::x);
}
float PaddleOCRDetectionBox::minY() const {
    return least(points, &PaddleOCRPoint::y);
}
float PaddleOCRDetectionBox::maxX() const {
    return greatest(points, &PaddleOCRPoint::x);
}
float PaddleOCRDetectionBox::maxY() const {
    return greatest(points, &PaddleOCRPoint::y);
}

}  // namespace pictal
