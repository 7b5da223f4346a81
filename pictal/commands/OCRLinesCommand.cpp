#include "PictalCore/OCR/PaddleOCRImagePreprocessor.h"
#include "pictal/Images.h"
#include "pictal/commands/Commands.h"
#include "pictal/ocr/ArrayFiles.h"
#include "pictal/ocr/BoxesJSON.h"
#include "pictal/ocr/Configurations.h"
#include "pictal/ocr/TextLines.h"

#include <fmt/format.h>

namespace pictal::program {

namespace {

struct Options {
    ImageInput input;
    std::string boxes, config, output;
};

Outcome run(const Options& options) {
    const int dashes =
        (options.input.path == "-") + (options.boxes == "-") + (options.config == "-");
    if (dashes > 1) return badInput("only one of the inputs can be standard input");
    const auto config = readRecognitionConfig(options.config);
    if (!config) return std::unexpected(config.error());
    const auto boxes = readBoxes(options.boxes);
    if (!boxes) return std::unexpected(boxes.error());
    if (boxes->empty())
        return badInput(
            fmt::format("{}: there are no boxes, and so no lines", inputName(options.boxes)));
    const auto image = options.input.read();
    if (!image) return std::unexpected(image.error());
    std::vector<CGImage> lines;
    for (const PaddleOCRDetectionBox& box : *boxes) {
        const auto line = lineImage(*image, box);
        if (!line)
            return badInput(fmt::format("{}: box {} is outside the picture",
                                        inputName(options.boxes), lines.size() + 1));
        lines.push_back(*line);
    }
    const auto tensor = PaddleOCRImagePreprocessor::recognitionBatch(lines, *config);
    if (!tensor)
        return badInput(
            fmt::format("{}: {}", inputName(options.config), tensor.error().description()));
    return doneIf(writeArray(options.output, tensor->shape, tensor->data));
}

}  // namespace

void addOCRLines(Program& program) {
    program.add<Options>(
        "ocr-lines", "Write what a text recognition model takes of the lines in a picture",
        "For running the model elsewhere; ocr-decode reads what it answers.\n\n"
        "Examples:\n"
        "  pictal ocr-lines in.png --boxes boxes.json --config rec.yml -o rec.npy\n",
        [](CLI::App& command, Options& options) {
            options.input.addTo(command);
            command.add_option("--boxes", options.boxes, "What ocr-boxes printed")
                ->required()
                ->type_name("FILE");
            command.add_option("--config", options.config, "The model's configuration text")
                ->required()
                ->type_name("FILE");
            command
                .add_option("-o,--output", options.output,
                            "Where the .npy file goes; - is standard output")
                ->required()
                ->type_name("FILE");
        },
        run);
}

}  // namespace pictal::program
