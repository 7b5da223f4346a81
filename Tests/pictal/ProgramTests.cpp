#include "Tests/Support/Process.h"
#include "Tests/Support/TemporaryFolder.h"
#include "pictal/Program.h"
#include "pictal/commands/Commands.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

namespace pictal::program {

namespace {

Process::Result shell(const std::string& script, const std::filesystem::path& folder = {}) {
    return Process{.program = "/bin/bash",
                   .arguments = {"-c", script},
                   .environment = {{"PICTAL", PICTAL_PROGRAM}},
                   .folder = folder}
        .run();
}

}  // namespace

TEST(Program, EveryCommandHasHelpWithAnExample) {
    Program program;
    for (const auto add : allCommands)
        add(program);
    const std::string overview = program.app.help();
    for (const CLI::App* command : program.app.get_subcommands({})) {
        EXPECT_NE(overview.find(command->get_description()), std::string::npos);
        const auto help = Process{.arguments = {command->get_name(), "--help"}}.run();
        EXPECT_EQ(help.status, 0) << command->get_name();
        const std::size_t examples = help.output.find("\nExample");
        EXPECT_NE(help.output.find("pictal " + command->get_name(), examples), std::string::npos)
            << help.output;
    }
}

TEST(Program, HelpIsForCommandsThatThereAre) {
    const std::pair<const char*, const char*> cases[] = {
        {"nosuch --help", "there is no command \"nosuch\". See pictal --help.\n"},
        {"--help nosuch", "there is no command \"nosuch\". See pictal --help.\n"},
        {"preview nosuch --help", "there is no command \"nosuch\". See pictal preview --help.\n"}};
    for (const auto& [line, error] : cases) {
        const auto result = Process{.arguments = words(line)}.run();
        EXPECT_EQ(result.status, 2) << line;
        EXPECT_EQ(result.error, std::string("pictal: ") + error);
        EXPECT_EQ(result.output, "");
    }
}

TEST(Program, WhatCannotBePrintedIsAFailure) {
    const std::pair<const char*, const char*> cases[] = {
        {"--help > /dev/full", "No space left on device"},
        {"--version >&-", "Bad file descriptor"},
        {"name a > /dev/full", "No space left on device"},
        {"redact </dev/null >&-", ""}};  // nothing to print
    for (const auto& [line, error] : cases) {
        const auto result = shell(std::string("\"$PICTAL\" ") + line);
        EXPECT_EQ(result.status, *error == '\0' ? 0 : 3) << line;
        EXPECT_EQ(result.error,
                  *error == '\0' ? "" : std::string("pictal: standard output: ") + error + "\n");
    }
}

TEST(Program, AFileThatGrowsTooLargeLeavesNothing) {
    const TemporaryFolder folder;
    std::ofstream(folder / "in") << std::string(8192, 'x');
    const auto result =
        shell("ulimit -c 0; ulimit -f 2; (exec \"$PICTAL\" preview write in --root .); echo $?",
              folder.path());
    EXPECT_EQ(result.output, std::to_string(128 + SIGXFSZ) + "\n");
    EXPECT_EQ(entryCount(folder / ".VistrellPreviews"), 0);
}

}  // namespace pictal::program
