#include "PictalCore/Support/VistrellDemoScenario.h"

#include "PictalCore/Shortcuts/ShortcutActionID.h"
#include "PictalCore/Support/detail/NormalizedName.h"

namespace pictal {

namespace {

using detail::Alias;
using enum VistrellDemoScenario;

constexpr std::array aliases{
    Alias{dashboard, "home"},
    Alias{dashboard, "overview"},
    Alias{dashboard, "dashboard"},
    Alias{general, "general"},
    Alias{general, "settings"},
    Alias{capture, "capture"},
    Alias{capture, "screenshot"},
    Alias{shortcuts, "shortcuts"},
    Alias{shortcuts, "shortcut"},
    Alias{shortcuts, "hotkeys"},
    Alias{shortcuts, "hotkey"},
    Alias{export_, "export"},
    Alias{export_, "exports"},
    Alias{color, "color"},
    Alias{color, "colour"},
    Alias{color, "color-picker"},
    Alias{color, "colour-picker"},
    Alias{permissions, "permissions"},
    Alias{permissions, "permission"},
    Alias{permissions, "privacy"},
    Alias{debug, "debug"},
    Alias{debug, "logs"},
    Alias{about, "about"},
    Alias{about, "guide"},
    Alias{about, "privacy-notes"},
    Alias{annotation, "annotation"},
    Alias{annotation, "annotate"},
    Alias{annotationOCR, "annotation-ocr"},
    Alias{annotationOCR, "annotate-ocr"},
    Alias{annotationOCR, "ocr-panel"},
    Alias{colorPickerOverlay, "color-picker-overlay"},
    Alias{colorPickerOverlay, "color-overlay"},
    Alias{colorPickerOverlay, "picker-overlay"},
    Alias{pin, "pin"},
    Alias{pin, "pinned"},
    Alias{pin, "pinned-image"},
    Alias{pin, "pinning"},
    Alias{overlayRegion, "overlay-region"},
    Alias{overlayRegion, "region-overlay"},
    Alias{overlayWindow, "overlay-window"},
    Alias{overlayWindow, "window-overlay"},
};

}  // namespace

std::optional<VistrellDemoScenario> scenarioFromNormalizedRawValue(std::string_view text) {
    const std::string name = detail::normalizedName(text);
    for (const auto& alias : aliases)
        if (alias.name == name) return alias.value;
    return std::nullopt;
}

AppNavigationSection navigationSection(VistrellDemoScenario scenario) {
    switch (scenario) {
        case VistrellDemoScenario::dashboard:
            break;
        case VistrellDemoScenario::general:
            return AppNavigationSection::general;
        case VistrellDemoScenario::capture:
        case VistrellDemoScenario::overlayRegion:
        case VistrellDemoScenario::overlayWindow:
            return AppNavigationSection::capture;
        case VistrellDemoScenario::shortcuts:
            return AppNavigationSection::shortcuts;
        case VistrellDemoScenario::export_:
        case VistrellDemoScenario::annotation:
        case VistrellDemoScenario::annotationOCR:
        case VistrellDemoScenario::pin:
            return AppNavigationSection::export_;
        case VistrellDemoScenario::color:
        case VistrellDemoScenario::colorPickerOverlay:
            return AppNavigationSection::color;
        case VistrellDemoScenario::permissions:
            return AppNavigationSection::permissions;
        case VistrellDemoScenario::debug:
            return AppNavigationSection::debug;
        case VistrellDemoScenario::about:
            return AppNavigationSection::about;
    }
    return AppNavigationSection::dashboard;
}

std::optional<std::string_view> forcedRecordingActionID(VistrellDemoScenario scenario) {
    if (scenario == VistrellDemoScenario::shortcuts) return ShortcutActionID::region;
    return std::nullopt;
}

}  // namespace pictal
