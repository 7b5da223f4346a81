#include "PictalCore/OCR/PaddleOCRImagePreprocessor.h"
#include "pictal/Images.h"
#include "pictal/commands/Commands.h"
#include "pictal/ocr/ArrayFiles.h"
#include "pictal/ocr/Configurations.h"

#include <fmt/format.h>

namespace pictal::program {

namespace {

struct Options {
    ImageInput input;
    std::string config, output;
};

Outcome run(const Options& options) {
    if (options.input.path == "-" && options.config == "-")
        return badInput("the picture and the configuration cannot both be standard input");
    const auto config = readDetectionConfig(options.config);
    if (!config) return std::unexpected(config.error());
    const auto image = options.input.read();
    if (!image) return std::unexpected(image.error());
    const auto tensor = PaddleOCRImagePreprocessor::detectionTensor(*image, *config);
    if (!tensor)
        return badInput(
            fmt::format("{}: {}", inputName(options.input.path), tensor.error().description()));
    return doneIf(writeArray(options.output, tensor->shape, tensor->data));
}

}  // namespace

void addOCRTensor(Program& program) {
    program.add<Options>(
        "ocr-tensor", "Write what a text detection model takes of a picture",
        "For running the model elsewhere; ocr-boxes reads what it answers.\n\n"
        "Examples:\n"
        "  pictal ocr-tensor in.png --config det.yml -o det.npy\n",
        [](CLI::App& command, Options& options) {
            options.input.addTo(command);
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
