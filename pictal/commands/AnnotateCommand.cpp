#include "PictalCore/Annotation/AnnotationRenderer.h"
#include "PictalCore/Platform/Text/Fonts.h"
#include "pictal/Arguments.h"
#include "pictal/Images.h"
#include "pictal/JSONOutput.h"
#include "pictal/QuickMarks.h"
#include "pictal/commands/Commands.h"

#include <fmt/format.h>

namespace pictal::program {

namespace {

struct AnnotateOptions {
    ImageInput input;
    ImageOutput output;
    QuickMarks quick;
    std::string annotations;
    bool list = false;
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
    return *std::move(list);
}

/// The file's marks, then those of the command line.
std::expected<std::vector<ScreenshotAnnotation>, Failure> marksOf(const AnnotateOptions& options,
                                                                  const CGImage& image) {
    std::vector<ScreenshotAnnotation> marks;
    if (!options.annotations.empty()) {
        auto stored = readAnnotations(options.annotations);
        if (!stored) return stored;
        marks = *std::move(stored);
    }
    auto quick = options.quick.marks(image.height());
    if (!quick) return quick;
    if (options.annotations.empty() && quick->empty())
        return badInput("there is nothing to draw; give --annotations FILE or a mark");
    marks.insert(marks.end(), quick->begin(), quick->end());
    return marks;
}

/// A picture that lacks a mark is worse than none: it may have had to hide something.
std::expected<void, Failure> checkThatAllAreDrawn(const std::vector<ScreenshotAnnotation>& marks) {
    for (const ScreenshotAnnotation& mark : marks) {
        if (!AnnotationRenderer::draws(mark.tool))
            return badInput(
                fmt::format("this version does not draw {} annotations yet", rawValue(mark.tool)));
        const bool writes =
            mark.tool == AnnotationTool::text || mark.tool == AnnotationTool::number;
        if (writes && !Fonts::areInstalled())
            return workFailed("there is no font to write with; install the package fonts-inter");
    }
    return {};
}

Outcome draw(const AnnotateOptions& options, const CGImage& image,
             const std::vector<ScreenshotAnnotation>& marks) {
    if (const auto drawn = checkThatAllAreDrawn(marks); !drawn)
        return std::unexpected(drawn.error());
    const auto annotated = AnnotationRenderer().render(image, marks);
    if (!annotated)
        return workFailed(inputName(options.input.path) +
                          ": there is not enough memory for the canvas");
    return doneIf(options.output.write(*annotated));
}

Outcome run(const AnnotateOptions& options) {
    if (options.input.path == "-" && options.annotations == "-")
        return badInput("the picture and the annotations cannot both be standard input");
    const bool draws = !options.output.path.empty();
    if (!draws && !options.list) return badInput("-o is missing: say where the picture goes");
    if (options.list && options.output.path == "-")
        return badInput("the list and the picture cannot both be standard output");

    const auto image = options.input.read();
    if (!image) return std::unexpected(image.error());
    const auto marks = marksOf(options, *image);
    if (!marks) return std::unexpected(marks.error());
    if (draws)
        if (const Outcome drawn = draw(options, *image, *marks); !drawn) return drawn;
    return options.list ? printJSONOf(*marks) : Outcome(ExitStatus::done);
}

}  // namespace

void addAnnotate(Program& program) {
    program.add<AnnotateOptions>(
        "annotate", "Burn annotations into a picture",
        "Examples:\n"
        "  pictal annotate in.png --arrow 40,40,200,120 -o out.png\n"
        "  pictal annotate in.png --size 32 --text 'Look here' --at 210,110 -o out.png\n"
        "  pictal annotate in.png --number 1 --at 30,30 --number 2 --at 30,90 -o out.png\n"
        "  pictal annotate in.png --annotations marks.json -o - | pictal export - -o card.png\n"
        "  pictal annotate in.png --stroke navy --ellipse 40,40,90,60 --list >marks.json\n"
        "\n"
        "Marks are drawn in the order of the command line, those of the file first. Their looks\n"
        "are options too and hold for the marks behind them; without any, lines are red and four\n"
        "pixels wide. Coordinates are pixels from the upper left corner, y downward; in files\n"
        "they are counted from the lower left one, y upward.",
        [](CLI::App& command, AnnotateOptions& options) {
            options.input.addTo(command);
            command
                .add_option(
                    "--annotations", options.annotations,
                    "JSON file with a list of annotations or a single one; - is standard input")
                ->type_name("FILE");
            options.quick.addTo(command);
            command.add_flag("--list", options.list,
                             "Print all marks as JSON; draw only where -o is given too");
            options.output.addTo(command)->required(false);
        },
        run);
}

}  // namespace pictal::program
