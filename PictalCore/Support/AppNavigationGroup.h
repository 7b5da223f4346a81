#pragma once

#include "PictalCore/Platform/Foundation/RawValue.h"

namespace pictal {

/// The headings of the main window's sidebar, in their order.
enum class AppNavigationGroup { overview, settings, system, about };

template <>
struct RawValues<AppNavigationGroup> {
    static constexpr std::array table{
        RawCase{AppNavigationGroup::overview, "overview"},
        RawCase{AppNavigationGroup::settings, "settings"},
        RawCase{AppNavigationGroup::system, "system"},
        RawCase{AppNavigationGroup::about, "about"},
    };
};

/// What lists identify the group by: its raw value.
[[nodiscard]] constexpr std::string_view id(AppNavigationGroup group) {
    return rawValue(group);
}

}  // namespace pictal
