#include "tests/shortcut/FieldBench.h"

#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QShortcut>
#include <QTest>

namespace kestrel::test {
namespace {

using namespace Modifier;

TEST(ShortcutFocus, taking_the_focus_asks_for_rename_boxes_to_close_once_and_takes_key_equivalents)
{
    FieldBench bench;
    activate(bench.window);
    NotificationCounter counter(bench.center, NotificationName::hideUserAssignEditBox);
    bench.field(1).makeFirstResponder();
    EXPECT_EQ(counter.objects, (std::vector<const QObject*> { &bench.field(1) }));
    EXPECT_TRUE(bench.field(1).bBecome());
    EXPECT_TRUE(bench.field(1).hasFocus());
}

TEST(ShortcutFocus, the_first_responder_is_not_asked_again)
{
    FieldBench bench;
    activate(bench.window);
    bench.field(1).makeFirstResponder();
    NotificationCounter counter(bench.center, NotificationName::hideUserAssignEditBox);
    bench.field(1).makeFirstResponder();
    click(bench.field(1));
    EXPECT_EQ(counter.objects.size(), 0U);
    EXPECT_TRUE(bench.field(1).bBecome());
}

TEST(ShortcutFocus, the_former_first_responder_resigns)
{
    FieldBench bench;
    activate(bench.window);
    bench.field(0).makeFirstResponder();
    bench.field(1).makeFirstResponder();
    EXPECT_FALSE(bench.field(0).bBecome());
    EXPECT_TRUE(bench.field(1).bBecome());
}

TEST(ShortcutFocus, focus_moves_the_same_way_while_the_window_is_not_active)
{
    FieldBench bench;
    bench.field(0).makeFirstResponder();
    EXPECT_TRUE(bench.field(0).bBecome());
    bench.field(1).makeFirstResponder();
    EXPECT_FALSE(bench.field(0).bBecome());
    EXPECT_TRUE(bench.field(1).bBecome());
    MyShortcutField::makeWindowFirstResponder(bench.window);
    EXPECT_FALSE(bench.field(1).bBecome());
    EXPECT_EQ(bench.window.focusWidget(), nullptr);
}

TEST(ShortcutFocus, activating_the_window_afterwards_asks_nobody_again)
{
    FieldBench bench;
    bench.field(0).makeFirstResponder();
    NotificationCounter counter(bench.center, NotificationName::hideUserAssignEditBox);
    activate(bench.window);
    EXPECT_TRUE(bench.field(0).hasFocus());
    EXPECT_EQ(counter.objects.size(), 0U);
}

TEST(ShortcutFocus, the_first_responder_stays_one_while_another_window_is_in_front)
{
    FieldBench bench;
    activate(bench.window);
    bench.field(0).makeFirstResponder();
    QWidget other;
    activate(other);
    EXPECT_FALSE(bench.field(0).hasFocus());
    EXPECT_TRUE(bench.field(0).bBecome());
}

TEST(ShortcutFocus, the_first_responder_stays_one_while_a_menu_is_open)
{
    FieldBench bench;
    activate(bench.window);
    bench.field(0).makeFirstResponder();
    QFocusEvent away(QEvent::FocusOut, Qt::PopupFocusReason);
    QCoreApplication::sendEvent(&bench.field(0), &away);
    EXPECT_TRUE(bench.field(0).bBecome());
    EXPECT_TRUE(bench.field(0).isFirstResponder());
}

TEST(ShortcutFocus, another_control_that_takes_the_focus_makes_the_field_resign)
{
    FieldBench bench;
    QLineEdit edit(&bench.window);
    activate(bench.window);
    bench.field(0).makeFirstResponder();
    edit.setFocus();
    EXPECT_FALSE(bench.field(0).bBecome());
    EXPECT_FALSE(bench.field(0).isFirstResponder());
}

TEST(ShortcutFocus, a_field_that_gets_the_focus_from_the_toolkit_becomes_first_responder_too)
{
    FieldBench bench;
    activate(bench.window);
    NotificationCounter counter(bench.center, NotificationName::hideUserAssignEditBox);
    bench.field(2).setFocus(Qt::TabFocusReason);
    EXPECT_EQ(counter.objects.size(), 1U);
    EXPECT_TRUE(bench.field(2).bBecome());
}

TEST(ShortcutFocus, a_click_makes_the_field_first_responder_and_a_right_click_does_nothing)
{
    FieldBench bench;
    activate(bench.window);
    MyShortcutField::makeWindowFirstResponder(bench.window);
    press(bench.field(0), Qt::RightButton, { 5, 5 });
    EXPECT_FALSE(bench.field(0).isFirstResponder());
    click(bench.field(0));
    EXPECT_TRUE(bench.field(0).isFirstResponder());
}

TEST(ShortcutFocus, there_is_no_context_menu)
{
    FieldBench bench;
    EXPECT_EQ(bench.field(0).contextMenuPolicy(), Qt::PreventContextMenu);
}

TEST(ShortcutFocus, command_q_in_a_focused_field_is_captured_and_kept_from_menus)
{
    FieldBench bench;
    bench.field(0).makeFirstResponder();
    const Key commandQ { .keyCode = 12, .flags = Command, .characters = "q" };
    EXPECT_TRUE(press(bench.field(0), commandQ));
    EXPECT_EQ(bench.field(0).stringValue(), u"\u2318+Q");
    EXPECT_EQ(bench.actions, std::vector { 0 });
    EXPECT_TRUE(bench.field(0).performKeyEquivalent({ 12, Command, "q", false }));
}

TEST(ShortcutFocus, a_shortcut_of_the_window_does_not_fire_while_a_field_has_the_focus)
{
    FieldBench bench;
    QShortcut shortcut(QKeySequence("Ctrl+Q"), &bench.window);
    int fired = 0;
    QObject::connect(&shortcut, &QShortcut::activated, [&] { ++fired; });
    activate(bench.window);
    QTest::keyClick(&bench.window, Qt::Key_Q, Qt::ControlModifier);
    ASSERT_EQ(fired, 1);
    bench.field(0).makeFirstResponder();
    QTest::keyClick(&bench.field(0), Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(fired, 1);
}

TEST(ShortcutFocus, being_asked_again_stops_key_equivalents_but_not_plain_keys)
{
    FieldBench bench;
    bench.field(0).makeFirstResponder();
    EXPECT_TRUE(bench.field(0).acceptsFirstResponder());
    EXPECT_FALSE(bench.field(0).bBecome());
    EXPECT_FALSE(bench.field(0).performKeyEquivalent({ 12, Command, "q", false }));
    EXPECT_EQ(bench.actions, std::vector<int>());
    EXPECT_FALSE(press(bench.field(0), Keys::A));
    EXPECT_EQ(bench.field(0).stringValue(), u"A");
}

TEST(ShortcutFocus, no_text_is_ever_edited)
{
    FieldBench bench;
    bench.field(0).makeFirstResponder();
    EXPECT_FALSE(bench.field(0).testAttribute(Qt::WA_InputMethodEnabled));
    EXPECT_TRUE(bench.field(0).canBecomeKeyView());
}

} // namespace
} // namespace kestrel::test
