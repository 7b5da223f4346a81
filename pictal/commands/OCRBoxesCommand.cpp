#include "PictalCore/OCR/PaddleOCRDBPostProcessor.h"
#include "pictal/Arguments.h"
#include "pictal/InputFile.h"
#include "pictal/InputOutput.h"
#include "pictal/Messages.h"
#include "pictal/commands/Commands.h"
#include "pictal/ocr/ArrayFiles.h"
#include "pictal/ocr/BoxesJSON.h"
#include "pictal/ocr/Configurations.h"

#include <algorithm>

#include <fmt/format.h>

namespace pictal::program {

namespace {

struct Options {
    std::string map, config, size;
    bool json = false;
};

struct Size {
    std::int64_t width, height;
};

std::expected<Size, Failure> parsedSize(const std::string& text) {
    const std::size_t cross = std::min(text.find_first_of("xX"), text.size());
    const auto width = parseWholeNumber(text.substr(0, cross));
    const auto height = parseWholeNumber(text.substr(std::min(cross + 1, text.size())));
    if (!width || !height || *width < 1 || *height < 1)
        return badInput(
            fmt::format("--size: {} is no size in pixels such as 1920x1080", inQuotes(text)));
    return Size{*width, *height};
}

Outcome run(const Options& options) {
    const auto size = parsedSize(options.size);
    if (!size) return std::unexpected(size.error());
    const auto config = readDetectionConfig(options.config);
    if (!config) return std::unexpected(config.error());
    const auto map = readArray(options.map);
    if (!map) return std::unexpected(map.error());
    // One map; a model answers with a batch of one and one channel around it.
    const std::size_t sides = map->shape.size();
    if (sides < 2 || sides > 4 ||
        std::any_of(map->shape.begin(), map->shape.end() - 2, [](auto side) { return side != 1; }))
        return badInput(
            fmt::format("{}: is no map of one picture, of the shape [1, 1, height, "
                        "width]",
                        inputName(options.map)));
    return doneIf(printText(boxesJSON(PaddleOCRDBPostProcessor(*config).process(
        map->data, map->shape[sides - 1], map->shape[sides - 2], size->width, size->height))));
}

}  // namespace

void addOCRBoxes(Program& program) {
    program.add<Options>(
        "ocr-boxes", "Find the boxes of text in what a text detection model answered",
        "Prints JSON: {\"boxes\": [{\"box\": [left, top, right, bottom], \"confidence\": 0.9}]}\n\n"
        "Examples:\n"
        "  pictal ocr-boxes map.npy --config det.yml --size 1920x1080 > boxes.json\n",
        [](CLI::App& command, Options& options) {
            command.add_option("MAP", options.map, "A .npy file; - is standard input")
                ->required()
                ->type_name("FILE");
            command.add_option("--config", options.config, "The model's configuration text")
                ->required()
                ->type_name("FILE");
            command.add_option("--size", options.size, "Of the picture, in pixels")
                ->required()
                ->type_name("WxH");
            command.add_flag("--json", options.json, "JSON, which it is in any case");
        },
        run);
}

}  // namespace pictal::program
