#include "panel/DSPWindow.h"
#include "panel/PlugInPanelView.h"
#include "tests/app/AppDelegateBench.h"

#include <QDir>
#include <QElapsedTimer>
#include <QMenu>
#include <QThread>

#include <gmock/gmock.h>

#include <algorithm>

namespace kestrel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Bench = LaunchedBench;

TEST(AppDelegate, launching_restores_the_set_shows_no_window_and_leaves_the_link_closed)
{
    const Bench bench;
    EXPECT_EQ(bench.delegate->myUserAssignFile()->count(), 12u);
    EXPECT_FALSE(bench.panel().isVisible());
    EXPECT_FALSE(bench.setup().isVisible());
    EXPECT_THAT(bench.midiServices.calls, IsEmpty());
    EXPECT_EQ(bench.defaults.synchronised, 0);
}

TEST(AppDelegate, packets_reach_the_panel_and_the_keyboard)
{
    Bench bench;
    bench.workspace.applications = { { "Pro Tools", true } };
    ArchiveArray& entry = *bench.delegate->myUserAssignFile()->getSwitchShortcut(1);
    entry.replace(ShortcutRecord::KeyCode, ArchiveValue(1));
    entry.replace(ShortcutRecord::Text, ArchiveValue(QStringLiteral("S")));
    bench.receive({ 0xB0, 0x0F, 0x40, 0x2F, 0x40 });
    EXPECT_EQ(bench.keyEvents.take(), "key 1 down");
    bench.receive({ 0xB0, 0x18, 0x05 });
    EXPECT_EQ(bench.panel().plugInPanelView()->myKnobArray()->at(0), 5);
    bench.receive(ZoneOfA);
    EXPECT_EQ(bench.panel().plugInPanelView()->myZonesArray()->at(0).at(0), 'A');
    bench.receive({ 0x90, 0, 0 });
    EXPECT_EQ(bench.midiServices.sent.size(), 1u);
}

TEST(AppDelegate, going_offline_clears_the_panel)
{
    Bench bench;
    bench.receive({ 0x90, 0, 0 }); // online
    bench.receive(ZoneOfA);
    bench.receive({ 0xB0, 0x18, 0x05 });
    bench.receive({ 0xB0, 0x0C, 0x1C, 0x2C, 0x41 });
    const PlugInPanelView& view = *bench.panel().plugInPanelView();
    EXPECT_EQ(view.mySwitchArray()->at(1), 0x41);
    bench.processes.names.clear();
    bench.tick();
    EXPECT_EQ(view.myZonesArray()->at(0).at(0), ' ');
    EXPECT_EQ(view.myKnobArray()->at(0), 0);
    EXPECT_EQ(view.mySwitchArray()->at(1), 0x01);
}

TEST(AppDelegate, showing_the_panel_leaves_the_application_in_the_background)
{
    Bench bench;
    bench.delegate->newDocument();
    EXPECT_TRUE(bench.panel().isVisible());
    EXPECT_THAT(bench.workspace.calls, IsEmpty());
}

TEST(AppDelegate, showing_the_panel_again_activates_the_application)
{
    Bench bench;
    bench.delegate->newDocument();
    bench.delegate->newDocument();
    EXPECT_TRUE(bench.panel().isVisible());
    EXPECT_THAT(bench.workspace.calls, ElementsAre("activate"));
}

TEST(AppDelegate, a_panel_that_was_hidden_is_redrawn_and_one_that_is_open_is_not)
{
    Bench bench;
    int redraws = 0;
    QObject::connect(bench.panel().plugInPanelView(), &PlugInPanelView::contentChanged,
        bench.delegate.get(), [&redraws] { ++redraws; });
    bench.delegate->newDocument();
    EXPECT_EQ(redraws, 1);
    bench.delegate->newDocument();
    EXPECT_EQ(redraws, 1);
}

