#include "shortcut/InterfaceFont.h"
#include "shortcut/ShortcutImages.h"
#include "tests/shortcut/FieldBench.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace kestrel::test {
namespace {

using namespace Modifier;

TEST(MyShortcutField, a_key_is_captured_with_its_flags_code_name_and_repeat_flag)
{
    FieldBench bench;
    press(bench.field(0), with(Shift | Command, Keys::A));
    EXPECT_EQ(bench.record(0), (ArchiveArray { 0x120000, 0, QString("A"), 0 }));
    EXPECT_EQ(bench.field(0).stringValue(), u"\u21EA\u2318+A");
    EXPECT_TRUE(bench.field(0).isEntryShortcut());
    EXPECT_TRUE(bench.clear(0).isEnabled());
    EXPECT_EQ(bench.actions, std::vector { 0 });
}

TEST(MyShortcutField, all_bits_of_the_flags_are_stored)
{
    FieldBench bench;
    press(bench.field(0), with(CapsLock | Shift | 0x800102, Keys::Tab));
    EXPECT_EQ(bench.record(0)[0], ArchiveValue(0x830102));
    EXPECT_EQ(bench.field(0).stringValue(), u"\u21EA+TAB");
}

TEST(MyShortcutField, return_tab_escape_and_delete_are_captured_like_any_other_key)
{
    FieldBench bench;
    activate(bench.window);
    bench.field(0).makeFirstResponder();
    for (const auto& [key, name] :
        { std::pair { Keys::Return, "RETURN" }, { Keys::Tab, "TAB" }, { Keys::Escape, "ESC" },
            { Key { .keyCode = 51, .qtKey = Qt::Key_Backspace }, "DELETE" } }) {
        press(bench.field(0), key);
        EXPECT_EQ(bench.field(0).stringValue(), QString(name));
    }
    Key backTab = with(Shift, Keys::Tab);
    backTab.qtKey = Qt::Key_Backtab;
    press(bench.field(0), backTab);
    EXPECT_EQ(bench.field(0).stringValue(), u"\u21EA+TAB");
    EXPECT_TRUE(bench.field(0).hasFocus());
}

TEST(MyShortcutField, a_second_function_key_of_the_button_is_not_available)
{
    FieldBench bench;
    press(bench.field(0), Keys::F3);
    press(bench.field(2), Keys::A);
    bench.actions.clear();
    const ArchiveArray first = bench.record(0);

    press(bench.field(2), Keys::F5);
    EXPECT_EQ(bench.field(2).stringValue(), u"Not Available");
    EXPECT_EQ(bench.record(2), (ArchiveArray { 0, 0, QString(), 0 }));
    EXPECT_TRUE(bench.field(2).bNotAvailable());
    EXPECT_EQ(bench.actions, (std::vector { 2, 2 }));
    EXPECT_EQ(bench.record(0), first);
}

TEST(MyShortcutField, a_refusal_sends_the_action_before_and_after_it_sets_the_marker)
{
    FieldBench bench;
    press(bench.field(0), Keys::F3);
    std::vector<bool> marked;
    bench.field(2).setAction([&] {
        EXPECT_EQ(bench.field(2).stringValue(), u"Not Available");
        EXPECT_EQ(bench.record(2), (ArchiveArray { 0, 0, QString(), 0 }));
        marked.push_back(bench.field(2).bNotAvailable());
    });
    press(bench.field(2), Keys::F5);
    EXPECT_EQ(marked, (std::vector { false, true }));
}

TEST(MyShortcutField, the_action_of_a_capture_comes_last)
{
    FieldBench bench;
    bench.field(0).setBNotAvailable(true);
    int actions = 0;
    bench.field(0).setAction([&] {
        EXPECT_EQ(bench.field(0).stringValue(), u"F5");
        EXPECT_EQ(bench.record(0), (ArchiveArray { 0, 96, QString("F5"), false }));
        EXPECT_TRUE(bench.clear(0).isEnabled());
        EXPECT_FALSE(bench.field(0).bNotAvailable());
        ++actions;
    });
    press(bench.field(0), Keys::F5);
    EXPECT_EQ(actions, 1);
}

TEST(MyShortcutField, a_refusal_leaves_the_clear_button_as_it_was)
{
    FieldBench bench;
    press(bench.field(0), Keys::F3);
    press(bench.field(2), Keys::A);
    press(bench.field(2), Keys::F5);
    EXPECT_TRUE(bench.clear(2).isEnabled());
    press(bench.field(1), Keys::F5);
    EXPECT_FALSE(bench.clear(1).isEnabled());
}

TEST(MyShortcutField, a_function_key_is_replaced_by_another_in_the_same_field)
{
    FieldBench bench;
    press(bench.field(0), Keys::F3);
    press(bench.field(0), Keys::F5);
    EXPECT_EQ(bench.record(0), (ArchiveArray { 0, 96, QString("F5"), 0 }));
    press(bench.field(0), Keys::F5);
    EXPECT_EQ(bench.field(0).stringValue(), u"F5");
    EXPECT_FALSE(bench.field(0).bNotAvailable());
}

TEST(MyShortcutField, other_keys_may_repeat_in_all_fields)
{
    FieldBench bench;
    for (int i = 0; i < 4; ++i)
        press(bench.field(i), Keys::A);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(bench.field(i).stringValue(), u"A");
}

TEST(MyShortcutField, a_capture_after_a_refusal_takes_the_marker_away)
{
    FieldBench bench;
    press(bench.field(0), Keys::F3);
    press(bench.field(1), Keys::F5);
    press(bench.field(1), Keys::A);
    EXPECT_FALSE(bench.field(1).bNotAvailable());
    EXPECT_EQ(bench.field(1).stringValue(), u"A");
}

TEST(MyShortcutField, nothing_is_refused_without_the_list_of_fields_and_missing_ones_are_skipped)
{
    FieldBench bench;
    press(bench.field(0), Keys::F3);
    bench.field(1).setShortcutFields(nullptr);
    EXPECT_FALSE(bench.field(1).isAlradyEntryFncKey(96));

    ShortcutFields holes(4);
    bench.field(1).setShortcutFields(&holes);
    EXPECT_FALSE(bench.field(1).isAlradyEntryFncKey(96));
    bench.field(1).setShortcutFields(&bench.fields);
    EXPECT_TRUE(bench.field(1).isAlradyEntryFncKey(96));
    EXPECT_FALSE(bench.field(1).isAlradyEntryFncKey(0));
}

TEST(MyShortcutField, a_held_key_keeps_the_repeat_flag_of_its_first_press)
{
    FieldBench bench;
    press(bench.field(0), Keys::F5);
    press(bench.field(0), repeated(Keys::F5));
    EXPECT_FALSE(bench.record(0)[3].toBool());
}

TEST(MyShortcutField, a_key_that_was_pressed_elsewhere_is_stored_as_a_repeat)
{
    FieldBench bench;
    press(bench.field(0), repeated(Keys::F5));
    EXPECT_EQ(bench.record(0)[3].type(), ArchiveValue::Type::Boolean);
    EXPECT_TRUE(bench.record(0)[3].toBool());
    press(bench.field(0), with(Command, Keys::F5));
    EXPECT_TRUE(bench.record(0)[3].toBool());
    press(bench.field(0), Keys::F3);
    EXPECT_FALSE(bench.record(0)[3].toBool());
}

// The repeat flag changes only with the key code. An empty field has the key code of A already.
TEST(MyShortcutField, a_repeated_a_key_leaves_the_repeat_flag_of_an_empty_field)
{
    FieldBench bench;
    press(bench.field(0), repeated(Keys::A));
    EXPECT_EQ(bench.record(0), (ArchiveArray { 0, 0, QString("A"), 0 }));
}

TEST(MyShortcutField, a_key_without_a_name_is_stored_and_shows_nothing)
{
    FieldBench bench;
    press(bench.field(0), Keys::A);
    press(bench.field(0), with(Command, Keys::Unnamed));
    EXPECT_EQ(bench.record(0), (ArchiveArray { 0x100000, 200, QString(), 0 }));
    EXPECT_EQ(bench.field(0).stringValue(), u"");
    EXPECT_FALSE(bench.clear(0).isEnabled());
    EXPECT_FALSE(bench.field(0).isEntryShortcut());
}

TEST(MyShortcutField, a_key_without_a_key_code_does_nothing_and_goes_no_further)
{
    FieldBench bench;
    QKeyEvent event(QEvent::KeyPress, Qt::Key_Shift, Qt::NoModifier, 1, 0x10000, 0);
    EXPECT_TRUE(QCoreApplication::sendEvent(&bench.field(0), &event));
    EXPECT_TRUE(event.isAccepted());
    EXPECT_EQ(bench.actions, std::vector<int>());
}

// Some versions of Qt and macOS give a modifier the native code 0, which is that of the A key.
TEST(MyShortcutField, a_modifier_alone_captures_nothing_whatever_its_native_code)
{
    FieldBench bench;
    press(bench.field(0), Keys::F5);
    bench.actions.clear();
    for (const int key :
        { Qt::Key_Shift, Qt::Key_Control, Qt::Key_Meta, Qt::Key_Alt, Qt::Key_CapsLock }) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, 1, 0, Modifier::Shift);
        EXPECT_TRUE(QCoreApplication::sendEvent(&bench.field(0), &event));
        EXPECT_TRUE(event.isAccepted());
    }
    EXPECT_EQ(bench.actions, std::vector<int>());
    EXPECT_EQ(bench.field(0).stringValue(), u"F5");
}

