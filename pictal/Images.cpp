#include "pictal/Images.h"

#include "pictal/Arguments.h"
#include "pictal/InputOutput.h"
#include "pictal/Messages.h"

#include <fmt/format.h>

namespace pictal::program {

void warnOfUnusedColor(const PNG::Info& info, const std::string& path) {
    if (!info.unusedColor.empty())
        complain(fmt::format("{}: its colours may be wrong: {} could not be used", inputName(path),
                             info.unusedColor));
}

void ImageInput::addTo(CLI::App& command) {
    command.add_option("IN", path, "The picture, a PNG file; - is standard input")
        ->required()
        ->transform(nameOf("file"))
        ->type_name("FILE");
    command
        .add_option("--max-pixels", maximumPixels, "Refuse a picture with more pixels than this")
        ->transform(wholeNumber(1))
        ->type_name("COUNT")
        ->capture_default_str();
    addMaximumBytes(command, maximumBytes);
}

std::unexpected<Failure> ImageInput::refused(const PNG::ReadError& error,
                                             std::string_view remedy) const {
    const std::string message =
        fmt::format("{}: {}{}", inputName(path), error.description(), remedy);
    return error.kind() == PNG::ReadError::Kind::outOfMemory ? workFailed(message)
                                                             : badInput(message);
}

std::expected<std::vector<std::byte>, Failure> ImageInput::readFile() const {
    auto input = openInput(path, maximumBytes);
    if (!input) return std::unexpected(input.error());
    const auto start = input->first(PNG::recognitionSize);
    if (!start) return std::unexpected(start.error());
    if (!PNG::isPNG(*start)) return refused(PNG::readInfo(*start).error());
    return (*std::move(input)).all();
}

std::expected<CGImage, Failure> ImageInput::decode(std::span<const std::byte> file) const {
    auto image = PNG::read(file, {.maximumPixels = maximumPixels});
    const auto info = PNG::readInfo(file);
    if (image && info) warnOfUnusedColor(*info, path);
    if (image) return *std::move(image);
    // No option helps a picture with too long a side.
    const bool overLimit = info && info->width * info->height > maximumPixels &&
                           image.error().kind() == PNG::ReadError::Kind::tooLarge;
    return refused(image.error(), overLimit ? "; --max-pixels raises the limit" : "");
}

std::expected<CGImage, Failure> ImageInput::read() const {
    const auto file = readFile();
    if (!file) return std::unexpected(file.error());
    return decode(*file);
}

CLI::Option* ImageOutput::addTo(CLI::App& command) {
    CLI::Option* output =
        command.add_option("-o,--output", path, "Where the PNG goes; - is standard output")
            ->required()
            ->transform(nameOf("file"))
            ->type_name("FILE");
    command
        .add_option("--compression", compression,
                    "fast: quickest, default: small and quick, small: smallest")
        ->transform(choice<PNG::Compression>())
        ->default_str("default");
    return output;
}

std::expected<void, Failure> ImageOutput::write(const CGImage& image) const {
    const auto bytes = PNG::write(image, compression);
    if (!bytes && bytes.error() == PNG::WriteError::outOfMemory)
        return workFailed(path + ": there is not enough memory to encode the picture");
    if (!bytes) return badInput(path + ": the picture is larger than a PNG may be");
    return writeOutput(path, *bytes);
}

}  // namespace pictal::program
