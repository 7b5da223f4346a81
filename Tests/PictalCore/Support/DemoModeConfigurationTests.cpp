#include "PictalCore/Support/DemoModeConfiguration.h"
#include "Tests/Support/Process.h"

#include <gtest/gtest.h>

namespace pictal {

using enum VistrellDemoScenario;

TEST(VistrellDemoScenario, IsFoundByItsNames) {
    const auto names = words(
        "Color_Picker color  home dashboard  settings general  screenshot capture  logs debug "
        "hotkeys shortcuts  exports export  privacy permissions  privacy-notes about "
        "annotate annotation  ocr_panel annotation-ocr  pinned_image pin  pinning pin "
        "picker-overlay color-picker-overlay  region-overlay overlay-region "
        "window-overlay overlay-window");
    for (std::size_t i = 0; i < names.size(); i += 2)
        EXPECT_EQ(rawValue(scenarioFromNormalizedRawValue(names[i]).value()), names[i + 1]);
    EXPECT_EQ(scenarioFromNormalizedRawValue(" COLOUR-PICKER\n"), color);
    EXPECT_EQ(scenarioFromNormalizedRawValue("annotationOCR"), std::nullopt);
}

TEST(VistrellDemoScenario, ShowsASection) {
    const auto sections = words(
        "dashboard general capture shortcuts export color permissions debug about "
        "export export color export capture capture");
    std::size_t i = 0;
    for (const VistrellDemoScenario scenario : allCases<VistrellDemoScenario>()) {
        EXPECT_EQ(scenarioFromNormalizedRawValue(rawValue(scenario)), scenario);
        EXPECT_EQ(rawValue(navigationSection(scenario)), sections[i++]) << rawValue(scenario);
        EXPECT_EQ(forcedRecordingActionID(scenario).value_or(""),
                  scenario == shortcuts ? "region" : "");
    }
}

TEST(DemoModeConfiguration, LoadsFromEnvironmentAndArguments) {
    const auto off = DemoModeConfiguration::disabled();
    const auto check = [&](const std::string& line, const DemoModeConfiguration& want,
                           const DemoModeConfiguration::Environment& environment = {}) {
        const auto arguments = words(line);
        EXPECT_EQ(DemoModeConfiguration::load(environment, arguments, true), want) << line;
        EXPECT_EQ(DemoModeConfiguration::load(environment, arguments, false), off) << line;
        EXPECT_EQ(DemoModeConfiguration::load(environment, arguments), off) << line;
    };
    const auto on = [](VistrellDemoScenario scenario, std::optional<std::string> language = {},
                       std::optional<std::string> background = {}) {
        return DemoModeConfiguration{true, scenario, language, background};
    };
    check("", off);
    check("", on(dashboard), {{"PICTAL_DEMO_MODE", " Yes "}});
    check("", off, {{"VISTRELL_DEMO_MODE", "2"}, {"PICTAL_DEMO_MODE", ""}});
    check("--demo-mode", on(dashboard), {{"VISTRELL_DEMO_MODE", "0"}});
    check("app --demo-mode=1 --demo-modes", off);
    check("app --demo-mode --demo-scenario=color_picker", on(color));
    check("--pictal-demo-mode --demo-scenario pin --demo-scenario", on(pin));
    check("--demo-mode --demo-scenario --demo-language ja", on(dashboard, "ja"));
    check("--demo-mode --demo-scenario= --demo-scenario=pin", on(dashboard));
    check("--demo-mode --demo-scenario=pin --vistrell-demo-scenario=x", on(dashboard));
    check("--demo-mode --demo-scenarios=x --demo-scenario=pin", on(pin));
    check("--demo-mode --demo-scenario=pin", on(dashboard),
          {{"VISTRELL_DEMO_SCENARIO", "nonsense"}, {"PICTAL_DEMO_SCENARIO", "pin"}});
    check("--demo-mode", on(dashboard, "zh-Hans"),
          {{"VISTRELL_DEMO_LANGUAGE", "Simplified_Chinese"}});
    for (const auto& [name, language] : std::map<std::string, const char*>{{"en_US", "en"},
                                                                           {"CHINESE", "zh-Hans"},
                                                                           {"jp", "ja"},
                                                                           {"spanish", "es"},
                                                                           {"kr", "ko"}})
        check("--demo-mode", on(dashboard, language), {{"PICTAL_DEMO_LANGUAGE", name}});
    check("--demo-mode --demo-language=ja", on(dashboard), {{"VISTRELL_DEMO_LANGUAGE", "fr"}});
    check("--demo-mode --vistrell-demo-background=/x", on(dashboard),
          {{"VISTRELL_DEMO_BACKGROUND_PATH", " "}});
    check("--demo-mode", on(dashboard, {}, "/tmp/\xFF g"),
          {{"VISTRELL_DEMO_BACKGROUND_PATH", "  /tmp/\xFF g\n"}});
}

}  // namespace pictal
