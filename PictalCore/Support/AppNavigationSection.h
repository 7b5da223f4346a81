#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/Support/AppNavigationGroup.h"

#include <vector>

namespace pictal {

/// The pages of the main window. Their titles and icons are the application's.
enum class AppNavigationSection {
    dashboard,
    general,
    capture,
    shortcuts,
    export_,
    color,
    permissions,
    debug,
    about,
};

template <>
struct RawValues<AppNavigationSection> {
    static constexpr std::array table{
        RawCase{AppNavigationSection::dashboard, "dashboard"},
        RawCase{AppNavigationSection::general, "general"},
        RawCase{AppNavigationSection::capture, "capture"},
        RawCase{AppNavigationSection::shortcuts, "shortcuts"},
        RawCase{AppNavigationSection::export_, "export"},
        RawCase{AppNavigationSection::color, "color"},
        RawCase{AppNavigationSection::permissions, "permissions"},
        RawCase{AppNavigationSection::debug, "debug"},
        RawCase{AppNavigationSection::about, "about"},
    };
};

/// The sections from the top of the sidebar to its bottom.
inline constexpr std::array sidebarOrder = allCases<AppNavigationSection>();

/// What lists identify the section by: its raw value.
[[nodiscard]] constexpr std::string_view id(AppNavigationSection section) {
    return rawValue(section);
}

/// The heading that the section stands under.
[[nodiscard]] PICTAL_API AppNavigationGroup group(AppNavigationSection section);

/// The sections under a heading, in the order of the sidebar; never none.
[[nodiscard]] PICTAL_API std::vector<AppNavigationSection> sections(AppNavigationGroup in);

}  // namespace pictal
