#include "app/LoginItemChoice.h"

#include "tests/fakes/FakeSystem.h"

#include <QAction>
#include <QMenu>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct LoginItemMenu {
    LoginItemMenu()
    {
        action.setCheckable(true);
        menu.addAction(&action);
    }

    FakeLoginItem loginItem;
    QMenu menu;
    QAction action;
};

TEST(LoginItemChoice, is_left_out_where_the_system_offers_none)
{
    LoginItemMenu bench;
    bench.loginItem.available = false;
    const LoginItemChoice choice(bench.loginItem, bench.action, bench.menu);
    EXPECT_FALSE(bench.action.isVisible());
    EXPECT_THAT(bench.loginItem.calls, IsEmpty());
}

TEST(LoginItemChoice, shows_what_the_system_says_without_changing_it)
{
    for (const bool enabled : { false, true }) {
        LoginItemMenu bench;
        bench.loginItem.enabled = enabled;
        const LoginItemChoice choice(bench.loginItem, bench.action, bench.menu);
        EXPECT_TRUE(bench.action.isVisible());
        EXPECT_EQ(bench.action.isChecked(), enabled);
        EXPECT_THAT(bench.loginItem.calls, IsEmpty());
    }
}

TEST(LoginItemChoice, choosing_it_switches_it_on_and_off)
{
    LoginItemMenu bench;
    const LoginItemChoice choice(bench.loginItem, bench.action, bench.menu);
    bench.action.trigger();
    EXPECT_THAT(bench.loginItem.calls, ElementsAre("on"));
    EXPECT_TRUE(bench.action.isChecked());
    bench.action.trigger();
    EXPECT_THAT(bench.loginItem.calls, ElementsAre("on", "off"));
    EXPECT_FALSE(bench.action.isChecked());
}

TEST(LoginItemChoice, opening_the_menu_shows_what_was_changed_elsewhere)
{
    LoginItemMenu bench;
    const LoginItemChoice choice(bench.loginItem, bench.action, bench.menu);
    bench.loginItem.enabled = true;
    EXPECT_FALSE(bench.action.isChecked());
    emit bench.menu.aboutToShow();
    EXPECT_TRUE(bench.action.isChecked());
    EXPECT_THAT(bench.loginItem.calls, IsEmpty());
}

TEST(LoginItemChoice, what_the_system_does_not_do_stays_unchecked_and_its_settings_open)
{
    for (const auto result : { LoginItem::Result::NeedsApproval, LoginItem::Result::Failed }) {
        LoginItemMenu bench;
        bench.loginItem.result = result;
        const LoginItemChoice choice(bench.loginItem, bench.action, bench.menu);
        bench.action.trigger();
        EXPECT_THAT(bench.loginItem.calls, ElementsAre("on", "settings"));
        EXPECT_FALSE(bench.action.isChecked());
    }
}

} // namespace
} // namespace kestrel::test
