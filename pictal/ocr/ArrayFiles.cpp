#include "pictal/ocr/ArrayFiles.h"

#include "pictal/InputFile.h"
#include "pictal/InputOutput.h"

#include <fmt/format.h>

namespace pictal::program {

namespace {

constexpr std::uint64_t largestFile = std::uint64_t{1} << 30;

}  // namespace

std::expected<FloatArray, Failure> readArray(const std::string& path) {
    auto file = InputFile::open(path, largestFile, "; run the model on fewer pictures at once");
    if (!file) return std::unexpected(file.error());
    const auto bytes = std::move(*file).all();
    if (!bytes) return std::unexpected(bytes.error());
    auto array = parsedNumPyFile(*bytes);
    if (array) return *std::move(array);
    return badInput(fmt::format("{} {}", inputName(path), array.error()));
}

std::expected<void, Failure> writeArray(const std::string& path,
                                        std::span<const std::int64_t> shape,
                                        std::span<const float> data) {
    return writeOutput(path, numPyFile(shape, data));
}

}  // namespace pictal::program
