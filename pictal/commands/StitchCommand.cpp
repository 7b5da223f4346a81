#include "PictalCore/Platform/ImageIO/PNGRowWriter.h"
#include "PictalCore/Scrolling/ScrollingPainter.h"
#include "pictal/Arguments.h"
#include "pictal/FrameSequence.h"
#include "pictal/InputOutput.h"
#include "pictal/Messages.h"
#include "pictal/OutputFile.h"
#include "pictal/Progress.h"
#include "pictal/commands/Commands.h"

#include <algorithm>
#include <sstream>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace pictal::program {

namespace {

struct StitchOptions {
    std::vector<std::string> frames;
    std::string output;
    std::string positions;
    std::int64_t maximumHeight = 1'000'000;
    bool strict = false;
    bool json = false;
    bool quiet = false;
};

/// A frame's rows and where they go in the result.
struct Strip {
    const FramePlace* frame;
    std::int64_t top;
    std::int64_t bottom;
    std::int64_t place;
};

struct LongPicture {
    std::vector<Strip> strips;  // from the top
    std::int64_t width = 0;
    std::int64_t height = 0;
    std::int64_t origin = 0;  ///< the position that row 0 has
    bool isOpaque = true;
};

std::expected<std::vector<std::int64_t>, Failure> positionsFrom(const StitchOptions& options) {
    std::string list = options.positions;
    std::ranges::replace(list, ',', ' ');
    std::istringstream words(list);
    std::vector<std::int64_t> positions;
    for (std::string word; words >> word;) {
        const auto position = parseWholeNumber(word);
        if (!position) return badInput("--positions: " + position.error().message);
        positions.push_back(*position);
    }
    if (positions.size() != options.frames.size())
        return badInput(fmt::format("--positions has {} places for {} frames", positions.size(),
                                    options.frames.size()));
    return positions;
}

std::expected<FrameSequence, Failure> sequenceOf(const StitchOptions& options) {
    const auto shown = options.quiet ? Progress::Shown::never : Progress::Shown::onTerminal;
    if (options.positions.empty()) {
        Progress progress("Matching", options.frames.size(), shown);
        return FrameSequence::matched(options.frames, [&] { progress.step(); });
    }
    const auto positions = positionsFrom(options);
    if (!positions) return std::unexpected(positions.error());
    Progress progress("Reading", options.frames.size(), shown);
    return FrameSequence::placed(options.frames, *positions, [&] { progress.step(); });
}

/// Header and footer are painted once: with the highest and with the lowest frame.
std::expected<LongPicture, Failure> layOut(const FrameSequence& sequence, std::int64_t maximum) {
    std::vector<std::pair<std::int64_t, const FramePlace*>> placed;
    for (const FramePlace& frame : sequence.frames)
        if (frame.position) placed.emplace_back(*frame.position, &frame);
    std::ranges::sort(placed);  // the frames lie in one array: of equal positions, in their order

    LongPicture picture;
    const std::int64_t origin = placed.front().first;
    picture.origin = origin;
    const auto tooTall =
        badInput(fmt::format("the result would be taller than {} rows; raise --max-height or give "
                             "fewer frames",
                             maximum));
    for (const auto& [position, frame] : placed) {
        const std::int64_t top = frame == placed.front().second ? 0 : sequence.header;
        const std::int64_t bottom =
            frame->height - (frame == placed.back().second ? 0 : sequence.footer);
        std::int64_t place = 0, end = 0;
        if (__builtin_sub_overflow(position, origin, &place) ||
            __builtin_add_overflow(place, bottom, &end) || end > maximum)
            return tooTall;
        const bool gap = place + top > picture.height;
        const bool narrow = picture.width != 0 && frame->width != picture.width;
        picture.isOpaque = picture.isOpaque && frame->isOpaque && !gap && !narrow;
        picture.width = std::max(picture.width, frame->width);
        picture.height = std::max(picture.height, end);
        picture.strips.push_back({frame, top, bottom, place + top});
    }
    return picture;
}

std::expected<void, Failure> paint(const LongPicture& picture, const StitchOptions& options) {
    auto output = OutputFile::open(options.output);
    if (!output) return std::unexpected(output.error());
    std::expected<void, Failure> written;
    auto writer = PNG::RowWriter::make(
        {picture.width, picture.height, picture.isOpaque, CGColorSpace::sRGB()},
        [&](std::span<const std::byte> bytes) {
            written = output->write(bytes);
            return written.has_value();
        });
    const auto failed = [&](const std::string& reason) -> std::unexpected<Failure> {
        if (!written) return std::unexpected(written.error());
        return workFailed(fmt::format("{}: {}", options.output, reason));
    };
    if (!writer) return failed("the picture is too large for a PNG file");

    ScrollingPainter painter(picture.width, [&](std::span<const std::uint32_t> row) {
        return writer->write(row).has_value();
    });
    Progress progress("Painting", picture.strips.size(),
                      options.quiet ? Progress::Shown::never : Progress::Shown::onTerminal);
    for (const auto& [frame, top, bottom, place] : picture.strips) {
        const auto file = FrameFile::read(frame->path);
        if (!file) return workFailed(file.error().message);
        if (file->fingerprint != frame->fingerprint)
            return workFailed(fmt::format("{} has changed while it was stitched", frame->path));
        const auto strip =
            file->image.cropping({0, static_cast<CGFloat>(top), static_cast<CGFloat>(frame->width),
                                  static_cast<CGFloat>(bottom - top)});
        if (strip && !painter.add({*strip, place})) return failed("a frame could not be painted");
        progress.step();
    }
    if (!painter.finish() || !writer->finish()) return failed("the picture could not be written");
    return output->commit();
}

nlohmann::ordered_json jsonOf(const FrameSequence& sequence, const LongPicture& picture) {
    auto frames = nlohmann::ordered_json::array();
    for (const FramePlace& frame : sequence.frames) {
        nlohmann::ordered_json entry{{"file", frame.path}, {"position", nullptr}};
        if (frame.position)
            entry["position"] = *frame.position - picture.origin;
        else
            entry["reason"] = frame.reason;
        frames.push_back(std::move(entry));
    }
    return {{"width", picture.width}, {"height", picture.height}, {"frames", std::move(frames)}};
}

Outcome run(const StitchOptions& options) {
    if (std::ranges::find(options.frames, "-") != options.frames.end())
        return badInput("frames are read twice, so that standard input cannot be one");
    if (options.json && options.output == "-")
        return badInput("the picture and the JSON document cannot both go to standard output");
    const auto sequence = sequenceOf(options);
    if (!sequence) return std::unexpected(sequence.error());
    bool leftOut = false;
    for (const FramePlace& frame : sequence->frames) {
        if (frame.position) continue;
        leftOut = leftOut || !frame.isRepetition;
        if (!options.quiet)
            complain(fmt::format("{}: left out: {}", escaped(frame.path), frame.reason));
    }
    const auto picture = layOut(*sequence, options.maximumHeight);
    if (!picture) return std::unexpected(picture.error());
    const bool refused = options.strict && leftOut;
    if (!refused)
        if (const auto painted = paint(*picture, options); !painted)
            return std::unexpected(painted.error());
    if (options.json) {
        const std::string text =
            jsonOf(*sequence, *picture)
                .dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
        if (const auto printed = printText(text + "\n"); !printed)
            return std::unexpected(printed.error());
    }
    return refused ? ExitStatus::no : ExitStatus::done;
}

}  // namespace

