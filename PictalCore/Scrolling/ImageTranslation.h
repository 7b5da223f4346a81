#pragma once

namespace pictal {

/// How far a picture has to be shifted to lie on another one of the same size.
struct ImageTranslation {
    /// Pixels to the right.
    double x = 0;
    /// Pixels downward: content that moved up by 120 pixels reads −120.
    double y = 0;
    /// 0…1, higher is better.
    float confidence = 0;

    friend constexpr bool operator==(const ImageTranslation&, const ImageTranslation&) = default;
};

}  // namespace pictal
