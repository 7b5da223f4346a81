#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pictal::program {

/// What the header of a .npy file says.
struct NumPyHeader {
    std::string type;
    bool isFortranOrder = false;
    std::vector<std::int64_t> shape;  ///< none is negative
};

/// A Python dictionary of exactly the three keys: {'descr': '<f4', 'fortran_order': False,
/// 'shape': (1, 2), }
[[nodiscard]] std::optional<NumPyHeader> parsedNumPyHeader(std::string_view text);

}  // namespace pictal::program
