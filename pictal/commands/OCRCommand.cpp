#include "pictal/Images.h"
#include "pictal/InputOutput.h"
#include "pictal/commands/Commands.h"
#include "pictal/ocr/BoxesJSON.h"
#include "pictal/ocr/TextLines.h"
#include "pictal/ocr/TextRecognizer.h"

namespace pictal::program {

namespace {

struct Options {
    ImageInput input;
    std::string models, runtime;
    std::int64_t sideLimit = 1920;
    int threads = 1;
    bool json = false, quiet = false;
};

std::string textOf(const std::vector<RecognizedLine>& lines) {
    std::string text;
    for (const RecognizedLine& line : lines)
        text += line.text.text + "\n";
    return text;
}

std::string jsonOf(const std::vector<RecognizedLine>& lines) {
    nlohmann::ordered_json entries = nlohmann::ordered_json::array();
    for (const RecognizedLine& line : lines)
        entries.push_back({{"text", line.text.text},
                           {"box", boxJSON(line.box)},
                           {"confidence", shortNumber(line.text.confidence)},
                           {"detection", shortNumber(line.box.confidence)}});
    return documentText({{"lines", entries}});
}

Outcome run(const Options& options) {
    const auto image = options.input.read();
    if (!image) return std::unexpected(image.error());
    const std::string folder = options.models.empty() ? usualModelFolder() : options.models;
    const auto models = loadModels(folder, options.runtime, options.threads);
    if (!models) return std::unexpected(models.error());
    const auto lines =
        recognizedLines(*image, *models, options.sideLimit,
                        options.quiet ? Progress::Shown::never : Progress::Shown::onTerminal);
    if (!lines) return std::unexpected(lines.error());
    return doneIf(printText(options.json ? jsonOf(*lines) : textOf(*lines)));
}

void setUp(CLI::App& command, Options& options) {
    options.input.addTo(command);
    command
        .add_option("--models", options.models,
                    "Folder with det.onnx, rec.onnx, det.yml and rec.yml; PICTAL_OCR_MODELS or "
                    "~/.local/share/pictal/ocr when not given")
        ->type_name("FOLDER");
    command
        .add_option("--runtime", options.runtime,
                    "The ONNX Runtime's library; PICTAL_ONNXRUNTIME, the folder's or the system's "
                    "when not given")
        ->type_name("LIBRARY");
    command
        .add_option("--side-limit", options.sideLimit,
                    "Look for text in the picture shrunk to this many pixels a side")
        ->check(CLI::Range(32, 16384))
        ->capture_default_str();
    command.add_option("--threads", options.threads, "How many threads run the models")
        ->check(CLI::Range(1, 1024))
        ->capture_default_str();
    command.add_flag("--json", options.json, "One JSON document with boxes and confidences");
    command.add_flag("--quiet", options.quiet, "No progress bar");
}

}  // namespace

void addOCR(Program& program) {
    program.add<Options>(
        "ocr", "Read the text in a picture",
        "The models and what runs them are not part of this program: pictal-ocr-models\n"
        "fetches them once. The text is printed line by line in reading order. Boxes are\n"
        "[left, top, right, bottom] in pixels of the picture.\n\n"
        "Examples:\n"
        "  pictal ocr in.png\n"
        "  pictal ocr --json in.png | jq -r '.lines[] | select(.confidence < 0.8).text'\n"
        "  pictal ocr --models ~/models --side-limit 2880 --threads 4 in.png\n",
        setUp, run);
}

}  // namespace pictal::program
