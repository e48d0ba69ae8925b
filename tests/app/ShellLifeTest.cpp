#include "setup/SetupWindow.h"
#include "tests/app/AppDelegateBench.h"

#include <QAction>
#include <QMenu>
#include <QPointer>

#include <gmock/gmock.h>

#include <algorithm>

namespace kestrel::test {
namespace {

using testing::ElementsAre;

class RecordedShell : public AppDelegateBench {
public:
    void launch() { delegate->applicationDidFinishLaunching(); }

    // The status item's menu.
    static QMenu& menu()
    {
        QMenu* found = nullptr;
        for (QWidget* widget : QApplication::allWidgets()) {
            if (widget->objectName() == QStringLiteral("statusMenu"))
                found = qobject_cast<QMenu*>(widget);
        }
        if (!found)
            throw std::runtime_error("there is no status menu");
        return *found;
    }
    static QAction& action(const char* name)
    {
        for (QAction* action : menu().actions()) {
            if (action->objectName() == QLatin1String(name))
                return *action;
        }
        throw std::runtime_error(std::string("the menu does not offer ") + name);
    }
};

TEST(ShellLife, nothing_exists_before_the_launch)
{
    const RecordedShell bench;
    EXPECT_EQ(bench.delegate->myWindowController(), nullptr);
    EXPECT_EQ(bench.delegate->userAssignableWindowController(), nullptr);
    EXPECT_EQ(bench.delegate->myUserAssignFile(), nullptr);
    EXPECT_FALSE(bench.delegate->activeSenceTimer().isActive());
}

TEST(ShellLife, launching_again_keeps_what_there_is)
{
    RecordedShell bench;
    bench.launch();
    const auto* panel = bench.delegate->myWindowController();
    const auto* setup = bench.delegate->userAssignableWindowController();
    const auto live = bench.delegate->myUserAssignFile();
    bench.launch();
    EXPECT_EQ(bench.delegate->myWindowController(), panel);
    EXPECT_EQ(bench.delegate->userAssignableWindowController(), setup);
    EXPECT_EQ(bench.delegate->myUserAssignFile(), live);
}

TEST(ShellLife, the_end_stops_the_timer_then_releases_the_link_then_stores_the_set)
{
    RecordedShell bench;
    bench.launch();
    bench.tick();
    bench.tick();
    bench.midiServices.calls.clear();
    bool isTimerStopped = false;
    std::vector<std::string> callsBefore;
    bench.defaults.onSynchronise = [&] {
        isTimerStopped = !bench.delegate->activeSenceTimer().isActive();
        callsBefore = bench.midiServices.calls;
    };
    bench.delegate->applicationWillTerminate();
    EXPECT_EQ(bench.defaults.synchronised, 1);
    EXPECT_TRUE(isTimerStopped);
    EXPECT_THAT(callsBefore, ElementsAre("dispose port 2", "dispose port 3", "dispose client 1"));
    EXPECT_EQ(bench.midiServices.calls.size(), 3u) << "released once";
}

TEST(ShellLife, defaults_that_cannot_be_written_do_not_keep_it_from_ending)
{
    RecordedShell bench;
    bench.launch();
    bench.defaults.failing = true;
    bench.delegate->applicationWillTerminate();
    EXPECT_TRUE(bench.defaults.stored.empty());
}

TEST(ShellLife, a_file_opened_before_the_launch_is_live_and_the_launch_leaves_it)
{
    RecordedShell bench;
    const QString file
        = bench.write(QStringLiteral("1.ZKCF"), AppDelegateBench::setWithTitle("First"));
    bench.delegate->applicationOpenFiles({ file });
    EXPECT_EQ(bench.liveTitle(), QStringLiteral("First"));
    const auto* setup = bench.delegate->userAssignableWindowController();
    bench.launch();
    EXPECT_EQ(bench.delegate->userAssignableWindowController(), setup);
    EXPECT_EQ(bench.liveTitle(), QStringLiteral("First"));
}

TEST(ShellLife, a_setup_window_made_before_the_launch_still_brings_the_panel_back)
{
    RecordedShell bench;
    bench.delegate->applicationOpenFiles({ QStringLiteral("/no such file") });
    bench.launch();
    bench.delegate->newDocument();
    bench.delegate->userAssign();
    bench.setup().window()->close();
    EXPECT_FALSE(bench.setup().isVisible());
    EXPECT_TRUE(bench.panel().isVisible());
}

TEST(ShellLife, the_menu_offers_eight_actions_and_hides_the_two_that_do_nothing)
{
    RecordedShell bench;
    bench.launch();
    QStringList shown;
    for (const QAction* action : RecordedShell::menu().actions()) {
        if (action->isVisible() && !action->isSeparator())
            shown.append(action->objectName());
    }
    EXPECT_EQ(shown,
        QStringList({ "newDocument", "userAssign", "saveKeySheet", "activity", "kestrel",
            "launchAtLogin", "about", "quit" }));
    EXPECT_FALSE(RecordedShell::action("openDocument").isVisible());
    EXPECT_FALSE(RecordedShell::action("saveDocument").isVisible());
}

TEST(ShellLife, the_menu_reaches_the_actions)
{
    RecordedShell bench;
    bench.launch();
    RecordedShell::action("newDocument").trigger();
    EXPECT_TRUE(bench.panel().isVisible());
    RecordedShell::action("userAssign").trigger();
    EXPECT_TRUE(bench.setup().isVisible());
    bench.workspace.calls.clear();
    RecordedShell::action("kestrel").trigger();
    EXPECT_THAT(bench.workspace.calls,
        ElementsAre("open /Library/PreferencePanes/HolvikZentaMIDI.prefPane"));
    bool wasAboutShown = false;
    QTimer::singleShot(0, [&wasAboutShown] {
        wasAboutShown = QApplication::activeModalWidget() != nullptr;
        QApplication::activeModalWidget()->close();
    });
    RecordedShell::action("about").trigger();
    EXPECT_TRUE(wasAboutShown);
    for (const char* name : { "openDocument", "saveDocument" })
        RecordedShell::action(name).trigger();
    EXPECT_EQ(bench.defaults.synchronised, 0);
}

TEST(ShellLife, quit_ends_the_event_loop)
{
    RecordedShell bench;
    bench.launch();
    QTimer::singleShot(0, [] { RecordedShell::action("quit").trigger(); });
    EXPECT_EQ(QApplication::exec(), 0);
}

TEST(ShellLife, quit_stores_where_the_open_setup_window_is)
{
    RecordedShell bench;
    bench.launch();
    RecordedShell::action("userAssign").trigger();
    const auto hasFrame = [&bench] {
        return std::any_of(bench.defaults.stored.begin(), bench.defaults.stored.end(),
            [](const auto& each) { return each.first.ends_with("UAssignWindow"); });
    };
    EXPECT_FALSE(hasFrame());
    QTimer::singleShot(0, [] { RecordedShell::action("quit").trigger(); });
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_TRUE(hasFrame());
}

TEST(ShellLife, launching_again_keeps_the_status_item_and_its_menu)
{
    RecordedShell bench;
    bench.launch();
    const QPointer<QMenu> menu(&RecordedShell::menu());
    bench.launch();
    EXPECT_FALSE(menu.isNull());
    EXPECT_EQ(&RecordedShell::menu(), menu.data());
}

} // namespace
} // namespace kestrel::test
