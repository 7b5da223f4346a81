#pragma once

#include <expected>
#include <string>
#include <utility>

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

/// What a command answers that ends with this step.
[[nodiscard]] inline Outcome doneIf(std::expected<void, Failure> step) {
    if (!step) return std::unexpected(std::move(step.error()));
    return ExitStatus::done;
}

}  // namespace pictal::program
