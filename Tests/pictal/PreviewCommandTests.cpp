#include "Tests/Support/Process.h"
#include "Tests/Support/TemporaryFolder.h"

#include <chrono>

#include <gtest/gtest.h>

namespace pictal {
namespace {

namespace fs = std::filesystem;

TEST(PreviewCommand, WritesAndPrunes) {
    const TemporaryFolder folder;
    const auto run = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "preview");
        arguments.insert(arguments.end(), {"--root", "."});
        return Process{.arguments = arguments, .input = "bytes", .folder = folder.path()}.run();
    };
    const auto written = run({"write", "-"});
    ASSERT_EQ(written.status, 0) << written.error;
    EXPECT_TRUE(written.output.starts_with("./.VistrellPreviews/.Vistrell-preview-"));
    const fs::path preview = folder / written.output.substr(2, written.output.size() - 3);
    EXPECT_EQ(fs::file_size(preview), 5U);
    fs::last_write_time(preview, fs::file_time_type::clock::now() - std::chrono::hours(2));
    fs::copy(preview, folder / "My shot.png");
    EXPECT_NE(run({"write", "My shot.png"}).output.find("/.Vistrell-My-shot-"), std::string::npos);
    EXPECT_EQ(run({"prune", "--expire", "7300"}).status, 0);
    EXPECT_TRUE(fs::exists(preview)) << "it is no older than that";
    EXPECT_EQ(run({"prune", "--expire", "3600.5"}).status, 0);
    EXPECT_FALSE(fs::exists(preview));

    for (const char* wrong : {"--expire=60s", "--expire=nan", "--expire=inf", "--expire=-1", "."})
        EXPECT_EQ(run({"prune", wrong}).status, 2) << wrong;
    EXPECT_EQ(run({"write", "absent.png"}).status, 2);
    fs::remove_all(folder / ".VistrellPreviews");
    fs::create_directory_symlink("/", folder / ".VistrellPreviews");
    EXPECT_EQ(run({"write", "-"}).status, 3);
    EXPECT_EQ(run({"write", "-"}).error, "pictal: ./.VistrellPreviews: Not a directory\n");
}

}  // namespace
}  // namespace pictal
