#include "tests/setup/SetupBench.h"

#include <QApplication>
#include <QKeyEvent>

namespace kestrel::test {
namespace {

struct ExitBench : SetupBench {
    ExitBench()
    {
        give(4, 0, 0, 96, "F5");
        open();
        activate(*controller.window());
        click(button(3));
    }

    void send(QEvent::Type type, int key)
    {
        QKeyEvent event(type, key, Qt::NoModifier, 1, 0x10000, 0); // no key code
        event.setTimestamp(now);
        QApplication::sendEvent(QApplication::focusWidget(), &event);
    }
    void tap(int key)
    {
        send(QEvent::KeyPress, key);
        send(QEvent::KeyRelease, key);
        now += 200;
    }
    void tapTwice(int key)
    {
        tap(key);
        tap(key);
        now += 5000;
    }

    std::uint64_t now = 10'000; // ms
};

TEST(FieldExit, shift_tapped_twice_goes_on_past_what_cannot_have_the_focus)
{
    ExitBench bench;
    ASSERT_TRUE(bench.field(0).hasFocus());
    bench.tapTwice(Qt::Key_Shift);
    EXPECT_TRUE(bench.clear(0).hasFocus());
    bench.field(1).makeFirstResponder(); // its clear button and Assign are disabled
    bench.tapTwice(Qt::Key_Shift);
    EXPECT_EQ(QApplication::focusWidget()->accessibleName(), "Cancel");
    EXPECT_EQ(bench.field(0).stringValue(), "F5");
    EXPECT_EQ(bench.field(1).stringValue(), "");
}

TEST(FieldExit, option_tapped_twice_goes_back_to_the_key_that_is_edited)
{
    ExitBench bench;
    bench.tapTwice(Qt::Key_Alt);
    EXPECT_TRUE(bench.button(3).hasFocus());
    EXPECT_EQ(bench.field(0).stringValue(), "F5");
}

TEST(FieldExit, option_tapped_twice_goes_back_to_a_key_that_the_set_lacks)
{
    ExitBench bench;
    const auto shortcuts = std::make_shared<ArchiveDictionary>();
    shortcuts->set(1, emptyButtonEntry());
    const auto set = setOf(shortcuts, std::make_shared<ArchiveDictionary>());
    UserAssinableWindowController window(bench.services());
    window.initShortcut(set);
    window.showWindow();
    activate(*window.window());
    UserAssignableButton& key = *window.userAssignableButtons()[6]->view();
    click(key);
    window.getMyShortcutField(0)->makeFirstResponder();
    ASSERT_TRUE(window.getMyShortcutField(0)->hasFocus());
    bench.tapTwice(Qt::Key_Alt);
    EXPECT_TRUE(key.hasFocus());
}

TEST(FieldExit, a_shortcut_a_slow_tap_and_two_different_taps_are_no_way_out)
{
    ExitBench bench;
    bench.tap(Qt::Key_Shift);
    bench.now += 400;
    bench.tap(Qt::Key_Shift);
    EXPECT_TRUE(bench.field(0).hasFocus()) << "too slow";
    bench.now += 5000;
    bench.tap(Qt::Key_Shift);
    bench.tap(Qt::Key_Alt);
    EXPECT_TRUE(bench.field(0).hasFocus()) << "two keys";
    bench.now += 5000;
    bench.tap(Qt::Key_Shift);
    bench.send(QEvent::KeyPress, Qt::Key_Shift);
    bench.send(QEvent::KeyPress, Qt::Key_S);
    bench.send(QEvent::KeyRelease, Qt::Key_S);
    bench.send(QEvent::KeyRelease, Qt::Key_Shift);
    EXPECT_TRUE(bench.field(0).hasFocus()) << "a shortcut";
    bench.now += 5000;
    bench.tap(Qt::Key_Control);
    bench.tap(Qt::Key_Control);
    EXPECT_TRUE(bench.field(0).hasFocus()) << "another modifier";
}

TEST(FieldExit, a_release_that_is_left_over_is_no_tap)
{
    ExitBench bench;
    bench.tapTwice(Qt::Key_Shift);
    bench.field(0).makeFirstResponder();
    bench.send(QEvent::KeyRelease, Qt::Key_Shift);
    EXPECT_TRUE(bench.field(0).hasFocus()) << "its press went to the clear button";
}

TEST(FieldExit, the_first_two_taps_count_after_a_release_was_missed)
{
    ExitBench bench;
    bench.send(QEvent::KeyPress, Qt::Key_Alt); // the window manager gets the release
    bench.clear(0).setFocus();
    bench.field(0).makeFirstResponder();
    bench.now += 5000;
    bench.tapTwice(Qt::Key_Alt);
    EXPECT_TRUE(bench.button(3).hasFocus());
}

} // namespace
} // namespace kestrel::test
