#include "pictal/Descriptors.h"
#include "pictal/Interrupts.h"
#include "pictal/commands/Commands.h"

#include <cstdio>
#include <exception>
#include <new>

#include <fmt/format.h>

namespace {

using namespace pictal::program;

int run(int argc, char** argv) {
    Program program;
    for (const auto add : {addAnnotate, addExport, addDraft, addOffset, addStitch, addInfo,
                           addShortcuts, addName, addPreview, addRedact, addDemoMode})
        add(program);

    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        // Help and version are no errors; everything else is wrong use, whatever the parser's code.
        const bool asked = error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success);
        if (asked) return program.app.exit(error);
        fmt::print(stderr, "pictal: {}\n", program.complaint(error));
        return static_cast<int>(ExitStatus::usage);
    }

    const Outcome outcome = program.chosen();
    if (outcome) return static_cast<int>(*outcome);
    fmt::print(stderr, "pictal: {}\n", outcome.error().message);
    return static_cast<int>(outcome.error().status);
}

}  // namespace

int main(int argc, char** argv) {
    reserveStandardDescriptors();
    removeTemporaryFileOnInterrupt();
    try {
        return run(argc, argv);
    } catch (const std::bad_alloc&) {
        std::fputs("pictal: out of memory\n", stderr);
    } catch (const std::exception& error) {
        fmt::print(stderr, "pictal: {}\n", error.what());
    }
    return static_cast<int>(ExitStatus::failed);
}
