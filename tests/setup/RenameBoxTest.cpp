#include "tests/setup/SetupBench.h"

#include <QApplication>
#include <QClipboard>
#include <QMouseEvent>
#include <QTest>

namespace kestrel::test {
namespace {

using namespace Modifier;

// Button 1 has a shortcut and a name, and its rename box is open.
struct OpenBox : SetupBench {
    OpenBox()
    {
        give(1, 0, Command, 1, "S");
        live->setShortcutTitle("Save", 1);
        open();
        activate(*controller.window());
        doubleClick(button(0));
    }
    [[nodiscard]] RenameBox& box() const { return *button(0).editBox(); }
    void type(const QString& text) { QTest::keyClicks(&box(), text); }
};

Key letter(ModifierFlags flags, const char* characters)
{
    return { .flags = flags, .characters = characters };
}

TEST(RenameBox, a_double_click_on_a_button_with_a_shortcut_opens_it_over_the_button_with_its_name)
{
    OpenBox bench;
    ASSERT_NE(bench.button(0).editBox(), nullptr);
    EXPECT_EQ(bench.box().geometry(), bench.button(0).geometry());
    EXPECT_EQ(bench.box().parentWidget(), bench.button(0).parentWidget());
    EXPECT_EQ(bench.box().stringValue(), u"Save");
    EXPECT_TRUE(bench.box().hasFocus());
    EXPECT_TRUE(bench.box().isVisible());
}

TEST(RenameBox, f2_and_return_open_it_on_the_key_with_the_focus_which_gets_the_focus_back)
{
    for (const int key : { Qt::Key_F2, Qt::Key_Return, Qt::Key_Enter }) {
        for (const int end : { Qt::Key_Return, Qt::Key_Escape }) {
            OpenBox bench;
            bench.button(0).closeEditBox();
            bench.button(0).setFocus(Qt::TabFocusReason);
            QTest::keyClick(&bench.button(0), static_cast<Qt::Key>(key));
            ASSERT_NE(bench.button(0).editBox(), nullptr);
            EXPECT_TRUE(bench.box().hasFocus());
            QTest::keyClick(&bench.box(), static_cast<Qt::Key>(end));
            EXPECT_EQ(bench.button(0).editBox(), nullptr);
            EXPECT_TRUE(bench.button(0).hasFocus());
        }
    }
}

TEST(RenameBox, a_return_that_is_held_opens_it_no_second_time)
{
    OpenBox bench;
    QTest::keyClick(&bench.box(), Qt::Key_Return);
    ASSERT_TRUE(bench.button(0).hasFocus());
    QKeyEvent repeat(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, {}, true);
    QApplication::sendEvent(&bench.button(0), &repeat);
    EXPECT_EQ(bench.button(0).editBox(), nullptr);
}

TEST(RenameBox, return_with_a_modifier_or_on_a_key_that_is_not_selected_opens_nothing)
{
    OpenBox bench;
    bench.button(0).closeEditBox();
    bench.button(0).setFocus(Qt::TabFocusReason);
    QTest::keyClick(&bench.button(0), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(bench.button(0).editBox(), nullptr);
    bench.give(2, 0, 0, 96, "F5");
    bench.controller.setupUI(*bench.live);
    bench.button(1).setFocus(Qt::TabFocusReason);
    ASSERT_FALSE(bench.button(1).isChecked());
    ASSERT_TRUE(bench.button(1).mayBeRenamed());
    QTest::keyClick(&bench.button(1), Qt::Key_F2);
    EXPECT_EQ(bench.button(1).editBox(), nullptr);
    EXPECT_FALSE(bench.button(1).isChecked());
}

TEST(RenameBox, f2_and_return_do_nothing_on_a_key_without_a_shortcut)
{
    OpenBox bench;
    bench.button(4).setFocus(Qt::TabFocusReason);
    for (const Qt::Key key : { Qt::Key_F2, Qt::Key_Return }) {
        QTest::keyClick(&bench.button(4), key);
        EXPECT_EQ(bench.button(4).editBox(), nullptr);
        EXPECT_FALSE(bench.button(4).isChecked());
    }
}

TEST(RenameBox, a_double_click_on_a_button_without_shortcuts_opens_nothing)
{
    SetupBench bench;
    bench.open();
    doubleClick(bench.button(0));
    EXPECT_EQ(bench.button(0).editBox(), nullptr);
}

TEST(RenameBox, the_field_resigns_for_it_also_while_the_window_is_not_active)
{
    SetupBench bench;
    bench.give(4, 0, 0, 96, "F5");
    bench.controller.setupUI(*bench.live); // not shown
    ASSERT_TRUE(bench.field(0).bBecome());
    doubleClick(bench.button(3));
    ASSERT_NE(bench.button(3).editBox(), nullptr);
    EXPECT_FALSE(bench.field(0).bBecome());
}

TEST(RenameBox, a_single_click_on_the_selected_button_opens_nothing)
{
    OpenBox bench;
    bench.button(0).closeEditBox();
    click(bench.button(0));
    EXPECT_EQ(bench.button(0).editBox(), nullptr);
}

TEST(RenameBox, a_double_click_on_another_button_selects_it_and_opens_its_box)
{
    OpenBox bench;
    bench.give(5, 3, 0, 0, "A");
    bench.controller.setupUI(*bench.live);
    doubleClick(bench.button(4));
    EXPECT_EQ(bench.button(4).state(), UserAssignableButton::State::On);
    ASSERT_NE(bench.button(4).editBox(), nullptr);
    EXPECT_EQ(bench.button(4).editBox()->stringValue(), u"");
    EXPECT_EQ(bench.button(0).editBox(), nullptr);
}

TEST(RenameBox, return_stores_the_typed_name_and_closes)
{
    OpenBox bench;
    bench.type("Undo & redo");
    press(bench.box(), Keys::Return);
    EXPECT_EQ(bench.button(0).uniqueName(), u"Undo & redo");
    EXPECT_EQ(bench.button(0).editBox(), nullptr);
    EXPECT_EQ(bench.live->getShortcutTitle(1), u"Save");
}

TEST(RenameBox, an_emptied_text_takes_the_name_away)
{
    OpenBox bench;
    QTest::keyClick(&bench.box(), Qt::Key_Delete);
    press(bench.box(), Keys::Return);
    EXPECT_EQ(bench.button(0).uniqueName(), u"");
}

TEST(RenameBox, escape_closes_and_keeps_the_name)
{
    OpenBox bench;
    bench.type("other");
    press(bench.box(), Keys::Escape);
    EXPECT_EQ(bench.button(0).uniqueName(), u"Save");
    EXPECT_EQ(bench.button(0).editBox(), nullptr);
}

TEST(RenameBox, tab_moves_the_focus_on_and_keeps_the_name)
{
    OpenBox bench;
    bench.type("other");
    press(bench.box(), Keys::Tab);
    const QWidget* focused = bench.controller.window()->focusWidget();
    EXPECT_NE(focused, nullptr);
    EXPECT_FALSE(dynamic_cast<const RenameBox*>(focused));
    EXPECT_EQ(bench.button(0).uniqueName(), u"Save");
    if (const RenameBox* box = bench.button(0).editBox()) {
        EXPECT_EQ(box->toPlainText(), u"other");
    }
}

TEST(RenameBox, closing_it_with_a_key_leaves_the_focus_to_its_button)
{
    for (const Key& key : { Keys::Escape, Keys::Return }) {
        OpenBox bench;
        press(bench.box(), key);
        EXPECT_EQ(bench.controller.window()->focusWidget(), &bench.button(0));
    }
}

TEST(RenameBox, command_a_selects_all_of_its_text)
{
    OpenBox bench;
    bench.box().moveCursor(QTextCursor::End);
    press(bench.box(), letter(Command, "a"));
    EXPECT_EQ(bench.box().textCursor().selectedText(), u"Save");
}

TEST(RenameBox, command_x_c_and_v_cut_copy_and_paste)
{
    OpenBox bench;
    bench.box().selectAll();
    press(bench.box(), letter(Command, "c"));
    EXPECT_EQ(QApplication::clipboard()->text(), u"Save");
    QApplication::clipboard()->clear();
    press(bench.box(), letter(Command, "x"));
    EXPECT_EQ(QApplication::clipboard()->text(), u"Save");
    EXPECT_EQ(bench.box().stringValue(), u"");
    press(bench.box(), letter(Command, "v"));
    press(bench.box(), letter(Command, "v"));
    EXPECT_EQ(bench.box().stringValue(), u"SaveSave");
}

TEST(RenameBox, command_z_takes_back_and_command_shift_z_does_it_again)
{
    OpenBox bench;
    bench.type("x");
    press(bench.box(), letter(Command, "z"));
    EXPECT_EQ(bench.box().toPlainText(), u"Save");
    press(bench.box(), letter(Command | Shift, "Z"));
    EXPECT_EQ(bench.box().toPlainText(), u"x");
}

TEST(RenameBox, any_further_modifier_disables_them_caps_lock_included)
{
    OpenBox bench;
    bench.type("x");
    for (const ModifierFlags further : { CapsLock, Option, Control, ModifierFlags { 0x800000 } }) {
        bench.box().moveCursor(QTextCursor::End);
        press(bench.box(), letter(Command | further, "a"));
        EXPECT_FALSE(bench.box().textCursor().hasSelection()) << further;
        press(bench.box(), letter(Command | further, "z"));
        EXPECT_EQ(bench.box().toPlainText(), u"x") << further;
    }
    press(bench.box(), letter(Command | Shift, "A"));
    EXPECT_FALSE(bench.box().textCursor().hasSelection());
    press(bench.box(), letter(Command, "z"));
    press(bench.box(), letter(Command | Shift | CapsLock, "Z"));
    EXPECT_EQ(bench.box().toPlainText(), u"Save");
}

TEST(RenameBox, bits_of_the_device_do_not_disable_them)
{
    OpenBox bench;
    bench.box().moveCursor(QTextCursor::End);
    press(bench.box(), letter(Command | 0x108, "a"));
    EXPECT_TRUE(bench.box().textCursor().hasSelection());
}

TEST(RenameBox, only_return_and_escape_count_as_handled)
{
    using Command = RenameBox::Command;
    OpenBox bench;
    EXPECT_FALSE(bench.button(0).controlTextViewDoCommandBySelector(Command::Other));
    EXPECT_FALSE(bench.button(0).controlTextViewDoCommandBySelector(Command::Noop));
    EXPECT_NE(bench.button(0).editBox(), nullptr);
    EXPECT_TRUE(bench.button(0).controlTextViewDoCommandBySelector(Command::InsertNewline));
    EXPECT_EQ(bench.button(0).editBox(), nullptr);
    EXPECT_TRUE(bench.button(0).controlTextViewDoCommandBySelector(Command::CancelOperation));
}

TEST(RenameBox, without_an_open_box_or_a_current_event_no_shortcut_is_performed)
{
    OpenBox bench;
    bench.box().moveCursor(QTextCursor::End);
    bench.button(0).sendEvent();
    EXPECT_FALSE(bench.box().textCursor().hasSelection());
    bench.button(0).closeEditBox();
    bench.button(0).sendEvent();
    EXPECT_EQ(bench.button(0).editBox(), nullptr);
}

TEST(RenameBox, a_click_on_the_background_closes_it_and_keeps_the_name)
{
    OpenBox bench;
    bench.type("other");
    press(*bench.controller.window(), Qt::LeftButton, { 30, 420 });
    EXPECT_EQ(bench.button(0).editBox(), nullptr);
    EXPECT_EQ(bench.button(0).uniqueName(), u"Save");
}

TEST(RenameBox, a_field_that_takes_the_focus_and_a_clear_button_close_it)
{
    OpenBox bench;
    click(bench.field(0));
    EXPECT_EQ(bench.button(0).editBox(), nullptr);
    doubleClick(bench.button(0));
    ASSERT_NE(bench.button(0).editBox(), nullptr);
    press(bench.clear(0), Qt::LeftButton, { 5, 5 });
    EXPECT_EQ(bench.button(0).editBox(), nullptr);
}

TEST(RenameBox, a_second_click_that_is_the_first_on_its_button_selects_it_and_leaves_no_box)
{
    OpenBox bench;
    bench.give(5, 0, 0, 0, "A");
    bench.controller.setupUI(*bench.live);
    QMouseEvent event(QEvent::MouseButtonDblClick, QPointF(5, 5), QPointF(5, 5), Qt::LeftButton,
        Qt::LeftButton, Qt::NoModifier);
    bench.button(4).mouseDown(event, 2);
    EXPECT_EQ(bench.button(4).state(), UserAssignableButton::State::On);
    EXPECT_TRUE(bench.field(0).hasFocus());
    EXPECT_EQ(bench.button(4).editBox(), nullptr) << "the field that takes the focus closes it";
}

TEST(RenameBox, ok_does_not_take_a_name_that_return_has_not_confirmed)
{
    OpenBox bench;
    bench.type("other");
    bench.controller.ok();
    EXPECT_EQ(bench.button(0).uniqueName(), u"Save");
    EXPECT_EQ(bench.live->getShortcutTitle(1), u"Save");
    EXPECT_EQ(bench.button(0).editBox(), nullptr);
}

TEST(RenameBox, only_one_box_is_open_at_a_time)
{
    OpenBox bench;
    doubleClick(bench.button(0));
    int boxes = 0;
    for (const QObject* child : bench.controller.window()->children()) {
        const auto* box = dynamic_cast<const RenameBox*>(child);
        boxes += box && box->isVisible() ? 1 : 0;
    }
    EXPECT_EQ(boxes, 1);
}

TEST(RenameBox, a_name_that_was_not_touched_is_kept_to_the_letter)
{
    SetupBench bench;
    const QString odd = u"a\r\nb\u00A0c\u2028d\te"_qs + QChar(0x1) + QChar(0xD800);
    bench.give(1, 0, 0, 0, "A");
    bench.live->setShortcutTitle(odd, 1);
    bench.open();
    doubleClick(bench.button(0));
    press(*bench.button(0).editBox(), Keys::Return);
    EXPECT_EQ(bench.button(0).uniqueName(), odd);
}

TEST(RenameBox, it_may_be_open_when_the_window_goes)
{
    OpenBox bench;
    EXPECT_NE(bench.button(0).editBox(), nullptr);
}

TEST(RenameBox, command_with_an_arrow_or_backspace_moves_selects_and_deletes)
{
    OpenBox bench;
    const auto pressWith = [&](ModifierFlags flags, Qt::Key key) {
        press(bench.box(), { .keyCode = 123, .flags = flags, .qtKey = key });
        return bench.box().textCursor();
    };
    EXPECT_EQ(pressWith(Command, Qt::Key_Left).position(), 0);
    EXPECT_FALSE(bench.box().textCursor().hasSelection());
    EXPECT_EQ(pressWith(Command, Qt::Key_Right).position(), 4);
    EXPECT_EQ(pressWith(Command, Qt::Key_Up).position(), 0);
    EXPECT_EQ(pressWith(Command, Qt::Key_Down).position(), 4);
    EXPECT_EQ(pressWith(Command | Shift, Qt::Key_Left).selectedText(), u"Save");
    bench.box().moveCursor(QTextCursor::End);
    bench.box().moveCursor(QTextCursor::Left);
    pressWith(Command, Qt::Key_Backspace);
    EXPECT_EQ(bench.box().stringValue(), u"e");
    bench.box().selectAll();
    pressWith(Command, Qt::Key_Backspace);
    EXPECT_EQ(bench.box().stringValue(), u"");
}

TEST(RenameBox, enter_on_the_keypad_and_shift_return_store_the_name_as_well)
{
    const Key enter { .keyCode = 76, .characters = "\003", .qtKey = Qt::Key_Enter };
    for (const Key& key : { enter, with(Shift, Keys::Return) }) {
        OpenBox bench;
        bench.type("other");
        press(bench.box(), key);
        EXPECT_EQ(bench.button(0).uniqueName(), u"other");
        EXPECT_EQ(bench.button(0).editBox(), nullptr);
    }
}

TEST(RenameBox, return_with_option_or_control_stores_nothing)
{
    for (const ModifierFlags modifier : { Option, Control }) {
        OpenBox bench;
        press(bench.box(), with(modifier, Keys::Return));
        EXPECT_NE(bench.button(0).editBox(), nullptr) << modifier;
        EXPECT_EQ(bench.button(0).uniqueName(), u"Save") << modifier;
    }
}

} // namespace
} // namespace kestrel::test
