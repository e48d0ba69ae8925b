#include "platform/macos/AccessibilityPermissions.h"

#include "tests/platform/macos/stand-ins/CFObject.h"
#include "tests/platform/macos/stand-ins/Permission.h"
#include "tests/support/ManualMainLoop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

class AccessibilityPermissionsTest : public testing::Test {
protected:
    AccessibilityPermissionsTest() { permission() = {}; }

    ManualMainLoop mainLoop;
    std::shared_ptr<PostEventAccess> access = std::make_shared<PostEventAccess>(mainLoop);
    AccessibilityPermissions permissions { access };
};

TEST_F(AccessibilityPermissionsTest, asking_shows_nothing_and_counts_at_once)
{
    EXPECT_FALSE(permissions.mayPostKeyEvents());
    permission().accessibility = true;
    EXPECT_TRUE(permissions.mayPostKeyEvents());
    permission().accessibility = false;
    EXPECT_FALSE(permissions.mayPostKeyEvents());
    EXPECT_FALSE(access->assumed()) << "the answer is the one that the keys use";
    EXPECT_EQ(permission().prompts, 0);
}

TEST_F(AccessibilityPermissionsTest, a_request_shows_the_question_of_the_system)
{
    const int objects = CFObject::count();
    permissions.requestKeyEvents();
    EXPECT_EQ(permission().prompts, 1);
    EXPECT_EQ(CFObject::count(), objects);
}

TEST_F(AccessibilityPermissionsTest, the_settings_open_at_the_list_of_programs)
{
    permissions.showKeyEventSettings();
    EXPECT_THAT(permission().opened,
        testing::ElementsAre(
            u"x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"));
    const int objects = CFObject::count();
    permissions.showKeyEventSettings();
    EXPECT_EQ(CFObject::count(), objects);
}

} // namespace
} // namespace kestrel::test
