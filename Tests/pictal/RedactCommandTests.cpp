#include "Tests/Support/Process.h"

#include <gtest/gtest.h>

namespace pictal {
namespace {

TEST(RedactCommand, RedactsLineByLine) {
    const auto run = [](const std::string& input, std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "redact");
        return Process{.arguments = arguments, .input = input}.run();
    };
    EXPECT_EQ(run("/tmp/a\r\n\n~/b/c", {}).output, "<redacted-path>/a\r\n\n<redacted-path>/c");
    EXPECT_EQ(run("/opt/x /var/y\t1\n", {"--error"}).output, "/opt/x <redacted-path>/y 1\n");
    EXPECT_EQ(run("/tmp/a;b\n", {"--key", "fileURL"}).output, "<redacted-path>/a;b\n");
    EXPECT_EQ(run("/tmp/a\n", {"--key", "message"}).output, "/tmp/a\n");
    EXPECT_EQ(run("a\nb", {"--key=Title"}).output, "<redacted-metadata>\n<redacted-metadata>");
    EXPECT_EQ(run("abcd\nabc\n", {"--max", "3"}).output, "abc...\nabc\n");
    EXPECT_EQ(run("", {"--key", "a", "--error"}).status, 2);
    const std::string slashes(300'000, '/');  // more than one read holds
    EXPECT_EQ(run("x\n" + slashes + "tmp/y\nz", {}).output,
              "x\n" + slashes.substr(1) + "<redacted-path>/y\nz");
}

TEST(RedactCommand, FollowsInputThatNeverEnds) {
    const auto shell = [](const char* script) {
        return Process{.program = "/bin/bash",
                       .arguments = {"-c", script},
                       .environment = {{"PICTAL", PICTAL_PROGRAM}}}
            .run();
    };
    // The reader leaves after a line, which ends the writers before it.
    const auto endless = shell("yes '/Users/me/a b.png, done' | \"$PICTAL\" redact | head -n 1");
    EXPECT_EQ(endless.output, "<redacted-path>/a b.png, done\n");
    EXPECT_EQ(endless.error, "");
    // A line is out before the next one is in.
    const auto prompt = shell(
        "coproc \"$PICTAL\" redact; echo /tmp/x/y >&${COPROC[1]};"
        "read -r -t 60 line <&${COPROC[0]}; echo \"$line\"");
    EXPECT_EQ(prompt.output, "<redacted-path>/y\n");
}

}  // namespace
}  // namespace pictal
