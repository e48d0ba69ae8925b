#include "monitor/ActivityWindow.h"
#include "monitor/HealthHeader.h"
#include "monitor/MonitorButton.h"
#include "panel/DSPWindow.h"
#include "panel/PlugInPanelView.h"
#include "setup/SetupWindow.h"
#include "tests/app/AppDelegateBench.h"

#include <QFileDialog>

#include <gmock/gmock.h>

namespace kestrel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

using Bench = LaunchedBench;

// Calls a function just before the window appears on the screen.
class WhenShown final : public QObject {
public:
    WhenShown(QObject& window, std::function<void()> look)
        : m_look(std::move(look))
    {
        window.installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Show)
            m_look();
        return false;
    }

private:
    std::function<void()> m_look;
};

TEST(ApplicationWindows, without_the_workstation_the_panel_is_empty_before_it_is_shown)
{
    Bench bench;
    bench.receive(ZoneOfA);
    bench.processes.names.clear();
    int code = -1;
    const WhenShown shown(*bench.panel().window(),
        [&] { code = bench.panel().plugInPanelView()->myZonesArray()->at(0).at(0); });
    bench.delegate->newDocument();
    EXPECT_EQ(code, 0);
}

TEST(ApplicationWindows,
    a_panel_that_stayed_on_the_screen_when_the_application_was_hidden_activates_it)
{
    Bench bench;
    bench.workspace.hidesByItself = true;
    bench.delegate->newDocument();
    bench.lookAtAboutBox(); // hides the application, but not the panel
    bench.workspace.calls.clear();
    bench.delegate->newDocument();
    EXPECT_THAT(bench.workspace.calls, ElementsAre("activate"));
}

TEST(ApplicationWindows,
    a_minimised_panel_comes_back_redrawn_and_leaves_the_application_in_the_background)
{
    Bench bench;
    bench.delegate->newDocument();
    bench.panel().window()->setWindowState(Qt::WindowMinimized);
    ASSERT_FALSE(bench.panel().isVisible());
    int redraws = 0;
    QObject::connect(bench.panel().plugInPanelView(), &PlugInPanelView::contentChanged,
        bench.delegate.get(), [&redraws] { ++redraws; });
    bench.delegate->newDocument();
    EXPECT_TRUE(bench.panel().isVisible());
    EXPECT_GT(redraws, 0);
    EXPECT_THAT(bench.workspace.calls, IsEmpty());
}

TEST(ApplicationWindows, closing_the_panel_hides_the_application_and_drops_what_was_only_assigned)
{
    Bench bench;
    bench.delegate->userAssign();
    bench.delegate->newDocument();
    const ButtonEntry working = bench.setup().myShortcutArray()->value(1).array();
    working->replace(ShortcutRecord::Text, QStringLiteral("S"));
    bench.workspace.calls.clear();
    bench.panel().window()->close();
    EXPECT_THAT(bench.workspace.calls, ElementsAre("hide"));
    EXPECT_FALSE(bench.panel().isVisible());
    EXPECT_FALSE(bench.setup().isVisible());
    const ButtonEntry restored = bench.setup().myShortcutArray()->value(1).array();
    EXPECT_EQ(restored->at(ShortcutRecord::Text).text(), QString());
}

TEST(ApplicationWindows, the_menu_opens_the_activity_window_and_its_closing_drops_nothing)
{
    Bench bench;
    bench.delegate->userAssign();
    const ButtonEntry working = bench.setup().myShortcutArray()->value(1).array();
    working->replace(ShortcutRecord::Text, QStringLiteral("S"));
    EXPECT_EQ(bench.delegate->activityWindow(), nullptr);
    bench.workspace.calls.clear();
    for (QAction* const item : LaunchedBench::menu().actions()) {
        if (item->text() == QStringLiteral("Acti&vity…"))
            item->trigger();
    }
    ASSERT_NE(bench.delegate->activityWindow(), nullptr);
    EXPECT_TRUE(bench.delegate->activityWindow()->isVisible());
    EXPECT_THAT(bench.workspace.calls, ElementsAre("activate"));

    bench.delegate->activityWindow()->close();
    QCoreApplication::processEvents();
    EXPECT_FALSE(bench.delegate->activityWindow()->isVisible());
    EXPECT_THAT(bench.workspace.calls, ElementsAre("activate"));
    EXPECT_TRUE(bench.setup().isVisible());
    EXPECT_EQ(working->at(ShortcutRecord::Text).text(), QStringLiteral("S"));
    bench.delegate->showActivity();
    EXPECT_TRUE(bench.delegate->activityWindow()->isVisible());
}

