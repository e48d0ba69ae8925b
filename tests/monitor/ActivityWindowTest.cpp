#include "monitor/RecordingSheet.h"
#include "tests/monitor/MonitorBench.h"

#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QLineEdit>
#include <QMessageBox>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gmock/gmock.h>

namespace kestrel::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

// The timer of the window as it goes off.
class OpenBench : public MonitorBench {
public:
    OpenBench() { window.show(); }

    void look() { window.refresh(); }
    [[nodiscard]] QScrollBar& bar() { return *window.list().verticalScrollBar(); }
};

TEST(ActivityWindow, a_hidden_window_does_nothing_and_shows_all_once_it_opens)
{
    MonitorBench bench;
    bench.beat();
    QTest::qWait(2 * ActivityWindow::RefreshPeriod.count());
    EXPECT_THAT(bench.shown(), IsEmpty());
    bench.window.show();
    EXPECT_THAT(bench.shown(), ElementsAre("Heartbeat"));
    bench.window.hide();
    bench.beat();
    QTest::qWait(2 * ActivityWindow::RefreshPeriod.count());
    EXPECT_EQ(bench.shown().size(), 1U);
}

TEST(ActivityWindow, events_show_as_they_happen)
{
    OpenBench bench;
    bench.beat();
    EXPECT_TRUE(QTest::qWaitFor([&] { return bench.shown().size() == 1; }));
}

TEST(ActivityWindow, a_flood_is_shown_less_often_until_it_ends)
{
    OpenBench bench;
    EXPECT_EQ(bench.window.period(), ActivityWindow::RefreshPeriod);
    const auto happen = [&bench](int events) {
        for (int i = 0; i < events; ++i)
            bench.knob(1, 1);
        bench.look();
        return bench.window.period();
    };
    EXPECT_EQ(happen(40), ActivityWindow::RefreshPeriod);
    EXPECT_EQ(happen(41), ActivityWindow::FloodPeriod);
    EXPECT_EQ(happen(201), ActivityWindow::FloodPeriod);
    EXPECT_EQ(happen(200), ActivityWindow::RefreshPeriod);
}

TEST(ActivityWindow, follows_the_newest_event_until_the_user_scrolls_up)
{
    OpenBench bench;
    for (int i = 0; i < 100; ++i)
        bench.beat();
    bench.look();
    EXPECT_EQ(bench.bar().value(), bench.bar().maximum());
    EXPECT_GT(bench.bar().maximum(), 0);
    bench.bar().setValue(10);
    bench.beat();
    bench.look();
    EXPECT_EQ(bench.bar().value(), 10);
}

TEST(ActivityWindow, what_is_read_stays_in_place_while_older_events_are_dropped)
{
    OpenBench bench;
    for (std::size_t i = 0; i < ActivityLog::Capacity; ++i)
        bench.beat();
    bench.look();
    bench.bar().setValue(50);
    for (int i = 0; i < 20; ++i)
        bench.beat();
    bench.look();
    EXPECT_EQ(bench.bar().value(), 30);
}

TEST(ActivityWindow, filters_hide_and_show_groups)
{
    OpenBench bench;
    bench.beat();
    bench.press(1, ActivityEvent::Outcome::NoShortcut);
    bench.look();
    click(bench.button("Show heartbeats"));
    EXPECT_THAT(bench.shown(), ElementsAre("Key 1 pressed"));
    click(bench.button("Show keys"));
    EXPECT_THAT(bench.shown(), IsEmpty());
    click(bench.button("Show heartbeats"));
    EXPECT_THAT(bench.shown(), ElementsAre("Heartbeat"));
}

TEST(ActivityWindow, pause_holds_the_list_and_not_the_log)
{
    OpenBench bench;
    click(bench.button("Pause the list"));
    bench.beat();
    bench.look();
    EXPECT_THAT(bench.shown(), IsEmpty());
    click(bench.button("Pause the list"));
    EXPECT_THAT(bench.shown(), ElementsAre("Heartbeat"));
}

TEST(ActivityWindow, clear_empties_the_list)
{
    OpenBench bench;
    bench.beat();
    bench.look();
    click(bench.button("Clear the list"));
    EXPECT_THAT(bench.shown(), IsEmpty());
}

