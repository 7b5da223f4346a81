#include "pictal/InputOutput.h"

#include "pictal/Descriptors.h"
#include "pictal/OutputFile.h"

#include <unistd.h>

namespace pictal::program {

std::expected<std::vector<std::byte>, Failure> readInput(const std::string& path) {
    // Opening /dev/stdin would fail for a socket and start a file over that was read in part.
    auto bytes = path == "-" ? readDescriptor(STDIN_FILENO, "standard input") : readFile(path);
    if (bytes) return *std::move(bytes);
    return std::unexpected(failure(bytes.error()));
}

std::expected<std::string, Failure> readTextInput(const std::string& path) {
    const auto bytes = readInput(path);
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
