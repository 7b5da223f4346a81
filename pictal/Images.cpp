#include "pictal/Images.h"

#include "pictal/Arguments.h"
#include "pictal/InputOutput.h"

#include <fmt/format.h>

namespace pictal::program {

void ImageInput::addTo(CLI::App& command) {
    command.add_option("IN", path, "The picture, a PNG file; - is standard input")
        ->required()
        ->type_name("FILE");
    command.add_option("--max-pixels", maximumPixels, "Refuse pictures with more pixels than this")
        ->check(CLI::PositiveNumber)
        ->capture_default_str();
}

std::expected<CGImage, Failure> ImageInput::read() const {
    const auto bytes = readInput(path);
    if (!bytes) return std::unexpected(bytes.error());
    auto image = PNG::read(*bytes, {.maximumPixels = maximumPixels});
    if (image) return *std::move(image);
    const PNG::ReadError& error = image.error();
    const std::string message = fmt::format("{}: {}", inputName(path), error.description());
    if (error.kind() == PNG::ReadError::Kind::outOfMemory) return workFailed(message);
    return badInput(message);
}

void ImageOutput::addTo(CLI::App& command) {
    command.add_option("-o,--output", path, "Where the PNG goes; - is standard output")
        ->required()
        ->type_name("FILE");
    command
        .add_option("--compression", compression,
                    "fast: quickest, default: small and quick, small: smallest")
        ->transform(choice<PNG::Compression>())
        ->default_str("default");
}

std::expected<void, Failure> ImageOutput::write(const CGImage& image) const {
    const auto bytes = PNG::write(image, compression);
    if (!bytes) return workFailed(fmt::format("{}: the picture could not be encoded", path));
    return writeOutput(path, *bytes);
}

}  // namespace pictal::program
