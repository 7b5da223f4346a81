#include "Tests/Support/Process.h"
#include "Tests/Support/TemporaryFolder.h"
#include "pictal/Interrupts.h"
#include "pictal/OutputFile.h"

#include <csignal>

#include <gtest/gtest.h>
#include <sys/resource.h>

namespace pictal::program {

namespace fs = std::filesystem;

namespace {

std::span<const std::byte> bytes(std::string_view text) {
    return std::as_bytes(std::span(text));
}

}  // namespace

TEST(OutputFile, IsThereWholeOnceItIsCommitted) {
    const TemporaryFolder folder;
    const std::string path = folder / "out";
    std::ofstream(path) << "old";
    for (const bool commits : {false, true}) {
        auto output = OutputFile::open(path).value();
        EXPECT_TRUE(output.write(bytes("new ")) && output.write(bytes("text")));
        EXPECT_EQ(contents(path), "old");
        EXPECT_TRUE(!commits || output.commit());
    }
    EXPECT_EQ(contents(path), "new text");
    EXPECT_EQ(entryCount(folder.path()), 1);
}

TEST(OutputFile, ASignalLeavesWhatWasThereAndEndsTheProgram) {
    const TemporaryFolder folder;
    const std::string path = folder / "out";
    std::ofstream(path) << "old";
    const auto interrupted = [&](int signal, auto before) {
        return statusInChild([&] {
            before();
            const rlimit none{};
            ::setrlimit(RLIMIT_CORE, &none);
            removeTemporaryFileOnInterrupt();
            auto output = OutputFile::open(path);
            (void)output->write(bytes("new"));
            if (entryCount(folder.path()) == 2) (void)std::raise(signal);
            return output->commit().has_value();
        });
    };
    for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTERM, SIGXCPU, SIGXFSZ}) {
        const int status = interrupted(signal, [] {});
        EXPECT_TRUE(WIFSIGNALED(status)) << signal;
        EXPECT_EQ(WTERMSIG(status), signal);
        EXPECT_EQ(contents(path), "old");
        EXPECT_EQ(entryCount(folder.path()), 1) << signal;
    }
    EXPECT_EQ(interrupted(SIGHUP, [] { std::signal(SIGHUP, SIG_IGN); }), 0);
    EXPECT_EQ(contents(path), "new") << "what the caller ignores stays ignored";
}

TEST(OutputFile, OwnDescriptorsAreWrittenWhereTheyStand) {
    const TemporaryFolder folder;
    const auto shell = [&](const std::string& script) {
        std::ofstream(folder / "log") << "old,";
        return Process{.program = "/bin/bash",
                       .arguments = {"-c", script},
                       .environment = {{"PICTAL", std::string(PICTAL_PROGRAM) + " export " +
                                                      PICTAL_SOURCE_DIR "/samples/screenshot.png "
                                                                        "--plain -o"}},
                       .folder = folder.path()}
            .run();
    };
    for (const char* script :
         {"$PICTAL /dev/stdout >> log", "$PICTAL /dev/fd/7 7>> log",
          "exec 5>> log; $PICTAL /proc/self/fd/5", "ln -s /dev/stdout link; $PICTAL link >> log"}) {
        const auto result = shell(script);
        EXPECT_EQ(result.status, 0) << script << ": " << result.error;
        EXPECT_TRUE(contents(folder / "log").starts_with("old,\x89PNG")) << script;
    }
    EXPECT_EQ(shell("$PICTAL /dev/fd/6 6< log").error, "pictal: /dev/fd/6: Bad file descriptor\n");
    EXPECT_EQ(shell("$PICTAL /dev/fd/9 2>&1").output, "pictal: /dev/fd/9: Bad file descriptor\n");
    EXPECT_EQ(shell("$PICTAL - >&-").error, "pictal: standard output: Bad file descriptor\n");
    EXPECT_EQ(contents(folder / "log"), "old,");
    EXPECT_EQ(shell("$PICTAL out.png 2>&- >&-").status, 0);
}

TEST(OutputFile, AnInterruptEndsTheLoopAroundTheProgram) {
    const auto loop =
        Process{.program = "/bin/bash",
                .arguments =
                    {"-c",
                     "set -m;"
                     "coproc bash -c 'for i in 1 2; do \"$PICTAL\" redact; echo again >&2; done';"
                     // The shell forgets these once the loop has ended.
                     "pid=$COPROC_PID input=${COPROC[1]} output=${COPROC[0]};"
                     "echo x >&$input; read -r -t 60 line <&$output;"
                     "kill -INT -- -$pid; eval \"exec $input>&-\"; wait $pid; echo $?"},
                .environment = {{"PICTAL", PICTAL_PROGRAM}}}
            .run();
    EXPECT_EQ(loop.output, "130\n");
    EXPECT_EQ(loop.error.find("again\n"), std::string::npos) << loop.error;
}

}  // namespace pictal::program
