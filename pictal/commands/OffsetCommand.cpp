#include "PictalCore/Scrolling/ScrollingFrameAnalyzer.h"
#include "pictal/Images.h"
#include "pictal/InputOutput.h"
#include "pictal/commands/Commands.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace pictal::program {

namespace {

using JSON = nlohmann::ordered_json;
using Measurement = std::optional<ImageTranslation>;

struct OffsetOptions {
    ImageInput previous, current;
    bool json = false;
    bool explain = false;
};

std::string text(const Measurement& measurement) {
    if (!measurement) return "nothing";
    return fmt::format("x {}, y {}, confidence {:.3f}", measurement->x, measurement->y,
                       measurement->confidence);
}

JSON jsonOf(const Measurement& measurement) {
    if (!measurement) return nullptr;
    return {{"x", measurement->x}, {"y", measurement->y}, {"confidence", measurement->confidence}};
}

JSON jsonOf(const ScrollingFrameAnalysis& analysis) {
    if (const auto* shifted = analysis.as<ScrollingFrameAnalysis::Shifted>())
        return {{"outcome", "shifted"},
                {"verticalOffset", shifted->verticalOffset},
                {"score", shifted->score}};
    const bool unchanged = analysis.as<ScrollingFrameAnalysis::Unchanged>() != nullptr;
    return {{"outcome", unchanged ? "unchanged" : "noReliableMatch"}};
}

std::string text(const ScrollingFrameAnalysis& analysis) {
    if (const auto* shifted = analysis.as<ScrollingFrameAnalysis::Shifted>())
        return fmt::format("shifted {} (score {:.3f})\n", shifted->verticalOffset, shifted->score);
    return analysis.as<ScrollingFrameAnalysis::Unchanged>() ? "unchanged\n" : "no reliable match\n";
}

std::string report(const OffsetOptions& options, const ScrollingFrameAnalysis& analysis,
                   const ScrollingFrameMeasurement& measurement) {
    if (options.json) {
        JSON json = jsonOf(analysis);
        if (options.explain) {
            json["bands"] = JSON::array();
            for (const auto& [rows, translation] : measurement.bands)
                json["bands"].push_back({{"top", rows.top},
                                         {"height", rows.height},
                                         {"measurement", jsonOf(translation)}});
            json["wholeFrame"] = jsonOf(measurement.wholeFrame);
            json["accepted"] = jsonOf(measurement.accepted);
            json["stillRowsAtTop"] = measurement.stillRowsAtTop;
            json["stillRowsAtBottom"] = measurement.stillRowsAtBottom;
        }
        return json.dump(2) + "\n";
    }
    std::string lines = text(analysis);
    if (!options.explain) return lines;
    for (const auto& [rows, translation] : measurement.bands)
        lines +=
            fmt::format("rows {} to {}: {}\n", rows.top, rows.top + rows.height, text(translation));
    lines += fmt::format("whole frame: {}\naccepted: {}\n", text(measurement.wholeFrame),
                         text(measurement.accepted));
    lines += fmt::format("still rows: {} at the top, {} at the bottom\n",
                         measurement.stillRowsAtTop, measurement.stillRowsAtBottom);
    return lines;
}

Outcome run(const OffsetOptions& options) {
    if (options.previous.path == "-" && options.current.path == "-")
        return badInput("the frames cannot both be standard input");
    const auto previous = options.previous.read();
    if (!previous) return std::unexpected(previous.error());
    const auto current = options.current.read();
    if (!current) return std::unexpected(current.error());
    const auto measurement = ScrollingFrameAnalyzer().measure(*previous, *current);
    if (!measurement)
        return badInput(fmt::format(
            "{} is {} × {} pixels and {} {} × {}; frames have one size, and two rows at least",
            inputName(options.previous.path), previous->width(), previous->height(),
            inputName(options.current.path), current->width(), current->height()));

    const auto analysis = ScrollingConsensus::classified(measurement->accepted);
    if (const auto printed = printText(report(options, analysis, *measurement)); !printed)
        return std::unexpected(printed.error());
    return analysis.as<ScrollingFrameAnalysis::NoReliableMatch>() ? ExitStatus::no
                                                                  : ExitStatus::done;
}

}  // namespace

void addOffset(Program& program) {
    program.add<OffsetOptions>(
        "offset", "Measure how far content scrolled between two frames",
        "Examples:\n"
        "  pictal offset frame-1.png frame-2.png\n"
        "  pictal offset --json frame-1.png frame-2.png | jq .verticalOffset\n"
        "  pictal offset --explain frame-1.png frame-2.png\n"
        "\n"
        "The offset is the way of the content in pixels, positive downward: after scrolling down\n"
        "by 120 pixels it is -120. The exit status is 1 when there is no reliable match.",
        [](CLI::App& command, OffsetOptions& options) {
            command.add_option("PREVIOUS", options.previous.path, "The earlier frame, a PNG file")
                ->required()
                ->type_name("FILE");
            command.add_option("CURRENT", options.current.path, "The later frame")
                ->required()
                ->type_name("FILE");
            command.add_flag("--json", options.json, "One JSON document");
            command.add_flag("--explain", options.explain, "Show the measurements behind it");
        },
        run);
}

}  // namespace pictal::program
