#include "PictalCore/Annotation/AnnotationDraftBuilder.h"
#include "pictal/Arguments.h"
#include "pictal/JSONOutput.h"
#include "pictal/MarkStyle.h"
#include "pictal/commands/Commands.h"

#include <fmt/format.h>

namespace pictal::program {

namespace {

struct DraftOptions {
    AnnotationTool tool = AnnotationTool::rectangle;
    std::string start, current;
    std::vector<std::string> points;
    std::string text;
    std::string number = "1";
    std::string style;
    const CLI::App* command = nullptr;
    bool json = true;
};

/// The file's style or the tool's usual one, changed by the options.
std::expected<AnnotationStyle, Failure> styleOf(const DraftOptions& options) {
    MarkStyle changes;
    const auto read = forEachOption(
        *options.command,
        [&](const std::string& name, const std::string& value) -> std::expected<void, Failure> {
            if (!MarkStyle::takes(name)) return {};
            return changes.set(name, value);
        });
    if (!read) return std::unexpected(read.error());
    if (options.style.empty()) return changes.of(options.tool);
    const auto stored = readJSON<AnnotationStyle>(options.style);
    if (!stored) return std::unexpected(stored.error());
    return changes.changed(*stored);
}

Outcome run(const DraftOptions& options) {
    const auto start = parsePoint(options.start);
    if (!start) return badInput("--start: " + start.error().message);
    // A gesture that has not moved is where it started.
    const auto current = options.current.empty() ? start : parsePoint(options.current);
    if (!current) return badInput("--current: " + current.error().message);
    std::string list;
    for (const std::string& part : options.points)
        list += part + " ";
    const auto points = parsePoints(list);
    if (!points) return badInput("--points: " + points.error().message);
    const auto number = parseWholeNumber(options.number);
    if (!number) return badInput("--number: " + number.error().message);
    const auto style = styleOf(options);
    if (!style) return std::unexpected(style.error());

    const auto annotation = AnnotationDraftBuilder::annotation(
        options.tool, *start, *current, *points, options.text, *number, *style);
    if (!annotation)
        return std::unexpected(Failure{
            ExitStatus::no,
            fmt::format("there is nothing to draw: {} needs {}", rawValue(options.tool),
                        options.tool == AnnotationTool::text ? "--text that is not only white space"
                                                             : "--points")});
    return printJSONOf(*annotation);
}

}  // namespace

void addDraft(Program& program) {
    program.add<DraftOptions>(
        "draft", "Print the annotation that a pointer gesture makes, as JSON",
        "Examples:\n"
        "  pictal draft --tool arrow --start 40,40 --current 200,120\n"
        "  pictal draft --tool brush --start 0,0 --points 10,10 14,22 30,25\n"
        "  pictal draft --tool number --start 80,80 --number 3 --stroke navy\n"
        "\n"
        "Coordinates are pixels from the lower left corner, y upward.",
        [](CLI::App& command, DraftOptions& options) {
            command.add_option("--tool", options.tool, "The tool that the gesture is made with")
                ->required()
                ->transform(choice<AnnotationTool>());
            command.add_option("--start", options.start, "Where the gesture began")
                ->required()
                ->type_name("X,Y");
            command
                .add_option("--current", options.current, "Where it is now; the start if absent")
                ->type_name("X,Y");
            command
                .add_option("--points", options.points,
                            "The way of the pointer so far, of a freehand tool")
                ->type_name("X,Y");
            command.add_option("--text", options.text, "What a text annotation says");
            command.add_option("--number", options.number, "What a number badge says")
                ->type_name("N")
                ->capture_default_str();
            command
                .add_option("--style", options.style,
                            "JSON file with the style, instead of the tool's usual one; - is "
                            "standard input")
                ->type_name("FILE");
            options.command = &command;
            MarkStyle::addTo(command);
            command.add_flag("--json", options.json, "Accepted; the output is always JSON");
        },
        run);
}

}  // namespace pictal::program
