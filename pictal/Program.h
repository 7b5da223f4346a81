#pragma once

#include "pictal/Outcome.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace pictal::program {

/// The command line while it is being described, and the command that it chose. Each command lives
/// in a file of its own, which holds its options, its description and its work.
class Program {
  public:
    CLI::App app;
    std::function<Outcome()> chosen;

    Program();

    /// Understands the command line, or throws what the parser found wrong.
    void parse(int argc, char** argv);
    /// What is wrong with the command line and where to read more, in one line.
    [[nodiscard]] std::string complaint(const CLI::ParseError& error) const;
    /// Whether the help or version that was asked for is to be shown: not for a command that there
    /// is not.
    [[nodiscard]] bool showsHelp(const CLI::ParseError& error) const;

    /// What stands behind "--" of this command goes to `arguments` and is not looked at.
    void keepBehindDashes(const CLI::App& command, std::vector<std::string>& arguments);

    /// Adds a command. `Options` is a plain struct that the options are bound to; `run` does the
    /// work once the whole command line has been understood.
    template <class Options>
    CLI::App& add(const std::string& name, const std::string& description,
                  const std::string& examples,
                  const std::function<void(CLI::App&, Options&)>& setUp,
                  Outcome (*run)(const Options&), CLI::App* parent = nullptr) {
        CLI::App* command = (parent ? *parent : app).add_subcommand(name, description);
        command->footer(examples);
        const auto options = std::make_shared<Options>();
        setUp(*command, *options);
        command->callback(
            [this, options, run] { chosen = [options, run] { return run(*options); }; });
        return *command;
    }

  private:
    const CLI::App* keeper_ = nullptr;
    std::vector<std::string>* kept_ = nullptr;
};

}  // namespace pictal::program
