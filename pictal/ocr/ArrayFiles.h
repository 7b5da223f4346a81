#pragma once

#include "pictal/Outcome.h"
#include "pictal/ocr/NumPyFile.h"

#include <string>

/// .npy files as arguments of commands; "-" is standard input or output.
namespace pictal::program {

/// Files over 1 GiB are refused.
[[nodiscard]] std::expected<FloatArray, Failure> readArray(const std::string& path);
[[nodiscard]] std::expected<void, Failure> writeArray(const std::string& path,
                                                      std::span<const std::int64_t> shape,
                                                      std::span<const float> data);

}  // namespace pictal::program
