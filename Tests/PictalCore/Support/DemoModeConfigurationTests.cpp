#include "PictalCore/Support/DemoModeConfiguration.h"

#include <gtest/gtest.h>

namespace pictal {
namespace {

using enum VistrellDemoScenario;

TEST(VistrellDemoScenario, IsFoundByItsNames) {
    struct Case {
        std::string_view text;
        std::optional<VistrellDemoScenario> want;
    };
    for (const Case& c :
         {Case{"Color_Picker", color}, Case{" COLOUR-PICKER\n", color}, Case{"home", dashboard},
          Case{"settings", general}, Case{"screenshot", capture}, Case{"hotkeys", shortcuts},
          Case{"exports", export_}, Case{"privacy", permissions}, Case{"privacy-notes", about},
          Case{"logs", debug}, Case{"annotate", annotation}, Case{"ocr_panel", annotationOCR},
          Case{"pinned_image", pin}, Case{"picker-overlay", colorPickerOverlay},
          Case{"region-overlay", overlayRegion}, Case{"window-overlay", overlayWindow},
          Case{"annotationOCR", std::nullopt}, Case{"", std::nullopt}})
        EXPECT_EQ(scenarioFromNormalizedRawValue(c.text), c.want) << c.text;
    for (const VistrellDemoScenario scenario : allCases<VistrellDemoScenario>())
        EXPECT_EQ(scenarioFromNormalizedRawValue(rawValue(scenario)), scenario);
}

TEST(VistrellDemoScenario, ShowsASection) {
    // A scenario that is itself a section shows that one; the others lie over one.
    for (const AppNavigationSection section : sidebarOrder)
        EXPECT_EQ(navigationSection(*fromRawValue<VistrellDemoScenario>(rawValue(section))),
                  section);
    for (const VistrellDemoScenario scenario : {annotation, annotationOCR, pin})
        EXPECT_EQ(navigationSection(scenario), AppNavigationSection::export_);
    for (const VistrellDemoScenario scenario : {overlayRegion, overlayWindow})
        EXPECT_EQ(navigationSection(scenario), AppNavigationSection::capture);
    EXPECT_EQ(navigationSection(colorPickerOverlay), AppNavigationSection::color);
    for (const VistrellDemoScenario scenario : allCases<VistrellDemoScenario>())
        EXPECT_EQ(forcedRecordingActionID(scenario).value_or(""),
                  scenario == shortcuts ? "region" : "");
}

TEST(DemoModeConfiguration, LoadsFromEnvironmentAndArguments) {
    using Text = std::optional<std::string>;
    const auto on = [](VistrellDemoScenario scenario, Text language = {}, Text background = {}) {
        return DemoModeConfiguration{true, scenario, language, background};
    };
    const auto off = DemoModeConfiguration::disabled();
    struct Case {
        const char* name;
        DemoModeConfiguration want;
        std::vector<std::string> arguments;
        DemoModeConfiguration::Environment environment{};
    };
    const std::vector<Case> cases = {
        {"nothing", off, {}},
        {"truthy", on(dashboard), {}, {{"PICTAL_DEMO_MODE", " Yes "}}},
        {"not truthy", off, {}, {{"VISTRELL_DEMO_MODE", "2"}, {"PICTAL_DEMO_MODE", ""}}},
        {"second variable",
         on(dashboard),
         {},
         {{"VISTRELL_DEMO_MODE", "0"}, {"PICTAL_DEMO_MODE", "ON"}}},
        {"argument against variable",
         on(dashboard),
         {"--demo-mode"},
         {{"VISTRELL_DEMO_MODE", "0"}}},
        {"switch with a value", off, {"app", "--demo-mode=1", "--demo-modes"}},
        {"value behind =", on(color), {"app", "--demo-mode", "--demo-scenario=color_picker"}},
        {"value next", on(pin), {"--pictal-demo-mode", "--demo-scenario", "pin"}},
        {"no value", on(dashboard), {"app", "--demo-mode", "--demo-scenario"}},
        {"a flag as value",
         on(dashboard, "ja"),
         {"--demo-mode", "--demo-scenario", "--demo-language", "ja"}},
        {"first element",
         on(dashboard),
         {"--demo-mode", "--demo-scenario=", "--demo-scenario=pin"}},
        {"first flag",
         on(dashboard),
         {"--demo-mode", "--demo-scenario=pin", "--vistrell-demo-scenario=x"}},
        {"longer flag", on(pin), {"--demo-mode", "--demo-scenarios=x", "--demo-scenario=pin"}},
        {"variable alone",
         on(dashboard),
         {"--demo-mode", "--demo-scenario=pin"},
         {{"VISTRELL_DEMO_SCENARIO", "nonsense"}, {"PICTAL_DEMO_SCENARIO", "pin"}}},
        {"Chinese",
         on(dashboard, "zh-Hans"),
         {"--demo-mode"},
         {{"VISTRELL_DEMO_LANGUAGE", "Simplified_Chinese"}}},
        {"English", on(dashboard, "en"), {"--demo-mode"}, {{"PICTAL_DEMO_LANGUAGE", "en_US"}}},
        {"unknown language",
         on(dashboard),
         {"--demo-mode", "--demo-language=ja"},
         {{"VISTRELL_DEMO_LANGUAGE", "fr"}}},
        {"blank background",
         on(dashboard),
         {"--demo-mode", "--vistrell-demo-background=/x"},
         {{"VISTRELL_DEMO_BACKGROUND_PATH", " "}}},
        {"background",
         on(dashboard, {}, "/tmp/\xFF g"),
         {"--demo-mode"},
         {{"VISTRELL_DEMO_BACKGROUND_PATH", "  /tmp/\xFF g\n"}}}};
    for (const Case& c : cases) {
        EXPECT_EQ(DemoModeConfiguration::load(c.environment, c.arguments, true), c.want) << c.name;
        EXPECT_EQ(DemoModeConfiguration::load(c.environment, c.arguments, false), off) << c.name;
        EXPECT_EQ(DemoModeConfiguration::load(c.environment, c.arguments), off) << c.name;
    }
}

}  // namespace
}  // namespace pictal
