#pragma once

#include <cstdint>

namespace pictal {

/// The order in which the colour channels go into a model's input tensor.
enum class PaddleOCRImageChannelOrder : std::uint8_t { bgr, rgb };

}  // namespace pictal
