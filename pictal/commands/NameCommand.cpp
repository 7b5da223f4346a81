#include "PictalCore/Support/SafeFileNamer.h"
#include "pictal/Arguments.h"
#include "pictal/commands/Commands.h"

#include <cstdint>

namespace pictal::program {

namespace {

struct Options {
    std::string text;
    std::string fallback;
    std::int64_t maximum = 80;
};

void setUp(CLI::App& command, Options& options) {
    command.add_option("TEXT", options.text, "Any text; put -- before one that begins with -")
        ->required();
    command.add_option("--max", options.maximum, "The most characters that are kept")
        ->transform(wholeNumber(0))
        ->type_name("COUNT")
        ->capture_default_str();
    command.add_option("--fallback", options.fallback,
                       "What is printed, as it is, when nothing is left of TEXT [file]");
}

Outcome run(const Options& options) {
    const std::string stem = SafeFileNamer::stem(options.text, options.fallback, options.maximum);
    return doneIf(printText(stem + "\n"));
}

}  // namespace

void addName(Program& program) {
    program.add<Options>(
        "name", "Turn any text into a safe file name, without an extension",
        "Letters, marks and digits of every script, hyphens and underscores are kept.\n\n"
        "Examples:\n"
        "  pictal name 'My Screenshot 2024/05/01'      # My-Screenshot-2024-05-01\n"
        "  mv shot.png \"$(pictal name --fallback Screenshot -- \"$TITLE\").png\"\n",
        setUp, run);
}

}  // namespace pictal::program
