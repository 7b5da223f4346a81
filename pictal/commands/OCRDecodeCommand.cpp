#include "PictalCore/OCR/PaddleOCRCTCDecoder.h"
#include "pictal/InputFile.h"
#include "pictal/InputOutput.h"
#include "pictal/commands/Commands.h"
#include "pictal/ocr/ArrayFiles.h"
#include "pictal/ocr/BoxesJSON.h"
#include "pictal/ocr/Configurations.h"
#include "pictal/ocr/TextLines.h"

#include <fmt/format.h>

namespace pictal::program {

namespace {

struct Options {
    std::string output, config;
    bool json = false;
};

Outcome run(const Options& options) {
    if (options.output == "-" && options.config == "-")
        return badInput("the output and the configuration cannot both be standard input");
    const auto config = readRecognitionConfig(options.config);
    if (!config) return std::unexpected(config.error());
    const auto decoder = decoderFor(*config, inputName(options.config));
    if (!decoder) return std::unexpected(decoder.error());
    const auto output = readArray(options.output);
    if (!output) return std::unexpected(output.error());
    const auto texts = decoder->decodeBatch(output->data, output->shape);
    if (!texts)
        return badInput(
            fmt::format("{}: {}", inputName(options.output), texts.error().description()));
    warnOfOtherClasses(*decoder, output->shape[2]);
    std::string text;
    nlohmann::ordered_json lines = nlohmann::ordered_json::array();
    for (const PaddleOCRDecodedText& line : *texts) {
        text += line.text + "\n";
        lines.push_back({{"text", line.text}, {"confidence", shortNumber(line.confidence)}});
    }
    return doneIf(printText(options.json ? documentText({{"lines", lines}}) : text));
}

}  // namespace

void addOCRDecode(Program& program) {
    program.add<Options>(
        "ocr-decode", "Turn what a text recognition model answered into text",
        "Prints a line of text for each line that the model was given, empty ones too.\n\n"
        "Examples:\n"
        "  pictal ocr-decode out.npy --config rec.yml\n"
        "  pictal ocr-decode out.npy --config rec.yml --json | jq '.lines[0].confidence'\n",
        [](CLI::App& command, Options& options) {
            command.add_option("OUT", options.output, "A .npy file; - is standard input")
                ->required()
                ->type_name("FILE");
            command.add_option("--config", options.config, "The model's configuration text")
                ->required()
                ->type_name("FILE");
            command.add_flag("--json", options.json, "One JSON document with confidences");
        },
        run);
}

}  // namespace pictal::program
