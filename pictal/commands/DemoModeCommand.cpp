#include "PictalCore/Support/DemoModeConfiguration.h"
#include "pictal/JSONOutput.h"
#include "pictal/commands/Commands.h"

#include <algorithm>
#include <iterator>

#include <unistd.h>

namespace pictal::program {

namespace {

struct Options {
    const CLI::App* command = nullptr;
    std::vector<std::string> behindDashes;
};

void setUp(CLI::App& command, Options& options) {
    options.command = &command;
    command.allow_extras();  // launch arguments are not the program's to understand
    command.add_flag("--json")->description("Accepted; the output is always JSON");
}

DemoModeConfiguration::Environment environment() {
    DemoModeConfiguration::Environment result;
    for (char** entry = environ; *entry; ++entry) {
        const std::string_view text = *entry;
        const std::size_t equals = text.find('=');
        // Of a name that is there twice, the first counts, as for getenv.
        if (equals != std::string_view::npos)
            result.emplace(text.substr(0, equals), text.substr(equals + 1));
    }
    return result;
}

Outcome run(const Options& options) {
    std::vector<std::string> arguments = options.command->remaining();
    std::ranges::copy(options.behindDashes, std::back_inserter(arguments));
    const auto configuration = DemoModeConfiguration::load(environment(), arguments, true);
    JSONText::Members members{{"isEnabled", configuration.isEnabled},
                              {"scenario", rawValue(configuration.scenario)}};
    if (configuration.languageIdentifier)
        members.emplace_back("languageIdentifier", *configuration.languageIdentifier);
    if (configuration.backgroundImagePath)
        members.emplace_back("backgroundImagePath", *configuration.backgroundImagePath);
    return doneIf(printJSON(JSONText::object(members)));
}

}  // namespace

void addDemoMode(Program& program) {
    program.add<Options>(
        "demo-mode", "Print the demo mode that the environment and launch arguments give",
        "Everything else on the command line is a launch argument; behind --, everything is.\n\n"
        "Examples:\n"
        "  pictal demo-mode --demo-mode --demo-scenario=color-picker --demo-language ja\n"
        "  VISTRELL_DEMO_MODE=1 VISTRELL_DEMO_SCENARIO=pin pictal demo-mode\n"
        "  pictal demo-mode -- \"$@\"\n",
        [&program](CLI::App& command, Options& options) {
            setUp(command, options);
            program.keepBehindDashes(command, options.behindDashes);
        },
        run);
}

}  // namespace pictal::program
