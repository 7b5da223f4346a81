#pragma once

#include "PictalCore/Export.h"

#include <vector>

namespace pictal {

/// Pixels of the original image; the origin is its upper left corner, y grows downward.
struct PaddleOCRPoint {
    float x = 0;
    float y = 0;

    friend bool operator==(const PaddleOCRPoint&, const PaddleOCRPoint&) = default;
};

/// Where there is text.
struct PICTAL_API PaddleOCRDetectionBox {
    /// The corners: upper left, upper right, lower right, lower left.
    std::vector<PaddleOCRPoint> points;
    /// How sure the detector is, 0…1.
    float confidence = 0;

    /// Over all points; 0 when there are none.
    [[nodiscard]] float minX() const;
    [[nodiscard]] float minY() const;
    [[nodiscard]] float maxX() const;
    [[nodiscard]] float maxY() const;

    friend bool operator==(const PaddleOCRDetectionBox&, const PaddleOCRDetectionBox&) = default;
};

}  // namespace pictal