void addStitch(Program& program) {
    program.add<StitchOptions>(
        "stitch", "Stitch frames of content that scrolls into one long picture",
        "Examples:\n"
        "  pictal stitch frame-*.png -o long.png\n"
        "  pictal stitch a.png b.png -o long.png --positions 0,700\n"
        "  pictal stitch frame-*.png -o long.png --json --strict\n"
        "\n"
        "Each frame is matched with the one before it. What does not match is left out and named;\n"
        "with --strict that is an exit status of 1, and nothing is written. A header and a footer\n"
        "that stay while the content scrolls appear once.",
        [](CLI::App& command, StitchOptions& options) {
            command.add_option("FRAMES", options.frames, "PNG files, in the order of capture")
                ->required()
                ->type_name("FILE...");
            command
                .add_option("-o,--output", options.output,
                            "Where the PNG goes; - is standard output")
                ->required()
                ->type_name("FILE");
            command
                .add_option("--positions", options.positions,
                            "The row of each frame's top, instead of matching: 0,700,1400")
                ->type_name("LIST");
            command
                .add_option("--max-height", options.maximumHeight,
                            "Refuse results with more rows than this")
                ->check(CLI::PositiveNumber)
                ->capture_default_str();
            command.add_flag("--strict", options.strict, "Write nothing if a frame is left out");
            command.add_flag("--json", options.json,
                             "One JSON document: size, and where each frame went");
            command.add_flag("--quiet", options.quiet, "Show no progress and no frames left out");
        },
        run);
}

}  // namespace pictal::program
