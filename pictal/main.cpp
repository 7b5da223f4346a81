#include "pictal/Descriptors.h"
#include "pictal/InputOutput.h"
#include "pictal/Interrupts.h"
#include "pictal/Messages.h"
#include "pictal/commands/Commands.h"

#include <exception>
#include <new>
#include <sstream>

namespace {

using namespace pictal::program;

Outcome run(int argc, char** argv) {
    Program program;
    for (const auto add : allCommands)
        add(program);

    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        // Help and version are no errors; everything else is wrong use, whatever the parser's code.
        if (!program.showsHelp(error)) return badInput(program.complaint(error));
        std::ostringstream text;
        program.app.exit(error, text, text);
        return doneIf(printText(text.str()));
    }
    return program.chosen();
}

Outcome runOrFail(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::bad_alloc&) {
        return workFailed("there is not enough memory");
    } catch (const std::exception& error) {
        return workFailed(error.what());
    }
}

}  // namespace

int main(int argc, char** argv) {
    reserveStandardDescriptors();
    removeTemporaryFileOnInterrupt();
    const Outcome outcome = runOrFail(argc, argv);
    if (outcome) return static_cast<int>(*outcome);
    complain(outcome.error().message);
    return static_cast<int>(outcome.error().status);
}
