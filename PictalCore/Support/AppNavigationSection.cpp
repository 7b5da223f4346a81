#include "PictalCore/Support/AppNavigationSection.h"

#include <algorithm>
#include <iterator>

namespace pictal {

AppNavigationGroup group(AppNavigationSection section) {
    switch (section) {
        case AppNavigationSection::dashboard:
            return AppNavigationGroup::overview;
        case AppNavigationSection::general:
        case AppNavigationSection::capture:
        case AppNavigationSection::shortcuts:
        case AppNavigationSection::export_:
        case AppNavigationSection::color:
            return AppNavigationGroup::settings;
        case AppNavigationSection::permissions:
        case AppNavigationSection::debug:
            return AppNavigationGroup::system;
        case AppNavigationSection::about:
            break;
    }
    return AppNavigationGroup::about;
}

std::vector<AppNavigationSection> sections(AppNavigationGroup in) {
    std::vector<AppNavigationSection> result;
    std::ranges::copy_if(sidebarOrder, std::back_inserter(result),
                         [in](AppNavigationSection section) { return group(section) == in; });
    return result;
}

}  // namespace pictal