TEST(AppDelegate, the_panel_opens_empty_while_the_workstation_does_not_run)
{
    Bench bench;
    bench.receive(ZoneOfA);
    bench.delegate->newDocument();
    EXPECT_EQ(bench.panel().plugInPanelView()->myZonesArray()->at(0).at(0), 'A');
    bench.processes.names.clear();
    bench.delegate->newDocument();
    EXPECT_EQ(bench.panel().plugInPanelView()->myZonesArray()->at(0).at(0), 0);
}

TEST(AppDelegate, the_setup_window_comes_to_the_front_and_is_filled_only_when_it_was_hidden)
{
    Bench bench;
    bench.delegate->myUserAssignFile()->setShortcutTitle(QStringLiteral("Live"), ArchiveValue(1));
    bench.delegate->userAssign();
    EXPECT_TRUE(bench.setup().isVisible());
    EXPECT_THAT(bench.workspace.calls, ElementsAre("activate"));
    const auto& button = *bench.setup().userAssignableButtons().front();
    EXPECT_EQ(button.view()->uniqueName(), QStringLiteral("Live"));

    bench.delegate->myUserAssignFile()->setShortcutTitle(QStringLiteral("Later"), ArchiveValue(1));
    bench.delegate->userAssign();
    EXPECT_EQ(button.view()->uniqueName(), QStringLiteral("Live"));
}

TEST(AppDelegate, without_a_driver_the_about_box_ends_in_two_line_feeds)
{
    Bench bench;
    EXPECT_EQ(bench.lookAtAboutBox(),
        QStringLiteral("(Console:V%1)\n\nCopyright © 2026 The Kestrel maintainers\n\n")
            .arg(QStringLiteral(KESTREL_VERSION)));
}

TEST(AppDelegate, the_console_preferences_are_opened_by_the_workspace)
{
    Bench bench;
    bench.delegate->kestrel();
    EXPECT_THAT(bench.workspace.calls,
        ElementsAre("open /Library/PreferencePanes/HolvikZentaMIDI.prefPane"));
}

TEST(AppDelegate, the_empty_actions_do_nothing)
{
    Bench bench;
    bench.delegate->openDocument();
    bench.delegate->saveDocument();
    EXPECT_THAT(bench.workspace.calls, IsEmpty());
    EXPECT_EQ(bench.defaults.synchronised, 0);
}

TEST(AppDelegate, a_key_that_is_kept_back_asks_for_the_permission_once)
{
    Bench bench;
    bench.workspace.applications = { { "Pro Tools", true } };
    ArchiveArray& entry = *bench.delegate->myUserAssignFile()->getSwitchShortcut(1);
    entry.replace(ShortcutRecord::Text, ArchiveValue(QStringLiteral("A")));
    bench.keyEvents.result = KeyEvents::Result::NotPermitted;
    EXPECT_EQ(bench.permissions.requests, 0);
    bench.receive({ 0xB0, 0x0F, 0x40, 0x2F, 0x40 });
    bench.receive({ 0xB0, 0x0F, 0x40, 0x2F, 0x00 });
    EXPECT_EQ(bench.permissions.requests, 1);
}

TEST(AppDelegate, the_menu_says_that_the_permission_is_missing_until_it_is_there)
{
    const Bench bench;
    const qsizetype usual = Bench::menu().actions().size();
    bench.permissions.granted = false;
    bench.tick();
    ASSERT_EQ(Bench::menu().actions().size(), usual + 2);
    EXPECT_EQ(Bench::menu().actions().constFirst()->text(),
        QString::fromUtf8("Keys Need the Accessibility Permission…"));
    bench.permissions.granted = true;
    bench.tick();
    EXPECT_EQ(Bench::menu().actions().size(), usual);
    EXPECT_EQ(bench.permissions.requests, 0);
}

