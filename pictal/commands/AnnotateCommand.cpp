#include "PictalCore/Annotation/AnnotationRenderer.h"
#include "pictal/Arguments.h"
#include "pictal/Images.h"
#include "pictal/commands/Commands.h"

#include <fmt/format.h>

namespace pictal::program {

namespace {

struct AnnotateOptions {
    ImageInput input;
    ImageOutput output;
    std::string annotations;
};

/// A list of annotations, or a single one.
std::expected<std::vector<ScreenshotAnnotation>, Failure> readAnnotations(const std::string& path) {
    const auto text = readTextInput(path);
    if (!text) return std::unexpected(text.error());
    const std::size_t start = text->find_first_not_of(" \t\r\n");
    const bool single = start != std::string::npos && (*text)[start] == '{';
    auto list = single ? std::expected<std::vector<ScreenshotAnnotation>, DecodingError>()
                       : decodeJSON<std::vector<ScreenshotAnnotation>>(*text);
    if (single) {
        auto annotation = decodeJSON<ScreenshotAnnotation>(*text);
        if (annotation)
            list->push_back(*std::move(annotation));
        else
            list = std::unexpected(annotation.error());
    }
    if (!list) return badInput(inputName(path) + ": " + list.error().description());

    // A picture without the mosaic that should have hidden something is worse than none.
    for (const ScreenshotAnnotation& annotation : *list)
        if (!AnnotationRenderer::draws(annotation.tool))
            return badInput(fmt::format("{}: this version does not draw {} annotations yet",
                                        inputName(path), rawValue(annotation.tool)));
    return *std::move(list);
}

Outcome run(const AnnotateOptions& options) {
    if (options.input.path == "-" && options.annotations == "-")
        return badInput("the picture and the annotations cannot both be standard input");
    const auto annotations = readAnnotations(options.annotations);
    if (!annotations) return std::unexpected(annotations.error());
    const auto image = options.input.read();
    if (!image) return std::unexpected(image.error());
    const auto annotated = AnnotationRenderer().render(*image, *annotations);
    if (!annotated)
        return workFailed(inputName(options.input.path) +
                          ": there is not enough memory for the canvas");
    if (const auto written = options.output.write(*annotated); !written)
        return std::unexpected(written.error());
    return ExitStatus::done;
}

}  // namespace

void addAnnotate(Program& program) {
    program.add<AnnotateOptions>(
        "annotate", "Burn annotations into a picture",
        "Examples:\n"
        "  pictal annotate in.png --annotations marks.json -o out.png\n"
        "  pictal draft --tool arrow --start 40,40 --current 200,120 |\n"
        "      pictal annotate in.png --annotations - -o out.png\n"
        "  pictal annotate in.png --annotations marks.json -o - | pictal export - -o card.png\n"
        "\n"
        "Coordinates are pixels from the lower left corner, y upward.",
        [](CLI::App& command, AnnotateOptions& options) {
            options.input.addTo(command);
            command
                .add_option(
                    "--annotations", options.annotations,
                    "JSON file with a list of annotations or a single one; - is standard input")
                ->required()
                ->type_name("FILE");
            options.output.addTo(command);
        },
        run);
}

}  // namespace pictal::program
