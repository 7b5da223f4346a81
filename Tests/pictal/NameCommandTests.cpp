#include "Tests/Support/Process.h"

#include <gtest/gtest.h>

namespace pictal {
namespace {

TEST(NameCommand, PrintsAStem) {
    const auto run = [](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "name");
        return Process{.arguments = arguments}.run();
    };
    EXPECT_EQ(run({"My Screenshot 2024/05/01"}).output, "My-Screenshot-2024-05-01\n");
    EXPECT_EQ(run({"--max", "5", "--", "--abcd-efgh"}).output, "abcd\n");
    EXPECT_EQ(run({"...", "--fallback", "a/b"}).output, "a/b\n");
    EXPECT_EQ(run({std::string(100, 'x')}).output.size(), 81U);
    for (const char* wrong : {"--max=-1", "--max=1.5", "--max=9k"})
        EXPECT_EQ(run({"a", wrong}).status, 2) << wrong;
}

}  // namespace
}  // namespace pictal