TEST(AppDelegate, the_menu_says_that_the_assignments_cannot_be_stored_until_they_can)
{
    Bench bench;
    const qsizetype usual = Bench::menu().actions().size();
    ASSERT_TRUE(QDir().mkdir(bench.recoveryFile())); // a folder in the place of the file
    bench.delegate->applicationOpenFiles(
        { bench.write(QStringLiteral("1.ZKCF"), Bench::setWithTitle("First")) });
    bench.tick();
    ASSERT_EQ(Bench::menu().actions().size(), usual + 2);
    const auto notice = [] { return Bench::menu().actions().constFirst(); };
    EXPECT_EQ(notice()->text(),
        QStringLiteral("Assignments Cannot Be Stored: Filename refers to a directory"));
    notice()->trigger(); // tries in vain
    bench.tick();
    EXPECT_EQ(Bench::menu().actions().size(), usual + 2);
    ASSERT_TRUE(QDir().rmdir(bench.recoveryFile()));
    notice()->trigger();
    bench.tick();
    EXPECT_EQ(Bench::menu().actions().size(), usual);
    EXPECT_TRUE(QFile::exists(bench.recoveryFile()));
}

TEST(AppDelegate, a_set_that_became_live_outlives_a_run_that_is_killed_or_cannot_store_it)
{
    Bench bench;
    const QString file = bench.write(QStringLiteral("1.ZKCF"), Bench::setWithTitle("First"));
    bench.delegate->applicationOpenFiles({ file });
    AppDelegate next(bench.platform, bench.mainLoop, bench.clock);
    next.applicationDidFinishLaunching();
    EXPECT_EQ(next.myUserAssignFile()->getShortcutTitle(ArchiveValue(1)), QString("First"));
    EXPECT_TRUE(QFile::remove(bench.recoveryFile()));
    bench.defaults.failing = true;
    next.applicationWillTerminate();
    EXPECT_TRUE(QFile::exists(bench.recoveryFile()));
    bench.defaults.failing = false;
    bench.delegate->applicationWillTerminate();
    EXPECT_FALSE(QFile::exists(bench.recoveryFile()));
    EXPECT_EQ(bench.defaults.stored.at("PT_UserAssignTitle"),
        bench.delegate->myUserAssignFile()->getTitleData());
}

TEST(AppDelegate, the_menu_offers_to_launch_at_login)
{
    const Bench bench;
    const auto actions = Bench::menu().actions();
    const auto item = std::find_if(actions.begin(), actions.end(),
        [](const QAction* action) { return action->text() == QLatin1String("&Launch at Login"); });
    ASSERT_NE(item, actions.end());
    EXPECT_TRUE((*item)->isCheckable());
    (*item)->trigger();
    EXPECT_TRUE((*item)->isChecked());
    EXPECT_THAT(bench.loginItem.calls, ElementsAre("on"));
}

TEST(AppDelegate, ending_with_a_closed_link_stores_the_set_and_releases_nothing)
{
    Bench bench;
    bench.delegate->applicationWillTerminate();
    EXPECT_THAT(bench.midiServices.calls, IsEmpty());
    EXPECT_EQ(bench.defaults.synchronised, 1);
    EXPECT_TRUE(bench.defaults.stored.contains("PT_UserAssign"));
    EXPECT_TRUE(bench.defaults.stored.contains("PT_UserAssignTitle"));
}

TEST(AppDelegate, the_supervision_starts_with_the_launch_and_comes_every_five_seconds)
{
    Bench bench;
    AppDelegate notLaunched(bench.platform, bench.mainLoop, bench.clock);
    EXPECT_FALSE(notLaunched.activeSenceTimer().isActive());

    const QTimer& timer = bench.delegate->activeSenceTimer();
    EXPECT_TRUE(timer.isActive());
    EXPECT_FALSE(timer.isSingleShot());
    EXPECT_EQ(timer.interval(), 5000);
    bench.midiServices.deviceList = { device(1, "ZENTA", 5) };
    bench.tick();
    EXPECT_THAT(bench.midiServices.calls, IsEmpty()) << "the first one arms the clock";
    bench.tick();
    EXPECT_EQ(bench.midiServices.calls.back(), "connect 141");
}

