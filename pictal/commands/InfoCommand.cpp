#include "PictalCore/Platform/ImageIO/PNG.h"
#include "pictal/Arguments.h"
#include "pictal/Images.h"
#include "pictal/JSONOutput.h"
#include "pictal/commands/Commands.h"

#include <fmt/format.h>

namespace pictal::program {

namespace {

struct InfoOptions {
    std::string path;
    bool json = false;
};

/// Reads as much of the file as comes before its pixels.
std::expected<PNG::Info, Failure> readHeader(InputFile& input, const std::string& path) {
    for (std::size_t count = PNG::recognitionSize;; count *= 4) {
        const auto start = input.first(count);
        if (!start) return std::unexpected(start.error());
        auto info = PNG::readInfo(*start);
        if (info) return *std::move(info);
        const bool goesOn = start->size() >= count;
        if (!goesOn || info.error().kind() != PNG::ReadError::Kind::truncated)
            return badInput(fmt::format("{}: {}", inputName(path), info.error().description()));
    }
}

Outcome run(const InfoOptions& options) {
    auto input = InputFile::open(options.path, UINT64_MAX - 1);
    if (!input) return std::unexpected(input.error());
    const auto info = readHeader(*input, options.path);
    if (!info) return std::unexpected(info.error());
    warnOfUnusedColor(*info, options.path);
    const auto bytes = input->size();
    if (options.json)
        return doneIf(printJSON(JSONText::object({{"width", info->width},
                                                  {"height", info->height},
                                                  {"bitDepth", info->bitDepth},
                                                  {"colorType", rawValue(info->colorType)},
                                                  {"interlaced", info->interlaced},
                                                  {"hasAlpha", info->hasAlpha},
                                                  {"colorSpace", info->colorSpace},
                                                  {"bytes", bytes ? JSONText(*bytes) : nullptr}})));
    const std::string line =
        fmt::format("{}: {} × {}, {}-bit {}{}{}, {}{}", inputName(options.path), info->width,
                    info->height, info->bitDepth, rawValue(info->colorType),
                    info->interlaced ? ", interlaced" : "", info->hasAlpha ? ", with alpha" : "",
                    info->colorSpace, bytes ? fmt::format(", {} bytes", *bytes) : "");
    return doneIf(printText(escaped(line) + "\n"));
}

}  // namespace

void addInfo(Program& program) {
    program.add<InfoOptions>(
        "info", "Say what a picture is, reading no more than its header",
        "Examples:\n"
        "  pictal info in.png\n"
        "  pictal info --json in.png | jq .width",
        [](CLI::App& command, InfoOptions& options) {
            command.add_option("IMAGE", options.path, "A PNG file; - is standard input")
                ->required()
                ->transform(nameOf("file"))
                ->type_name("FILE");
            command.add_flag(
                "--json", options.json,
                "As one JSON object; bytes is null for a pipe, which is not read to its end");
        },
        run);
}

}  // namespace pictal::program
