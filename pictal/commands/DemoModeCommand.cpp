#include "PictalCore/Support/DemoModeConfiguration.h"
#include "pictal/InputOutput.h"
#include "pictal/commands/Commands.h"

#include <nlohmann/json.hpp>
#include <unistd.h>

namespace pictal::program {

namespace {

struct Options {
    const CLI::App* command = nullptr;
};

void setUp(CLI::App& command, Options& options) {
    options.command = &command;
    command.allow_extras();  // launch arguments are not the program's to understand
    command.add_flag("--json")->description("The output is JSON in any case");
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
    const auto configuration =
        DemoModeConfiguration::load(environment(), options.command->remaining(), true);
    nlohmann::ordered_json json{{"isEnabled", configuration.isEnabled},
                                {"scenario", rawValue(configuration.scenario)}};
    if (configuration.languageIdentifier)
        json["languageIdentifier"] = *configuration.languageIdentifier;
    if (configuration.backgroundImagePath)
        json["backgroundImagePath"] = *configuration.backgroundImagePath;
    const std::string text =
        json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
    if (const auto printed = printText(text + "\n"); !printed)
        return std::unexpected(printed.error());
    return ExitStatus::done;
}

}  // namespace

void addDemoMode(Program& program) {
    program.add<Options>(
        "demo-mode", "Print the demo mode that the environment and launch arguments give",
        "Examples:\n"
        "  pictal demo-mode --demo-mode --demo-scenario=color-picker --demo-language ja\n"
        "  VISTRELL_DEMO_MODE=1 VISTRELL_DEMO_SCENARIO=pin pictal demo-mode\n",
        setUp, run);
}

}  // namespace pictal::program
