#pragma once

#include "PictalCore/OCR/PaddleOCRImageChannelOrder.h"
#include "PictalCore/OCR/PaddleOCRTensor.h"
#include "PictalCore/Platform/Graphics/CGImage.h"

#include <array>
#include <cstddef>
#include <span>

namespace pictal::detail {

/// What each level of a channel becomes.
using LevelTable = std::array<float, 256>;

/// Where one picture goes in a tensor.
struct TensorPlanes {
    std::span<float> data;    ///< starts with the picture's first value
    std::size_t rowLength;    ///< from a row to the one below
    std::size_t planeLength;  ///< from a channel to the next
};

/// Whether there may be a picture of this size.
[[nodiscard]] bool isPossible(const PaddleOCRImageSize& size);

/// Draws the image, stretched to `size` over white, in sRGB.
/// @param tables  one a channel, in the order in which they are written
/// @return false when its colours cannot be converted
[[nodiscard]] bool drawPlanes(const CGImage& image, const PaddleOCRImageSize& size,
                              PaddleOCRImageChannelOrder order,
                              const std::array<LevelTable, 3>& tables, const TensorPlanes& to);

}  // namespace pictal::detail
