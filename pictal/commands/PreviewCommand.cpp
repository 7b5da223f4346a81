#include "PictalCore/Support/TemporaryPreviewFileStore.h"
#include "pictal/InputOutput.h"
#include "pictal/commands/Commands.h"

#include <chrono>
#include <cmath>
#include <filesystem>
#include <limits>

namespace pictal::program {

namespace {

struct Options {
    std::string file;
    std::string root;
    double expire = std::numeric_limits<double>::infinity();

    [[nodiscard]] TemporaryPreviewFileStore store() const {
        return {root, std::chrono::duration<double>(expire)};
    }
};

CLI::Option* addFolder(CLI::App& command, Options& options) {
    command.add_option("--root", options.root, "The folder that holds the hidden preview folder")
        ->required();
    return command.add_option("--expire", options.expire, "Delete previews older than this")
        ->type_name("SECONDS")
        ->check([](const std::string& text) -> std::string {
            double seconds = 0;
            if (CLI::detail::lexical_cast(text, seconds) && std::isfinite(seconds) && seconds >= 0)
                return {};
            return text + " is no number of seconds";
        });
}

void setUpWrite(CLI::App& command, Options& options) {
    command.add_option("FILE", options.file, "The picture; - is standard input")->required();
    addFolder(command, options);
}

void setUpPrune(CLI::App& command, Options& options) {
    addFolder(command, options)->required();
}

Outcome write(const Options& options) {
    const auto bytes = readInput(options.file);
    if (!bytes) return std::unexpected(bytes.error());
    const std::string stem =
        options.file == "-" ? "" : std::filesystem::path(options.file).stem().string();
    const auto written = options.store().write(*bytes, stem, std::chrono::system_clock::now());
    if (!written) return workFailed(written.error().description());
    if (const auto printed = printText(written->string() + "\n"); !printed)
        return std::unexpected(printed.error());
    return ExitStatus::done;
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