// Closes it as the user does.
void closeActivity(Bench& bench)
{
    bench.workspace.calls.clear();
    bench.delegate->activityWindow()->close();
    QCoreApplication::processEvents();
}

TEST(ApplicationWindows, closing_the_activity_window_brings_back_the_application_before)
{
    Bench bench;
    bench.delegate->showActivity();
    closeActivity(bench);
    EXPECT_THAT(bench.workspace.calls, ElementsAre("hide"));
    EXPECT_FALSE(bench.panel().isVisible());
    bench.delegate->newDocument();
    bench.delegate->showActivity();
    closeActivity(bench);
    EXPECT_THAT(bench.workspace.calls, ElementsAre("hide"));
    EXPECT_TRUE(bench.panel().isVisible()) << "it never has the keyboard";
}

TEST(ApplicationWindows, closing_the_activity_window_leaves_the_others_in_front)
{
    Bench bench;
    bench.delegate->showActivity();
    bench.delegate->saveKeySheet();
    closeActivity(bench);
    EXPECT_THAT(bench.workspace.calls, IsEmpty()) << "the key sheet is being saved";
    bench.delegate->userAssign();
    bench.delegate->showActivity();
    closeActivity(bench);
    EXPECT_THAT(bench.workspace.calls, IsEmpty());
    bench.delegate->showActivity();
    bench.workspace.calls.clear();
    bench.terminate();
    EXPECT_THAT(bench.workspace.calls, Not(testing::Contains("activate")));
}

TEST(ApplicationWindows, the_activity_window_leads_to_the_permission_until_it_is_there)
{
    Bench bench;
    bench.permissions.granted = false;
    bench.tick();
    bench.delegate->showActivity();
    MonitorButton* const button = bench.delegate->activityWindow()->header().permissionButton();
    ASSERT_TRUE(button->isVisible());
    button->click();
    button->click();
    EXPECT_EQ(bench.permissions.requests, 1);
    EXPECT_EQ(bench.permissions.settingsShown, 1);
    bench.permissions.granted = true;
    bench.tick();
    bench.delegate->activityWindow()->refresh();
    EXPECT_FALSE(button->isVisible());
}

TEST(ApplicationWindows, choosing_the_setup_window_gives_it_the_keyboard)
{
    Bench bench;
    bench.delegate->userAssign();
    QWidget other;
    other.show();
    other.activateWindow();
    QCoreApplication::processEvents();
    ASSERT_FALSE(bench.setup().window()->isActiveWindow());
    bench.delegate->userAssign();
    QCoreApplication::processEvents();
    EXPECT_TRUE(bench.setup().window()->isActiveWindow());
}

TEST(ApplicationWindows, the_setup_window_is_filled_anew_when_it_was_hidden_with_the_application)
{
    Bench bench;
    bench.workspace.hidesByItself = true;
    bench.delegate->userAssign();
    bench.delegate->newDocument();
    bench.delegate->myUserAssignFile()->setShortcutTitle(QStringLiteral("Live"), ArchiveValue(1));
    bench.lookAtAboutBox();
    bench.delegate->userAssign();
    const auto& button = *bench.setup().userAssignableButtons().front();
    EXPECT_EQ(button.view()->uniqueName(), QStringLiteral("Live"));
}

TEST(ApplicationWindows, a_minimised_setup_window_comes_back_filled_anew)
{
    Bench bench;
    bench.delegate->userAssign();
    bench.setup().window()->setWindowState(Qt::WindowMinimized);
    bench.delegate->myUserAssignFile()->setShortcutTitle(QStringLiteral("Live"), ArchiveValue(1));
    bench.delegate->userAssign();
    EXPECT_FALSE(bench.setup().window()->isMinimized());
    const auto& button = *bench.setup().userAssignableButtons().front();
    EXPECT_EQ(button.view()->uniqueName(), QStringLiteral("Live"));
}

