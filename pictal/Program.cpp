#include "pictal/Program.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include <fmt/format.h>

namespace pictal::program {

namespace {

/// Whether it is made of numbers and begins with "-.": the parser takes such a value of a list for
/// an option, though not one that begins with a digit.
bool isNegativeFraction(std::string_view text) {
    return text.starts_with("-.") && text.find_first_not_of("0123456789.,-+e") == text.npos;
}

/// The names of the program and of the commands that were chosen.
std::string commandPath(const CLI::App& app) {
    std::string path = app.get_name();
    for (const CLI::App* command : app.get_subcommands())
        path += " " + commandPath(*command);
    return path;
}

bool wantsCommand(const CLI::App& app) {
    const auto commands = app.get_subcommands();
    return commands.empty() ? app.get_require_subcommand_min() > 0
                            : wantsCommand(*commands.front());
}

}  // namespace

Program::Program()
    : app("Annotate screenshots, dress them and export them.\n"
          "Images are PNG files; - means standard input or output.",
          "pictal") {
    app.set_version_flag("--version", "pictal " PICTAL_VERSION);
    app.require_subcommand(1);
    app.footer("pictal COMMAND --help shows a command's options and examples.");
}

void Program::parse(int argc, char** argv) {
    std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    for (std::size_t i = 1; i < arguments.size(); ++i)
        if (!arguments[i - 1].starts_with("--") && isNegativeFraction(arguments[i]))
            arguments[i].insert(1, 1, '0');
    std::ranges::reverse(arguments);  // as the parser wants them
    app.parse(std::move(arguments));
}

std::string Program::complaint(const CLI::ParseError& error) const {
    std::string what = error.what();
    const bool noCommand = wantsCommand(app);
    const auto rest = app.remaining(true);
    if (!rest.empty() && (noCommand || dynamic_cast<const CLI::ExtrasError*>(&error))) {
        const bool isCommand = noCommand && !rest.front().starts_with('-');
        what = isCommand ? fmt::format("there is no command \"{}\"", rest.front())
                         : fmt::format("\"{}\" was not expected", rest.front());
    }
    return fmt::format("{}. See {} --help.", what, commandPath(app));
}

}  // namespace pictal::program