TEST(MyShortcutField, clearing_resets_the_record_and_leaves_text_and_clear_button)
{
    FieldBench bench;
    press(bench.field(0), Keys::F5);
    bench.field(0).setBNotAvailable(true);
    bench.actions.clear();
    bench.field(0).clearShortcut();
    EXPECT_EQ(bench.record(0), (ArchiveArray { 0, 0, QString(), 0 }));
    EXPECT_FALSE(bench.field(0).bNotAvailable());
    EXPECT_EQ(bench.actions, std::vector { 0 });
    EXPECT_EQ(bench.field(0).stringValue(), u"F5");
    EXPECT_TRUE(bench.clear(0).isEnabled());
    EXPECT_FALSE(bench.field(0).isFncKey());
}

TEST(MyShortcutField, clearing_takes_the_repeat_flag_away)
{
    FieldBench bench;
    press(bench.field(0), repeated(Keys::F5));
    ASSERT_TRUE(bench.record(0)[3].toBool());
    bench.field(0).clearShortcut();
    EXPECT_EQ(bench.record(0), (ArchiveArray { 0, 0, QString(), 0 }));
}

TEST(MyShortcutField, without_a_record_a_key_is_shown_but_neither_kept_nor_stored)
{
    FieldBench bench;
    MyShortcutField field({ 0, 0, 171, 34 }, bench.services);
    int actions = 0;
    field.setAction([&] { ++actions; });
    press(field, Keys::F5);
    EXPECT_EQ(field.stringValue(), u"F5");
    EXPECT_EQ(field.myUserArray(), nullptr);
    EXPECT_EQ(field.getInputCharacters(), u"");
    EXPECT_FALSE(field.isEntryShortcut());
    field.clearShortcut();
    EXPECT_EQ(actions, 2);
    const ArchiveArray before = *bench.entry;
    field.replaceUserAssignParam(0, bench.entry);
    EXPECT_EQ(*bench.entry, before);
    EXPECT_FALSE(field.compareUserAssignParam(0, bench.entry));
}

TEST(MyShortcutField, it_is_black_with_white_text_of_the_small_system_font)
{
    FieldBench bench;
    const QImage empty = bench.field(0).grab().toImage();
    EXPECT_EQ(empty.pixelColor(1, 1), QColor(Qt::black));
    EXPECT_EQ(empty.pixelColor(60, 17), QColor(Qt::black));
    bench.field(0).setTitleWithMnemonic(u"\u2588\u2588"_qs); // full blocks
    EXPECT_EQ(bench.field(0).grab().toImage().pixelColor(12, 17), QColor(Qt::white));
    EXPECT_EQ(bench.field(0).font().pixelSize(), smallSystemFont().pixelSize());
}

TEST(ShortcutImages, every_picture_is_there)
{
    const ShortcutImages& images = ShortcutImages::shared();
    for (const InterfaceImage* image :
        { &images.FiledEnableImage, &images.FieldDisableImage, &images.ClearButtonImage,
            &images.ClearButtonOnPressImage, &images.ClearButtonDisableImage })
        EXPECT_FALSE(image->isNull());
}

} // namespace
} // namespace kestrel::test