TEST(ApplicationWindows, after_the_about_box_the_application_hides_when_no_window_is_open)
{
    Bench bench;
    bench.lookAtAboutBox();
    EXPECT_THAT(bench.workspace.calls, ElementsAre("activate", "hide"));
    EXPECT_FALSE(bench.panel().isVisible());
}

TEST(ApplicationWindows, a_second_about_box_does_not_come_up_over_the_first)
{
    Bench bench;
    QTimer closer;
    QObject::connect(&closer, &QTimer::timeout, [] {
        if (QWidget* const open = QApplication::activeModalWidget())
            open->close();
    });
    QTimer::singleShot(0, [&bench, &closer] {
        closer.start(0);
        bench.delegate->about();
    });
    bench.delegate->about();
    EXPECT_THAT(bench.workspace.calls, ElementsAre("activate", "hide"));
}

TEST(ApplicationWindows, after_the_about_box_an_open_panel_is_shown_again)
{
    Bench bench;
    bench.delegate->newDocument();
    bench.lookAtAboutBox();
    EXPECT_THAT(bench.workspace.calls, ElementsAre("activate", "hide"));
    EXPECT_TRUE(bench.panel().isVisible());
}

TEST(ApplicationWindows, after_the_about_box_the_setup_window_alone_stays_as_it_is)
{
    Bench bench;
    bench.delegate->userAssign();
    bench.workspace.calls.clear();
    bench.lookAtAboutBox();
    EXPECT_THAT(bench.workspace.calls, ElementsAre("activate"));
    EXPECT_TRUE(bench.setup().isVisible());
}

TEST(ApplicationWindows, after_the_about_box_with_both_windows_only_the_panel_is_left)
{
    Bench bench;
    bench.delegate->userAssign();
    bench.delegate->newDocument();
    bench.workspace.calls.clear();
    bench.lookAtAboutBox();
    EXPECT_THAT(bench.workspace.calls, ElementsAre("activate", "hide"));
    EXPECT_TRUE(bench.panel().isVisible());
    EXPECT_FALSE(bench.setup().isVisible());
}

TEST(ApplicationWindows, after_the_about_box_a_minimised_setup_window_does_not_keep_the_application)
{
    Bench bench;
    bench.delegate->userAssign();
    bench.setup().window()->setWindowState(Qt::WindowMinimized);
    bench.workspace.calls.clear();
    bench.lookAtAboutBox();
    EXPECT_THAT(bench.workspace.calls, ElementsAre("activate", "hide"));
    EXPECT_TRUE(bench.setup().isVisible()) << "minimised as it was";
}

TEST(ApplicationWindows, the_about_box_comes_up_over_a_sheet_of_the_setup_window)
{
    Bench bench;
    bench.delegate->userAssign();
    bench.setup().load();
    bool wasShown = false;
    QTimer closer;
    QObject::connect(&closer, &QTimer::timeout, [&wasShown] {
        if (auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            wasShown = true;
            box->accept();
        }
    });
    closer.start(0);
    bench.delegate->about();
    EXPECT_TRUE(wasShown);
    for (auto* sheet : bench.setup().window()->findChildren<QFileDialog*>())
        sheet->reject();
}

TEST(ApplicationWindows, a_sheet_that_is_hidden_with_the_windows_is_cancelled)
{
    Bench bench;
    bench.delegate->newDocument();
    bench.delegate->userAssign();
    bench.setup().load();
    bench.lookAtAboutBox(); // hides everything and shows the panel again
    EXPECT_FALSE(bench.setup().isVisible());
    EXPECT_FALSE(bench.setup().visibleFileDialog());
    bench.delegate->userAssign();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST(ApplicationWindows, starting_the_running_application_again_brings_up_the_setup_window)
{
    Bench bench;
    ASSERT_TRUE(bench.workspace.reopened);
    bench.workspace.reopened();
    EXPECT_TRUE(bench.setup().isVisible());
    bench.delegate->applicationWillTerminate();
    EXPECT_FALSE(bench.workspace.reopened);
}

} // namespace
} // namespace kestrel::test
