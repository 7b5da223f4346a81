#pragma once

#include "pictal/Outcome.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

/// Small inputs and results, each in one piece. A path of "-" is standard input or output.
namespace pictal::program {

/// 64 MiB at most.
[[nodiscard]] std::expected<std::string, Failure> readTextInput(const std::string& path);

/// As an `OutputFile` in one piece.
[[nodiscard]] std::expected<void, Failure> writeOutput(const std::string& path,
                                                       std::span<const std::byte> bytes);

/// Text for standard output; the only other thing that ever goes there is an image.
[[nodiscard]] std::expected<void, Failure> printText(std::string_view text);

}  // namespace pictal::program
