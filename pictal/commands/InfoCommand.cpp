#include "PictalCore/Platform/ImageIO/PNG.h"
#include "pictal/Images.h"
#include "pictal/InputOutput.h"
#include "pictal/commands/Commands.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace pictal::program {

namespace {

struct InfoOptions {
    std::string path;
    bool json = false;
};

Outcome run(const InfoOptions& options) {
    const auto bytes = readInput(options.path);
    if (!bytes) return std::unexpected(bytes.error());
    const auto info = PNG::readInfo(*bytes);
    if (!info)
        return badInput(fmt::format("{}: {}", inputName(options.path), info.error().description()));

    std::string text;
    if (options.json) {
        const nlohmann::ordered_json json{
            {"width", info->width},           {"height", info->height},
            {"bitDepth", info->bitDepth},     {"colorType", rawValue(info->colorType)},
            {"interlaced", info->interlaced}, {"hasAlpha", info->hasAlpha},
            {"colorSpace", info->colorSpace}, {"bytes", bytes->size()}};
        text = json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
    } else {
        text = fmt::format("{}: {} × {}, {}-bit {}{}{}, {}, {} bytes\n", inputName(options.path),
                           info->width, info->height, info->bitDepth, rawValue(info->colorType),
                           info->interlaced ? ", interlaced" : "",
                           info->hasAlpha ? ", with alpha" : "", info->colorSpace, bytes->size());
    }
    if (const auto printed = printText(text); !printed) return std::unexpected(printed.error());
    return ExitStatus::done;
}

}  // namespace

void addInfo(Program& program) {
    program.add<InfoOptions>(
        "info", "Say what a picture is, from its header",
        "Examples:\n"
        "  pictal info in.png\n"
        "  pictal info --json in.png | jq .width",
        [](CLI::App& command, InfoOptions& options) {
            command.add_option("IMAGE", options.path, "A PNG file; - is standard input")
                ->required()
                ->type_name("FILE");
            command.add_flag("--json", options.json, "One JSON document");
        },
        run);
}

}  // namespace pictal::program
