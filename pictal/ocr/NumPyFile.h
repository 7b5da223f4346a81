#pragma once

#include <cstddef>
#include <cstdint>
#include <expected>
#include <span>
#include <string>
#include <vector>

/// Arrays as the files of NumPy have them (.npy), so that any program may run the models.
namespace pictal::program {

struct FloatArray {
    std::vector<std::int64_t> shape;
    std::vector<float> data;  ///< row-major
};

/// Versions 1 to 3, little-endian single precision in C order, and nothing behind it.
/// @return in one line, what is wrong and what to do
[[nodiscard]] std::expected<FloatArray, std::string> parsedNumPyFile(
    std::span<const std::byte> file);

[[nodiscard]] std::vector<std::byte> numPyFile(std::span<const std::int64_t> shape,
                                               std::span<const float> data);

}  // namespace pictal::program
