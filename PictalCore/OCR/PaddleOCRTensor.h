#pragma once

#include <cstdint>
#include <vector>

namespace pictal {

/// In pixels.
struct PaddleOCRImageSize {
    std::int64_t width = 0;
    std::int64_t height = 0;

    friend bool operator==(const PaddleOCRImageSize&, const PaddleOCRImageSize&) = default;
};

/// What goes into a model.
struct PaddleOCRTensor {
    /// Row-major in the order of the shape.
    std::vector<float> data;
    /// Pictures, channels (3), height, width.
    std::vector<std::int64_t> shape;
    /// Of the picture that it was made of, or the first one.
    PaddleOCRImageSize originalSize;
    /// Of the tensor's planes.
    PaddleOCRImageSize resizedSize;

    friend bool operator==(const PaddleOCRTensor&, const PaddleOCRTensor&) = default;
};

}  // namespace pictal
