#include "app/TrayMenuOpener.h"

#include <QCoreApplication>
#include <QMenu>

#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

struct TrayMenu {
    TrayMenu() { menu.addAction(QStringLiteral("An item")); }

    // Processes all events that are pending.
    static void settle() { QCoreApplication::processEvents(); }

    QMenu menu;
    TrayMenuOpener opener { menu };
};

TEST(TrayMenuOpener, opens_the_menu_where_the_tray_does_not)
{
    TrayMenu bench;
    bench.opener.activated(QSystemTrayIcon::Trigger);
    EXPECT_FALSE(bench.menu.isVisible());
    TrayMenu::settle();
    EXPECT_TRUE(bench.menu.isVisible());
}

TEST(TrayMenuOpener, opens_none_beside_the_one_that_the_tray_opens)
{
    TrayMenu bench;
    bench.opener.activated(QSystemTrayIcon::Trigger);
    emit bench.menu.aboutToShow(); // the tray shows the menu itself
    TrayMenu::settle();
    EXPECT_FALSE(bench.menu.isVisible());
}

TEST(TrayMenuOpener, opens_none_after_the_one_of_the_tray_has_closed)
{
    TrayMenu bench;
    bench.opener.activated(QSystemTrayIcon::Trigger);
    emit bench.menu.aboutToShow();
    emit bench.menu.aboutToHide();
    TrayMenu::settle();
    EXPECT_FALSE(bench.menu.isVisible());
}

TEST(TrayMenuOpener, opens_the_menu_again_after_it_was_closed)
{
    TrayMenu bench;
    bench.opener.activated(QSystemTrayIcon::Trigger);
    TrayMenu::settle();
    bench.menu.hide();
    bench.opener.activated(QSystemTrayIcon::Trigger);
    TrayMenu::settle();
    EXPECT_TRUE(bench.menu.isVisible());
}

TEST(TrayMenuOpener, other_buttons_open_nothing)
{
    TrayMenu bench;
    bench.opener.activated(QSystemTrayIcon::Context);
    bench.opener.activated(QSystemTrayIcon::MiddleClick);
    TrayMenu::settle();
    EXPECT_FALSE(bench.menu.isVisible());
}

} // namespace
} // namespace kestrel::test
