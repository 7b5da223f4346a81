#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/Support/VistrellDemoScenario.h"

#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>

namespace pictal {

/// Whether and how the application starts in demo mode, as its environment and launch arguments
/// say. A variable goes before an argument, and of several the first that is there decides alone:
///
///   enable      VISTRELL_DEMO_MODE, PICTAL_DEMO_MODE (1, true, yes, on or enabled);
///               --vistrell-demo-mode, --pictal-demo-mode, --demo-mode. Here any one suffices.
///   scenario    VISTRELL_DEMO_SCENARIO, PICTAL_DEMO_SCENARIO;
///               --vistrell-demo-scenario, --pictal-demo-scenario, --demo-scenario
///   language    VISTRELL_DEMO_LANGUAGE, PICTAL_DEMO_LANGUAGE;
///               --vistrell-demo-language, --pictal-demo-language, --demo-language
///   background  VISTRELL_DEMO_BACKGROUND_PATH; --vistrell-demo-background
///
/// An argument has its value behind a "=" or in the next element.
struct PICTAL_API DemoModeConfiguration {
    using Environment = std::map<std::string, std::string, std::less<>>;

    bool isEnabled = false;
    VistrellDemoScenario scenario = defaultScenario;
    /// "en", "zh-Hans", "ja", "es" or "ko"; absent is the system's language.
    std::optional<std::string> languageIdentifier;
    /// Not looked up, expanded or repaired; never blank.
    std::optional<std::string> backgroundImagePath;

    [[nodiscard]] static DemoModeConfiguration disabled() { return {}; }

    /// Never fails: an unknown scenario is the default one, an unknown language is absent.
    [[nodiscard]] static DemoModeConfiguration load(const Environment& environment,
                                                    std::span<const std::string> arguments,
                                                    bool allowDemoMode);

    /// Without a permission there is no demo mode.
    [[nodiscard]] static DemoModeConfiguration load(const Environment& environment,
                                                    std::span<const std::string> arguments) {
        return load(environment, arguments, false);
    }

    friend bool operator==(const DemoModeConfiguration&, const DemoModeConfiguration&) = default;
};

}  // namespace pictal