TEST(ActivityWindow, copy_takes_the_selected_rows_or_all)
{
    qputenv("TZ", "UTC");
    OpenBench bench;
    bench.press(6, ActivityEvent::Outcome::Typed, "⌘S");
    bench.link(ActivityEvent::Kind::ConsoleSilent);
    bench.look();
    click(bench.button("Copy the selected events, or all"));
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(),
        "01:00:00.000  Key 6 pressed → typed ⌘S  [B0 0F 40 2F 45]\n"
        "01:00:00.000  No heartbeat for 5 seconds\n");
    bench.window.list().selectRow(1);
    QTest::keyClick(&bench.window.list(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(),
        "01:00:00.000  No heartbeat for 5 seconds\n");
}

TEST(ActivityWindow, saves_a_script_for_the_console)
{
    OpenBench bench;
    bench.press(5, ActivityEvent::Outcome::NoShortcut);
    click(bench.button("Clear the list"));
    bench.press(6, ActivityEvent::Outcome::Typed, "⌘S");
    const QTemporaryDir folder;
    const QString path = folder.filePath("recording.txt");
    click(bench.button("Save as a console script"));
    auto* const sheet = bench.window.findChild<QFileDialog*>();
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(sheet->windowModality(), Qt::WindowModal);
    sheet->selectFile(path);
    static_cast<QDialog*>(sheet)->done(QDialog::Accepted);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const std::string script = file.readAll().toStdString();
    EXPECT_THAT(script, HasSubstr("\nat 0.0000 send B0 0F 40 2F 45\n"));
    EXPECT_THAT(script, Not(HasSubstr("Key 5"))) << "it was cleared";
}

TEST(ActivityWindow, a_recording_gets_the_extension_and_the_next_one_is_saved_beside_it)
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    OpenBench bench;
    const QTemporaryDir folder;
    click(bench.button("Save as a console script"));
    auto* const sheet = bench.window.findChild<RecordingSheet*>();
    ASSERT_NE(sheet, nullptr);
    sheet->findChild<QLineEdit*>("fileNameEdit")->setText(folder.filePath("take 1.2"));
    sheet->accept();
    EXPECT_TRUE(QFile::exists(folder.filePath("take 1.2.txt")));
    click(bench.button("Save as a console script"));
    EXPECT_EQ(
        bench.window.findChildren<RecordingSheet*>().back()->directory(), QDir(folder.path()));
}

TEST(ActivityWindow, says_why_a_recording_could_not_be_saved)
{
    OpenBench bench;
    bench.files.failure = "No space left on device";
    const QTemporaryDir folder;
    click(bench.button("Save as a console script"));
    auto* const sheet = bench.window.findChild<QFileDialog*>();
    ASSERT_NE(sheet, nullptr);
    sheet->selectFile(folder.filePath("recording.txt"));
    static_cast<QDialog*>(sheet)->done(QDialog::Accepted);
    const auto* const alert = bench.window.findChild<QMessageBox*>();
    ASSERT_NE(alert, nullptr);
    EXPECT_EQ(alert->informativeText(), "No space left on device");
}

TEST(ActivityWindow, says_what_is_wrong_and_leads_to_the_permission)
{
    OpenBench bench;
    bench.beat();
    bench.look();
    EXPECT_THAT(bench.window.header().title().toStdString(), HasSubstr("Online since"));
    EXPECT_FALSE(bench.window.header().permissionButton()->isVisible());
    bench.press(1, ActivityEvent::Outcome::NotPermitted);
    bench.look();
    EXPECT_THAT(bench.window.header().sentence().toStdString(), HasSubstr("does not permit"));
    ASSERT_TRUE(bench.window.header().permissionButton()->isVisible());
    click(*bench.window.header().permissionButton());
    EXPECT_EQ(bench.permissionShown, 1);
    bench.health.notePermission(true);
    bench.look();
    EXPECT_FALSE(bench.window.header().permissionButton()->isVisible());
}

TEST(ActivityWindow, the_time_online_is_a_time_of_day)
{
    qputenv("TZ", "UTC");
    OpenBench bench;
    bench.beat();
    bench.clock.advance(10min);
    bench.look();
    EXPECT_EQ(bench.window.header().title(), "Online since 01:00:00");
}

} // namespace
} // namespace kestrel::test
