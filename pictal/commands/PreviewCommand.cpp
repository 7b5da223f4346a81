#include "PictalCore/Support/TemporaryPreviewFileStore.h"
#include "pictal/Arguments.h"
#include "pictal/OutputFile.h"
#include "pictal/commands/Commands.h"

#include <chrono>
#include <filesystem>
#include <limits>

namespace pictal::program {

namespace {

struct Options {
    std::string file;
    std::string root;
    std::int64_t maximumBytes = InputFile::usualLimit;
    double expire = std::numeric_limits<double>::infinity();

    [[nodiscard]] TemporaryPreviewFileStore store() const {
        return {root, std::chrono::duration<double>(expire)};
    }
};

CLI::Option* addFolder(CLI::App& command, Options& options) {
    command.add_option("--root", options.root, "The folder that holds the hidden preview folder")
        ->required()
        ->transform(nameOf("folder"))
        ->type_name("FOLDER");
    return command
        .add_option("--expire", options.expire, "Delete previews that are older than this")
        ->type_name("SECONDS")
        ->check([](const std::string& text) -> std::string {
            const auto seconds = parseNumber(text);
            if (seconds && *seconds >= 0) return {};
            return inQuotes(text) + " is no number of seconds";
        });
}

void setUpWrite(CLI::App& command, Options& options) {
    command.add_option("FILE", options.file, "The picture; - is standard input")
        ->required()
        ->transform(nameOf("file"));
    addFolder(command, options);
    addMaximumBytes(command, options.maximumBytes);
}

void setUpPrune(CLI::App& command, Options& options) {
    addFolder(command, options)->required();
}

Outcome write(const Options& options) {
    auto input = openInput(options.file, options.maximumBytes);
    if (!input) return std::unexpected(input.error());
    const auto bytes = (*std::move(input)).all();
    if (!bytes) return std::unexpected(bytes.error());
    const std::string stem =
        options.file == "-" ? "" : std::filesystem::path(options.file).stem().string();
    std::filesystem::path place;
    auto output = OutputFile::make([&] {
        auto file = options.store().makeFile(stem, std::chrono::system_clock::now());
        if (file) place = file->target();
        return file;
    });
    if (!output) return workFailed(output.error().description());
    auto written = output->write(*bytes);
    if (written) written = output->commit();
    if (!written) return std::unexpected(written.error());
    return doneIf(printText(place.string() + "\n"));
}

Outcome prune(const Options& options) {
    const auto pruned = options.store().pruneExpired(std::chrono::system_clock::now());
    if (!pruned) return workFailed(pruned.error().description());
    return ExitStatus::done;
}

}  // namespace

void addPreview(Program& program) {
    CLI::App* preview =
        program.app.add_subcommand("preview", "Keep short-lived previews in a hidden folder");
    preview->require_subcommand(1);
    preview->footer(
        "Examples:\n"
        "  pictal preview write shot.png --root ~/Pictures --expire 600\n"
        "  pictal preview prune --root ~/Pictures --expire 600");
    program.add<Options>("write", "Copy a picture to a new preview and print where it is",
                         "What is older than --expire is deleted first; without it, nothing is.\n\n"
                         "Example:\n"
                         "  pictal preview write shot.png --root ~/Pictures --expire 600\n",
                         setUpWrite, write, preview);
    program.add<Options>("prune", "Delete the previews that have expired",
                         "Example:\n"
                         "  pictal preview prune --root ~/Pictures --expire 600\n",
                         setUpPrune, prune, preview);
}

}  // namespace pictal::program
