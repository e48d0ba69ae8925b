#include "app/KeyPermission.h"

#include "tests/fakes/FakeSystem.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PermissionUnderTest {
public:
    PermissionUnderTest() { system.granted = false; }

    [[nodiscard]] std::vector<std::string> look()
    {
        std::vector<std::string> texts;
        for (const Notice& notice : permission.current())
            texts.push_back(notice.text);
        return texts;
    }

    void choose() { permission.current().at(0).act(); }

    FakePermissions system;
    FakeNotices session;
    KeyPermission permission { system, session };
};

constexpr const char* Missing = "Keys Need the Accessibility Permission…";

TEST(KeyPermission, is_what_the_system_says_at_this_moment)
{
    PermissionUnderTest bench;
    EXPECT_FALSE(bench.permission.mayPostKeyEvents());
    bench.system.granted = true;
    EXPECT_TRUE(bench.permission.mayPostKeyEvents());
}

TEST(KeyPermission, nobody_is_asked_before_a_key_is_kept_back)
{
    PermissionUnderTest bench;
    EXPECT_THAT(bench.look(), ElementsAre(Missing));
    EXPECT_EQ(bench.system.requests, 0);
}

TEST(KeyPermission, the_question_comes_once_however_often_keys_are_kept_back)
{
    PermissionUnderTest bench;
    bench.permission.requestKeyEvents();
    bench.permission.requestKeyEvents();
    EXPECT_EQ(bench.system.requests, 1);
    bench.system.granted = true;
    bench.system.granted = false; // the user has withdrawn it
    bench.permission.requestKeyEvents();
    EXPECT_EQ(bench.system.requests, 1);
    EXPECT_EQ(bench.system.settingsShown, 0);
}

TEST(KeyPermission, the_notice_is_there_as_long_as_the_permission_is_missing)
{
    PermissionUnderTest bench;
    EXPECT_THAT(bench.look(), ElementsAre(Missing));
    bench.system.granted = true;
    EXPECT_THAT(bench.look(), IsEmpty());
    bench.system.granted = false;
    EXPECT_THAT(bench.look(), ElementsAre(Missing));
}

TEST(KeyPermission, the_notice_stands_before_those_of_the_session)
{
    PermissionUnderTest bench;
    bench.session.notices = { { "first", {} }, { "second", {} } };
    EXPECT_THAT(bench.look(), ElementsAre(Missing, "first", "second"));
    bench.system.granted = true;
    EXPECT_THAT(bench.look(), ElementsAre("first", "second"));
}

TEST(KeyPermission, choosing_the_notice_asks_the_first_time_and_opens_the_settings_from_then_on)
{
    PermissionUnderTest bench;
    bench.choose();
    EXPECT_EQ(bench.system.requests, 1);
    EXPECT_EQ(bench.system.settingsShown, 0);
    bench.choose();
    EXPECT_EQ(bench.system.requests, 1);
    EXPECT_EQ(bench.system.settingsShown, 1);
}

TEST(KeyPermission, choosing_the_notice_opens_the_settings_when_a_key_has_asked_already)
{
    PermissionUnderTest bench;
    bench.permission.requestKeyEvents();
    bench.choose();
    EXPECT_EQ(bench.system.requests, 1);
    EXPECT_EQ(bench.system.settingsShown, 1);
}

} // namespace
} // namespace kestrel::test
