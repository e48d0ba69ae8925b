#include "tests/setup/SetupBench.h"

#include <QCoreApplication>
#include <QDialog>
#include <QMenu>
#include <QMessageBox>

namespace kestrel::test {
namespace {

using Calls = std::vector<std::string>;

struct RefusingWindow : QWidget {
    void closeEvent(QCloseEvent* event) override { event->ignore(); }
};

TEST(Closing, the_application_is_hidden_once)
{
    SetupBench bench;
    bench.open();
    bench.controller.window()->close();
    EXPECT_EQ(bench.calls, Calls { "hide" });
}

TEST(Closing, a_panel_that_was_visible_is_shown_again_after_hiding)
{
    SetupBench bench;
    bench.panel.visible = true;
    bench.open();
    bench.controller.cancel();
    EXPECT_EQ(bench.calls, (Calls { "hide", "show panel" }));
}

TEST(Closing, the_close_box_restores_the_working_copy_and_closes_rename_boxes)
{
    SetupBench bench;
    bench.give(1, 0, 0, 0, "A");
    bench.live->setShortcutTitle("Stored", 1);
    bench.open();
    press(bench.field(0), Keys::F5);
    bench.controller.assign();
    doubleClick(bench.button(0));
    ASSERT_NE(bench.button(0).editBox(), nullptr);
    bench.controller.window()->close();
    EXPECT_EQ(bench.workingText(1), u"A");
    EXPECT_EQ(bench.button(0).editBox(), nullptr);
}

TEST(Closing, only_ok_makes_a_set_live)
{
    SetupBench bench;
    bench.open();
    press(bench.field(0), Keys::F5);
    bench.controller.assign();
    bench.controller.cancel();
    bench.open();
    bench.controller.window()->close();
    EXPECT_EQ(bench.becameLive, 0);
    bench.open();
    press(bench.field(0), Keys::F5);
    bench.controller.assign();
    bench.controller.ok();
    EXPECT_EQ(bench.becameLive, 1);
    EXPECT_EQ(bench.liveWhenItBecame, "F5");
}

TEST(Closing, after_the_first_ok_closing_restores_nothing_any_more)
{
    SetupBench bench;
    bench.open();
    bench.controller.ok();
    EXPECT_TRUE(bench.controller.bOKclose());
    bench.open();
    press(bench.field(0), Keys::F5);
    bench.controller.assign();
    bench.controller.cancel();
    EXPECT_TRUE(bench.controller.bOKclose());
    EXPECT_EQ(bench.workingText(1), u"F5");
    EXPECT_EQ(bench.liveText(1), u"");
    bench.open();
    EXPECT_EQ(bench.workingText(1), u"");
}

TEST(Closing, any_other_window_that_closes_runs_the_same_path)
{
    SetupBench bench;
    bench.give(1, 0, 0, 0, "A");
    bench.open();
    press(bench.field(0), Keys::F5);
    bench.controller.assign();
    QWidget other;
    other.show();
    other.close();
    EXPECT_EQ(bench.calls, Calls { "hide" });
    EXPECT_EQ(bench.workingText(1), u"A");
}

TEST(Closing, while_a_file_dialog_is_up_only_its_marker_is_taken_away)
{
    SetupBench bench;
    bench.open();
    bench.controller.setVisibleFileDialog(true);
    bench.center.post(NotificationName::windowWillClose);
    EXPECT_EQ(bench.calls, Calls {});
    EXPECT_FALSE(bench.controller.visibleFileDialog());
    bench.center.post(NotificationName::windowWillClose);
    EXPECT_EQ(bench.calls, Calls { "hide" });
}

TEST(Closing, the_window_takes_the_focus_from_the_field_and_its_frame_is_saved_even_then)
{
    SetupBench bench;
    bench.open();
    ASSERT_TRUE(bench.field(0).isFirstResponder());
    bench.controller.setVisibleFileDialog(true); // keeps the close path from running
    bench.defaults.current.clear();
    bench.controller.cancel();
    EXPECT_EQ(bench.calls, Calls {});
    EXPECT_FALSE(bench.field(0).bBecome());
    EXPECT_EQ(bench.controller.window()->focusWidget(), nullptr);
    EXPECT_TRUE(bench.defaults.current.contains("NSWindow Frame UAssignWindow"));
}

TEST(Closing, a_window_that_was_hidden_with_the_application_comes_back_with_the_live_set)
{
    SetupBench bench;
    bench.give(1, 0, 0, 0, "A");
    bench.live->setShortcutTitle("Stored", 1);
    bench.open();
    bench.controller.ok();
    bench.open();
    press(bench.field(0), Keys::F5);
    bench.controller.assign();
    doubleClick(bench.button(0));
    bench.controller.window()->hide();
    EXPECT_EQ(bench.workingText(1), u"F5") << "hiding is not closing";
    bench.open();
    EXPECT_EQ(bench.workingText(1), u"A");
    EXPECT_EQ(bench.field(0).stringValue(), u"A");
    EXPECT_EQ(bench.button(0).editBox(), nullptr);
}

TEST(Closing, without_a_panel_and_a_live_set_it_just_hides)
{
    SetupBench outer;
    UserAssinableWindowController fresh(outer.services());
    fresh.closeDialog();
    outer.center.post(NotificationName::windowWillClose);
    EXPECT_EQ(outer.calls, (Calls { "hide", "hide" }));
}

TEST(Closing, a_destroyed_controller_hears_nothing)
{
    SetupBench bench;
    {
        UserAssinableWindowController other(bench.services());
    }
    bench.center.post(NotificationName::windowWillClose);
    EXPECT_EQ(bench.calls, Calls { "hide" });
}

struct ObserverBench {
    NotificationCenter center;
    WindowCloseObserver observer { center };
    NotificationCounter counter { center, NotificationName::windowWillClose };
};

TEST(WindowCloseObserver, windows_and_dialogs_are_posted_once_when_they_close)
{
    ObserverBench bench;
    QWidget window;
    window.show();
    window.close();
    QDialog accepted;
    accepted.open();
    accepted.accept();
    QDialog closed;
    closed.open();
    closed.close();
    EXPECT_EQ(bench.counter.objects, (std::vector<const QObject*> { &window, &accepted, &closed }));
}

TEST(WindowCloseObserver, a_window_that_refuses_to_close_is_not_posted_not_even_when_hidden_later)
{
    ObserverBench bench;
    RefusingWindow window;
    window.show();
    EXPECT_FALSE(window.close());
    QCoreApplication::processEvents();
    window.hide();
    EXPECT_EQ(bench.counter.objects.size(), 0U);
}

TEST(WindowCloseObserver, hidden_windows_alerts_popups_and_children_are_not_posted)
{
    ObserverBench bench;
    QWidget window;
    QWidget child(&window);
    window.show();
    child.close();
    window.hide();
    QMenu menu;
    menu.popup({ 0, 0 });
    menu.close();
    QMessageBox alert;
    alert.open();
    alert.accept();
    EXPECT_EQ(bench.counter.objects.size(), 0U);
}

} // namespace
} // namespace kestrel::test
