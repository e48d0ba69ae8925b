#include "platform/linux/system/SessionNotices.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

namespace kestrel::test {
namespace {

using Session = SessionNotices::Session;
using testing::IsEmpty;

// The variables of a session, set for one test.
class SessionNoticesTest : public testing::Test {
protected:
    void SetUp() override { clear(); }
    void TearDown() override { clear(); }

    static void set(const char* name, const char* value) { ::setenv(name, value, 1); }

private:
    static void clear()
    {
        ::unsetenv("XDG_SESSION_TYPE");
        ::unsetenv("WAYLAND_DISPLAY");
    }
};

TEST_F(SessionNoticesTest, an_x11_session_needs_no_notice)
{
    EXPECT_THAT(SessionNotices(Session::X11).current(), IsEmpty());
}

TEST_F(SessionNoticesTest, a_wayland_session_is_told_about_in_two_lines_without_a_remedy)
{
    const auto notices = SessionNotices(Session::Wayland).current();
    ASSERT_EQ(notices.size(), 2u);
    EXPECT_EQ(notices[0].text, "Wayland: keys reach X11 programs only");
    EXPECT_EQ(notices[1].text, "Wayland: the panel cannot be kept on top");
    EXPECT_FALSE(notices[0].act);
    EXPECT_FALSE(notices[1].act);
}

TEST_F(SessionNoticesTest, the_login_manager_or_the_compositor_names_a_wayland_session)
{
    EXPECT_EQ(SessionNotices::sessionOfEnvironment(), Session::X11);
    set("XDG_SESSION_TYPE", "x11");
    EXPECT_EQ(SessionNotices::sessionOfEnvironment(), Session::X11);
    set("XDG_SESSION_TYPE", "wayland");
    EXPECT_EQ(SessionNotices::sessionOfEnvironment(), Session::Wayland);
    set("XDG_SESSION_TYPE", "tty");
    EXPECT_EQ(SessionNotices::sessionOfEnvironment(), Session::X11);
    set("WAYLAND_DISPLAY", "");
    EXPECT_EQ(SessionNotices::sessionOfEnvironment(), Session::X11);
    set("WAYLAND_DISPLAY", "wayland-0");
    EXPECT_EQ(SessionNotices::sessionOfEnvironment(), Session::Wayland);
}

} // namespace
} // namespace kestrel::test
