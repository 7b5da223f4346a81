#pragma once

#include "PictalCore/Platform/Graphics/CGImage.h"
#include "PictalCore/Platform/Graphics/Kernels/Segments.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace pictal::detail {

/// The rows of a picture, at least a segment wide: a narrower one is continued by nothing.
class SegmentRows {
  public:
    explicit SegmentRows(const CGImage& image) : image_(image) {}

    /// Lasts until the next call.
    [[nodiscard]] const std::uint32_t* row(std::int64_t y) {
        const auto pixels = image_.row(y);
        if (pixels.size() >= kernels::segmentPixels) return pixels.data();
        std::ranges::copy(pixels, padded_.begin());
        return padded_.data();
    }

  private:
    const CGImage& image_;
    std::array<std::uint32_t, kernels::segmentPixels> padded_{};
};

}  // namespace pictal::detail
