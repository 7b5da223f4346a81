#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/Support/AppNavigationSection.h"

#include <optional>
#include <string_view>

namespace pictal {

/// What the application shows when it starts in demo mode: a page of the main window, or one of its
/// overlays.
enum class VistrellDemoScenario {
    dashboard,
    general,
    capture,
    shortcuts,
    export_,
    color,
    permissions,
    debug,
    about,
    annotation,
    annotationOCR,
    colorPickerOverlay,
    pin,
    overlayRegion,
    overlayWindow,
};

template <>
struct RawValues<VistrellDemoScenario> {
    static constexpr std::array table{
        RawCase{VistrellDemoScenario::dashboard, "dashboard"},
        RawCase{VistrellDemoScenario::general, "general"},
        RawCase{VistrellDemoScenario::capture, "capture"},
        RawCase{VistrellDemoScenario::shortcuts, "shortcuts"},
        RawCase{VistrellDemoScenario::export_, "export"},
        RawCase{VistrellDemoScenario::color, "color"},
        RawCase{VistrellDemoScenario::permissions, "permissions"},
        RawCase{VistrellDemoScenario::debug, "debug"},
        RawCase{VistrellDemoScenario::about, "about"},
        RawCase{VistrellDemoScenario::annotation, "annotation"},
        RawCase{VistrellDemoScenario::annotationOCR, "annotation-ocr"},
        RawCase{VistrellDemoScenario::colorPickerOverlay, "color-picker-overlay"},
        RawCase{VistrellDemoScenario::pin, "pin"},
        RawCase{VistrellDemoScenario::overlayRegion, "overlay-region"},
        RawCase{VistrellDemoScenario::overlayWindow, "overlay-window"},
    };
};

inline constexpr VistrellDemoScenario defaultScenario = VistrellDemoScenario::dashboard;

/// A scenario by any of its names: "hotkeys" is `shortcuts`. White space at the ends and case do
/// not matter, and "_" is "-".
[[nodiscard]] PICTAL_API std::optional<VistrellDemoScenario> scenarioFromNormalizedRawValue(
    std::string_view text);

/// The page that the main window shows behind the scenario.
[[nodiscard]] PICTAL_API AppNavigationSection navigationSection(VistrellDemoScenario scenario);

/// The action (see `ShortcutActionID`) whose shortcut is shown as being recorded, if any.
[[nodiscard]] PICTAL_API std::optional<std::string_view> forcedRecordingActionID(
    VistrellDemoScenario scenario);

}  // namespace pictal