// Qt moves the ticks of a coarse timer by up to a quarter of a second, to where other timers tick.
TEST(AppDelegate, the_first_check_comes_five_seconds_after_the_launch_to_the_millisecond)
{
    const LaunchedBench bench;
    QTimer& timer = bench.delegate->activeSenceTimer();
    for (int start = 0; start < 7; ++start) {
        QThread::msleep(13);
        QElapsedTimer sinceStart;
        sinceStart.start();
        timer.start();
        const int remaining = timer.remainingTime();
        EXPECT_LE(remaining, 5000);
        EXPECT_GE(remaining + sinceStart.elapsed(), 4999);
    }
}

TEST(AppDelegate, ending_with_an_open_link_takes_it_down_and_lets_every_key_go)
{
    Bench bench;
    bench.midiServices.deviceList = { device(1, "ZENTA", 5) };
    bench.tick();
    bench.tick();
    bench.midiServices.calls.clear();
    bench.delegate->applicationWillTerminate();
    EXPECT_FALSE(bench.delegate->activeSenceTimer().isActive());
    EXPECT_THAT(bench.midiServices.calls,
        ElementsAre("dispose port 2", "dispose port 3", "dispose client 1"));
    EXPECT_EQ(bench.keyEvents.take(), "release all");
    EXPECT_EQ(bench.defaults.synchronised, 1);
}

TEST(AppDelegate, lost_packets_let_every_key_go)
{
    Bench bench;
    bench.midiServices.packetsLost();
    EXPECT_EQ(bench.keyEvents.take(), "release all");
}

TEST(AppDelegate, ending_twice_stores_once)
{
    Bench bench;
    bench.delegate->applicationWillTerminate();
    bench.delegate->applicationWillTerminate();
    EXPECT_EQ(bench.defaults.synchronised, 1);
}

TEST(AppDelegate, of_several_opened_files_the_first_becomes_live_at_once)
{
    Bench bench;
    const QString first = bench.write(QStringLiteral("1.ZKCF"), Bench::setWithTitle("First"));
    const QString second = bench.write(QStringLiteral("2.ZKCF"), Bench::setWithTitle("Second"));
    bench.delegate->applicationOpenFiles({ first, second });
    EXPECT_EQ(bench.liveTitle(), QStringLiteral("First"));
    EXPECT_EQ(bench.defaults.synchronised, 0) << "stored only at the end";
}

TEST(AppDelegate, a_file_that_becomes_live_lets_go_of_what_the_old_set_holds_down)
{
    Bench bench;
    const QString broken = bench.write(QStringLiteral("1.ZKCF"), "bplist00 no more");
    const QString sound = bench.write(QStringLiteral("2.ZKCF"), Bench::setWithTitle("Second"));
    bench.delegate->applicationOpenFiles({ broken });
    EXPECT_EQ(bench.keyEvents.take(), "");
    bench.delegate->applicationOpenFiles({ sound });
    EXPECT_EQ(bench.keyEvents.take(), "release all");
}

TEST(AppDelegate, a_file_that_is_no_set_is_passed_over_in_silence)
{
    Bench bench;
    const QString broken = bench.write(QStringLiteral("1.ZKCF"), "bplist00 no more");
    const QString sound = bench.write(QStringLiteral("2.ZKCF"), Bench::setWithTitle("Second"));
    bench.delegate->applicationOpenFiles({ broken, sound });
    EXPECT_EQ(bench.liveTitle(), QString());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    bench.delegate->applicationOpenFiles({});
    EXPECT_EQ(bench.liveTitle(), QString());
}

TEST(AppDelegate, a_file_opened_from_the_file_manager_leaves_the_focus_of_the_setup_window)
{
    Bench bench;
    bench.delegate->userAssign();
    MyShortcutField::makeWindowFirstResponder(*bench.setup().window());
    ASSERT_FALSE(bench.setup().getMyShortcutField(0)->isFirstResponder());
    bench.delegate->applicationOpenFiles(
        { bench.write(QStringLiteral("1.ZKCF"), Bench::setWithTitle("First")) });
    EXPECT_EQ(bench.liveTitle(), QStringLiteral("First"));
    EXPECT_FALSE(bench.setup().getMyShortcutField(0)->isFirstResponder());
}

} // namespace
} // namespace kestrel::test
