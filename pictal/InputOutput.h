#pragma once

#include "pictal/Outcome.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Reading arguments and writing results whole. A path of "-" is standard input or output.
namespace pictal::program {

[[nodiscard]] std::expected<std::vector<std::byte>, Failure> readInput(const std::string& path);
[[nodiscard]] std::expected<std::string, Failure> readTextInput(const std::string& path);

/// As an `OutputFile` in one piece.
[[nodiscard]] std::expected<void, Failure> writeOutput(const std::string& path,
                                                       std::span<const std::byte> bytes);

/// Text for standard output; the only other thing that ever goes there is an image.
[[nodiscard]] std::expected<void, Failure> printText(std::string_view text);

}  // namespace pictal::program
