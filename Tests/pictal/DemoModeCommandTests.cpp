#include "Tests/Support/Process.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace pictal {
namespace {

TEST(DemoModeCommand, PrintsTheConfigurationAsJSON) {
    using Json = nlohmann::json;
    const auto run = [](std::vector<std::string> arguments,
                        const std::map<std::string, std::string>& environment = {}) {
        arguments.insert(arguments.begin(), "demo-mode");
        const auto result = Process{.arguments = arguments, .environment = environment}.run();
        return Json::parse(result.output, nullptr, false);
    };
    EXPECT_EQ(run({}), (Json{{"isEnabled", false}, {"scenario", "dashboard"}}));
    // An argument may look like a command or an option of the program.
    EXPECT_EQ(
        run({"--json", "--demo-mode", "-x", "redact", "--demo-scenario=pin", "--demo-language=jp"}),
        (Json{{"isEnabled", true}, {"scenario", "pin"}, {"languageIdentifier", "ja"}}));
    EXPECT_EQ(
        run({}, {{"VISTRELL_DEMO_MODE", "1"}, {"VISTRELL_DEMO_BACKGROUND_PATH", " /a\xFF "}}),
        (Json{
            {"isEnabled", true}, {"scenario", "dashboard"}, {"backgroundImagePath", "/a\uFFFD"}}));
}

}  // namespace
}  // namespace pictal
