#pragma once

#include <expected>
#include <functional>
#include <string>

#include <CLI/CLI.hpp>

namespace pictal::program {

/// What the shell is told.
enum class ExitStatus {
    done = 0,
    /// The answer is no: a conflict, no match.
    no = 1,
    /// Wrong use, or input that cannot be used.
    usage = 2,
    /// The work failed: disk, memory.
    failed = 3,
};

/// Why a command stopped, in one line: what, where, and what to do.
struct Failure {
    ExitStatus status;
    std::string message;
};

using Outcome = std::expected<ExitStatus, Failure>;

[[nodiscard]] inline std::unexpected<Failure> badInput(std::string message) {
    return std::unexpected(Failure{ExitStatus::usage, std::move(message)});
}
[[nodiscard]] inline std::unexpected<Failure> workFailed(std::string message) {
    return std::unexpected(Failure{ExitStatus::failed, std::move(message)});
}

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
};

}  // namespace pictal::program
