#include "PictalCore/Support/AppNavigationSection.h"

#include <gtest/gtest.h>

namespace pictal {

TEST(AppNavigationSection, GroupsTheSidebarInOrder) {
    using enum AppNavigationSection;
    using Sections = std::vector<AppNavigationSection>;
    EXPECT_EQ(sections(AppNavigationGroup::overview), Sections{dashboard});
    EXPECT_EQ(sections(AppNavigationGroup::settings),
              (Sections{general, capture, shortcuts, export_, color}));
    EXPECT_EQ(sections(AppNavigationGroup::system), (Sections{permissions, debug}));
    EXPECT_EQ(sections(AppNavigationGroup::about), Sections{about});
}

}  // namespace pictal
