#include "pictal/Program.h"

#include "pictal/Messages.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include <fmt/format.h>

namespace pictal::program {

namespace {

bool isNumeric(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789.,-+e") == text.npos;
}

/// The parser takes a value of a list that begins with "-." for an option, though not one that
/// begins with "-0".
void spellOutNegativeFractions(std::vector<std::string>& arguments) {
    for (std::size_t i = 1; i < arguments.size(); ++i)
        if (isNumeric(arguments[i - 1]) && isNumeric(arguments[i]) &&
            arguments[i].starts_with("-."))
            arguments[i].insert(1, 1, '0');
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
    if (keeper_ && !arguments.empty() && arguments.front() == keeper_->get_name()) {
        const auto dashes = std::ranges::find(arguments, "--");
        if (dashes != arguments.end()) kept_->assign(dashes + 1, arguments.end());
        arguments.erase(dashes, arguments.end());
    }
    spellOutNegativeFractions(arguments);
    std::ranges::reverse(arguments);  // as the parser wants them
    app.parse(std::move(arguments));
}

std::string Program::complaint(const CLI::ParseError& error) const {
    std::string what = error.what();
    const bool noCommand = wantsCommand(app);
    const auto rest = app.remaining(true);
    if (!rest.empty() && (noCommand || dynamic_cast<const CLI::ExtrasError*>(&error))) {
        const bool isCommand = noCommand && !rest.front().starts_with('-');
        what = isCommand ? fmt::format("there is no command {}", inQuotes(rest.front()))
                         : fmt::format("{} was not expected", inQuotes(rest.front()));
    }
    return fmt::format("{}. See {} --help.", what, commandPath(app));
}

bool Program::showsHelp(const CLI::ParseError& error) const {
    if (error.get_exit_code() != static_cast<int>(CLI::ExitCodes::Success)) return false;
    const auto rest = app.remaining(true);
    return rest.empty() || rest.front().starts_with('-') || !wantsCommand(app);
}

void Program::keepBehindDashes(const CLI::App& command, std::vector<std::string>& arguments) {
    keeper_ = &command;
    kept_ = &arguments;
}

}  // namespace pictal::program
