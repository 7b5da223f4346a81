#pragma once

#include "pictal/Program.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Reading arguments and writing results. A path of "-" is standard input or output.
namespace pictal::program {

[[nodiscard]] std::expected<std::vector<std::byte>, Failure> readInput(const std::string& path);
[[nodiscard]] std::expected<std::string, Failure> readTextInput(const std::string& path);

/// Whole or not at all: a regular or missing file is replaced by renaming a temporary file over it,
/// a link is followed, a device or pipe is written directly. Nothing binary goes to a terminal.
[[nodiscard]] std::expected<void, Failure> writeOutput(const std::string& path,
                                                       std::span<const std::byte> bytes);

/// Text for standard output; the only other thing that ever goes there is an image.
[[nodiscard]] std::expected<void, Failure> printText(std::string_view text);

/// An interrupt, or a request to end, removes the temporary file that is being written and exits
/// with 130 or 143, as a shell would say.
void removeTemporaryFilesOnInterrupt();

}  // namespace pictal::program
