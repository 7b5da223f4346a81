#include "Tests/Support/Process.h"
#include "Tests/Support/TemporaryFolder.h"

#include <chrono>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace pictal {

namespace fs = std::filesystem;

TEST(NameCommand, PrintsAStem) {
    const auto run = [](const std::string& line) {
        return Process{.arguments = words("name " + line)}.run();
    };
    EXPECT_EQ(run("Screenshot,2024/05/01").output, "Screenshot-2024-05-01\n");
    EXPECT_EQ(run("--max 5 -- --abcd-efgh").output, "abcd\n");
    EXPECT_EQ(run("... --fallback a/b").output, "a/b\n");
    EXPECT_EQ(run(std::string(100, 'x')).output.size(), 81U);
    EXPECT_EQ(run("... --fallback=--x").output, "--x\n");
    for (const char* wrong : {"a --max=-1", "a --max=1.5", "a --max=9k", "a --max=0x9"})
        EXPECT_EQ(run(wrong).status, 2) << wrong;
}

TEST(DemoModeCommand, PrintsTheConfigurationAsJSON) {
    const auto check = [](const std::string& line, const char* want,
                          const std::map<std::string, std::string>& environment = {}) {
        const auto run = Process{.arguments = words(line), .environment = environment}.run();
        EXPECT_EQ(nlohmann::json::parse(run.output, nullptr, false), nlohmann::json::parse(want));
    };
    check("demo-mode", R"({"isEnabled": false, "scenario": "dashboard"})");
    // An argument may look like a command or an option of the program.
    check("demo-mode --json --demo-mode -x redact --demo-scenario=pin --demo-language=jp",
          R"({"isEnabled": true, "scenario": "pin", "languageIdentifier": "ja"})");
    // Behind two dashes nothing is; a flag takes what follows it, dashes or not.
    check("demo-mode --demo-mode -- --json --help -- --demo-scenario=pin ++ -.5",
          R"({"isEnabled": true, "scenario": "pin"})");
    check("demo-mode -- --demo-mode --vistrell-demo-background -.5",
          R"({"isEnabled": true, "scenario": "dashboard", "backgroundImagePath": "-.5"})");
    check("demo-mode",
          R"({"isEnabled": true, "scenario": "dashboard", "backgroundImagePath": "/a�"})",
          {{"VISTRELL_DEMO_MODE", "1"}, {"VISTRELL_DEMO_BACKGROUND_PATH", " /a\xFF "}});
}

TEST(PreviewCommand, WritesAndPrunes) {
    const TemporaryFolder folder;
    const auto run = [&](const std::string& line) {
        return Process{.arguments = words("preview " + line + " --root ."),
                       .input = "bytes",
                       .folder = folder.path()}
            .run();
    };
    const auto written = run("write -");
    ASSERT_EQ(written.status, 0) << written.error;
    EXPECT_TRUE(written.output.starts_with("./.VistrellPreviews/.Vistrell-preview-"));
    const fs::path preview = folder / written.output.substr(2, written.output.size() - 3);
    EXPECT_EQ(fs::file_size(preview), 5U);
    fs::last_write_time(preview, fs::file_time_type::clock::now() - std::chrono::hours(2));
    fs::copy(preview, folder / "My,shot.png");
    EXPECT_NE(run("write My,shot.png").output.find("/.Vistrell-My-shot-"), std::string::npos);
    EXPECT_EQ(run("prune --expire 7300").status, 0);
    EXPECT_TRUE(fs::exists(preview)) << "it is no older than that";
    EXPECT_EQ(run("prune --expire 3600.5").status, 0);
    EXPECT_FALSE(fs::exists(preview));

    for (const char* wrong : {"--expire=60s", "--expire=nan", "--expire=inf", "--expire=-1", "."})
        EXPECT_EQ(run(std::string("prune ") + wrong).status, 2) << wrong;
    EXPECT_EQ(run("write absent.png").status, 2);
    EXPECT_EQ(Process({.arguments = words("preview prune --root '' --expire 1")}).run().error,
              "pictal: --root: needs the name of a folder. See pictal preview prune --help.\n");
    fs::remove_all(folder / ".VistrellPreviews");
    fs::create_directory_symlink("/", folder / ".VistrellPreviews");
    EXPECT_EQ(run("write -").status, 3);
    EXPECT_EQ(run("write -").error, "pictal: ./.VistrellPreviews: Not a directory\n");
}

TEST(RedactCommand, RedactsLineByLine) {
    const auto run = [](const std::string& input, const std::string& options = {}) {
        return Process{.arguments = words("redact " + options), .input = input}.run();
    };
    EXPECT_EQ(run("/tmp/a\r\n\n~/b/c").output, "<redacted-path>/a\r\n\n<redacted-path>/c");
    EXPECT_EQ(run("/opt/x /var/y\t1\n", "--error").output, "/opt/x <redacted-path>/y 1\n");
    EXPECT_EQ(run("/tmp/a;b\n", "--key fileURL").output, "<redacted-path>/a;b\n");
    EXPECT_EQ(run("/tmp/a\n", "--key message").output, "/tmp/a\n");
    EXPECT_EQ(run("a\nb", "--key=Title").output, "<redacted-metadata>\n<redacted-metadata>");
    EXPECT_EQ(run("abcd\nabc\n", "--max 3").output, "abc...\nabc\n");
    for (const char* wrong : {"--key a --error", "--max=-1", "--max 0x3", "--max 1.5"})
        EXPECT_EQ(run("", wrong).status, 2) << wrong;
    EXPECT_EQ(run("12345678901\n", "--max 010").output, "1234567890...\n");
    const std::string longest((64 << 20) - 6, 'x');  // with "/tmp/y" just as long as a line may be
    const auto kept = run(longest + "/tmp/y\nz", "--key a");
    EXPECT_TRUE(kept.status == 0 && kept.output == longest + "/tmp/y\nz");
    const auto withheld = run("a\n" + longest + "/tmp/yy\n/tmp/b\n");
    EXPECT_EQ(withheld.output, "a\n<redacted-metadata>\n<redacted-path>/b\n");
    EXPECT_EQ(withheld.error,
              "pictal: warning: standard input: a line is longer than 64 MiB and is withheld\n");
    EXPECT_EQ(withheld.status, 2);
    EXPECT_EQ(run(longest + "/tmp/yy").output, "<redacted-metadata>");
    const std::string slashes(300'000, '/');  // more than one read holds
    EXPECT_EQ(run("x\n" + slashes + "tmp/y\nz").output,
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

}  // namespace pictal
