#include "pictal/InputOutput.h"

#include "pictal/Descriptors.h"
#include "pictal/InputFile.h"
#include "pictal/OutputFile.h"

#include <unistd.h>

namespace pictal::program {

std::expected<std::string, Failure> readTextInput(const std::string& path) {
    constexpr std::uint64_t limit = std::uint64_t{64} << 20;  // of what can be decoded
    auto input = InputFile::open(path, limit);
    if (!input) return std::unexpected(input.error());
    const auto bytes = (*std::move(input)).all();
    if (!bytes) return std::unexpected(bytes.error());
    return std::string(reinterpret_cast<const char*>(bytes->data()), bytes->size());
}

std::expected<void, Failure> writeOutput(const std::string& path,
                                         std::span<const std::byte> bytes) {
    auto output = OutputFile::open(path);
    if (!output) return std::unexpected(output.error());
    if (auto written = output->write(bytes); !written) return written;
    return output->commit();
}

std::expected<void, Failure> printText(std::string_view text) {
    return writeAll(STDOUT_FILENO, "standard output", std::as_bytes(std::span(text)));
}

}  // namespace pictal::program
