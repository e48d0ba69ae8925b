#include "tests/setup/SetupBench.h"

namespace kestrel::test {
namespace {

TEST(Editing, a_button_without_shortcuts_shows_only_the_first_field)
{
    SetupBench bench;
    bench.open();
    EXPECT_EQ(bench.shownFields(), "0");
}

TEST(Editing, each_filled_field_opens_the_next)
{
    SetupBench bench;
    bench.open();
    press(bench.field(0), Keys::A);
    EXPECT_EQ(bench.shownFields(), "01");
    press(bench.field(1), Keys::A);
    EXPECT_EQ(bench.shownFields(), "012");
    press(bench.field(2), Keys::A);
    EXPECT_EQ(bench.shownFields(), "0123");
}

TEST(Editing, a_shortcut_in_the_third_field_alone_shows_all_four)
{
    SetupBench bench;
    bench.give(1, 2, 0, 0, "A");
    bench.open();
    EXPECT_EQ(bench.shownFields(), "0123");
}

TEST(Editing, a_shortcut_in_the_second_field_alone_shows_three)
{
    SetupBench bench;
    bench.give(1, 1, 0, 0, "A");
    bench.open();
    EXPECT_EQ(bench.shownFields(), "012");
}

TEST(Editing, a_field_that_gets_hidden_while_it_has_the_focus_hands_it_to_the_first)
{
    SetupBench bench;
    bench.open();
    activate(*bench.controller.window());
    press(bench.field(0), Keys::A);
    click(bench.field(1));
    ASSERT_TRUE(bench.field(1).hasFocus());
    click(bench.clear(0));
    EXPECT_EQ(bench.shownFields(), "0");
    EXPECT_TRUE(bench.field(0).hasFocus());
    EXPECT_TRUE(bench.field(0).bBecome());
    EXPECT_FALSE(bench.field(1).bBecome());
}

TEST(Editing, whatever_empties_the_field_before_it_the_focus_goes_to_the_first)
{
    SetupBench bench;
    bench.open();
    activate(*bench.controller.window());
    press(bench.field(0), Keys::A);
    click(bench.field(1));
    bench.field(0).clearShortcut();
    EXPECT_EQ(bench.shownFields(), "0");
    EXPECT_TRUE(bench.field(0).isFirstResponder());
}

TEST(Editing, hiding_a_field_blanks_a_text_that_is_no_shortcut)
{
    SetupBench bench;
    bench.open();
    press(bench.field(0), Keys::A);
    press(bench.field(1), Keys::Unnamed);
    bench.field(1).setTitleWithMnemonic("left over");
    click(bench.clear(0));
    EXPECT_EQ(bench.field(1).stringValue(), u"");
}

TEST(Editing, assign_waits_for_a_difference_and_again_after_it_was_pressed)
{
    SetupBench bench;
    bench.give(1, 0, 0, 0, "A");
    bench.open();
    EXPECT_FALSE(bench.mayAssign());
    press(bench.field(0), Keys::F5);
    EXPECT_TRUE(bench.mayAssign());
    click(*bench.controller.assignButton());
    EXPECT_FALSE(bench.mayAssign());
    press(bench.field(1), Keys::A); // flags 0, code 0: no difference to an empty record
    EXPECT_FALSE(bench.mayAssign());
    press(bench.field(1), Keys::Tab);
    EXPECT_TRUE(bench.mayAssign());
    click(bench.button(1));
    EXPECT_FALSE(bench.mayAssign());
}

TEST(Editing, going_back_to_what_is_assigned_disables_assign)
{
    SetupBench bench;
    bench.give(1, 0, 0, 96, "F5");
    bench.open();
    press(bench.field(0), Keys::F3);
    EXPECT_TRUE(bench.mayAssign());
    press(bench.field(0), Keys::F5);
    EXPECT_FALSE(bench.mayAssign());
}

TEST(Editing, assign_writes_all_fields_into_the_working_copy_and_shows_on_the_button)
{
    SetupBench bench;
    bench.open();
    press(bench.field(0), with(Modifier::Command, Keys::F5));
    press(bench.field(1), Keys::Tab);
    click(*bench.controller.assignButton());
    EXPECT_EQ(bench.workingText(1, 0), u"F5");
    EXPECT_EQ(bench.workingText(1, 1), u"TAB");
    EXPECT_EQ(bench.button(0).getEntryShortcutNum(), 2);
    EXPECT_EQ(bench.liveText(1), u"");
}

TEST(Editing, what_was_not_assigned_is_lost_with_the_selection)
{
    SetupBench bench;
    bench.open();
    press(bench.field(0), Keys::F5);
    click(bench.button(1));
    click(bench.button(0));
    EXPECT_EQ(bench.field(0).stringValue(), u"");
}

TEST(Editing, assigning_four_empty_fields_to_a_named_button_erases_the_name)
{
    SetupBench bench;
    bench.give(1, 0, 0, 96, "F5");
    bench.live->setShortcutTitle("Name", 1);
    bench.open();
    click(bench.clear(0));
    click(*bench.controller.assignButton());
    EXPECT_EQ(bench.button(0).uniqueName(), u"");
    EXPECT_EQ(bench.live->getShortcutTitle(1), u"Name");
}

TEST(Editing, assigning_one_shortcut_keeps_the_name)
{
    SetupBench bench;
    bench.give(1, 0, 0, 96, "F5");
    bench.live->setShortcutTitle("Name", 1);
    bench.open();
    press(bench.field(0), Keys::F3);
    click(*bench.controller.assignButton());
    EXPECT_EQ(bench.button(0).uniqueName(), u"Name");
}

TEST(Editing, not_available_goes_once_no_field_holds_a_function_key)
{
    SetupBench bench;
    bench.open();
    press(bench.field(0), Keys::F3);
    press(bench.field(1), Keys::F5);
    EXPECT_EQ(bench.field(1).stringValue(), u"Not Available");
    EXPECT_TRUE(bench.field(1).bNotAvailable());
    press(bench.field(0), Keys::A);
    EXPECT_EQ(bench.field(1).stringValue(), u"");
    EXPECT_FALSE(bench.field(1).bNotAvailable());
}

TEST(Editing, not_available_goes_from_every_field_at_once)
{
    SetupBench bench;
    bench.give(1, 0, 0, 99, "F3");
    bench.give(1, 1, 0, 0, "A");
    bench.give(1, 2, 0, 11, "B");
    bench.give(1, 3, 0, 8, "C");
    bench.open();
    for (const int field : { 1, 2 }) {
        press(bench.field(field), Keys::F5);
        EXPECT_EQ(bench.field(field).stringValue(), u"Not Available");
    }
    press(bench.field(0), Keys::A);
    for (const int field : { 1, 2 }) {
        EXPECT_EQ(bench.field(field).stringValue(), u"") << field;
        EXPECT_FALSE(bench.field(field).bNotAvailable()) << field;
    }
}

TEST(Editing, not_available_goes_with_the_key_that_was_edited)
{
    SetupBench bench;
    bench.give(2, 0, 0, 0, "A");
    bench.give(2, 1, 0, 11, "B");
    bench.open();
    press(bench.field(0), Keys::F3);
    press(bench.field(1), Keys::F5);
    EXPECT_TRUE(bench.field(1).bNotAvailable());
    click(bench.button(1));
    EXPECT_EQ(bench.field(1).stringValue(), u"B");
    EXPECT_FALSE(bench.field(1).bNotAvailable());
}

TEST(Editing, not_available_stays_while_another_field_holds_a_function_key)
{
    SetupBench bench;
    bench.open();
    press(bench.field(0), Keys::F3);
    press(bench.field(1), Keys::A);
    press(bench.field(2), Keys::F5);
    press(bench.field(1), Keys::Tab);
    EXPECT_EQ(bench.field(2).stringValue(), u"Not Available");
}

TEST(Editing, ok_writes_shortcuts_and_names_into_the_live_set_and_not_into_the_defaults)
{
    SetupBench bench;
    bench.open();
    press(bench.field(0), Keys::F5);
    click(*bench.controller.assignButton());
    bench.button(0).setUniqueName("Name");
    bench.controller.ok();
    EXPECT_EQ(bench.liveText(1), u"F5");
    EXPECT_EQ(bench.live->getShortcutTitle(1), u"Name");
    EXPECT_FALSE(bench.controller.isVisible());
    EXPECT_FALSE(bench.defaults.current.contains("PT_UserAssign"));
}

TEST(Editing, ok_without_assign_writes_only_what_was_assigned_before)
{
    SetupBench bench;
    bench.give(1, 0, 0, 0, "A");
    bench.open();
    press(bench.field(0), Keys::F5);
    bench.controller.ok();
    EXPECT_EQ(bench.liveText(1), u"A");
}

TEST(Editing, ok_creates_no_title_where_none_is_stored)
{
    SetupBench bench;
    bench.live->getShortcutTitleArray()->set(1, ArchiveValue());
    bench.open();
    bench.button(0).setUniqueName("Name");
    bench.controller.ok();
    EXPECT_EQ(bench.live->getShortcutTitle(1), std::nullopt);
}

TEST(Editing, cancel_restores_titles_and_shortcuts)
{
    SetupBench bench;
    bench.give(1, 0, 0, 0, "A");
    bench.live->setShortcutTitle("Stored", 1);
    bench.open();
    press(bench.field(0), Keys::F5);
    click(*bench.controller.assignButton());
    bench.button(0).setUniqueName("Typed");
    bench.controller.cancel();
    EXPECT_EQ(bench.button(0).uniqueName(), u"Stored");
    EXPECT_EQ(bench.workingText(1), u"A");
    EXPECT_EQ(bench.field(0).stringValue(), u"A");
    EXPECT_EQ(bench.liveText(1), u"A");
    EXPECT_FALSE(bench.controller.isVisible());
}

TEST(Editing, cancel_restores_titles_also_after_the_first_ok)
{
    SetupBench bench;
    bench.give(1, 0, 0, 0, "A");
    bench.live->setShortcutTitle("Stored", 1);
    bench.open();
    bench.controller.ok();
    bench.open();
    bench.button(0).setUniqueName("Typed");
    bench.controller.cancel();
    EXPECT_EQ(bench.button(0).uniqueName(), u"Stored");
}

TEST(Editing, a_name_typed_where_no_title_is_stored_survives_cancel_and_reopening)
{
    SetupBench bench;
    bench.live->getShortcutTitleArray()->set(1, ArchiveValue());
    bench.open();
    bench.button(0).setUniqueName("Typed");
    bench.controller.cancel();
    EXPECT_EQ(bench.button(0).uniqueName(), u"Typed");
    bench.open();
    EXPECT_EQ(bench.button(0).uniqueName(), u"Typed");
}

TEST(Editing, reopening_shows_the_live_set_again)
{
    SetupBench bench;
    bench.open();
    press(bench.field(0), Keys::F5);
    click(*bench.controller.assignButton());
    bench.controller.window()->close();
    bench.open();
    EXPECT_EQ(bench.field(0).stringValue(), u"");
    EXPECT_EQ(bench.workingText(1), u"");
}

TEST(Editing, every_field_counts_for_assign_and_is_written_by_it)
{
    SetupBench bench;
    bench.open();
    const std::pair<Key, QString> keys[] { { Keys::F5, "F5" }, { Keys::Tab, "TAB" },
        { Keys::Return, "RETURN" }, { Keys::PageDown, "PAGE DOWN" } };
    for (int i = 0; i < 4; ++i) {
        press(bench.field(i), keys[i].first);
        EXPECT_TRUE(bench.mayAssign()) << i;
        click(*bench.controller.assignButton());
        EXPECT_FALSE(bench.mayAssign()) << i;
        EXPECT_EQ(bench.workingText(1, static_cast<std::size_t>(i)), keys[i].second);
    }
    EXPECT_EQ(bench.button(0).spokenShortcuts(), u"F5, TAB, RETURN, PAGE DOWN")
        << "the button shows it at once";
}

TEST(Editing, whether_a_shortcut_is_left_is_told_by_its_text_and_not_by_its_key_code)
{
    SetupBench bench;
    bench.give(1, 0, 0, 96, "F5");
    bench.live->setShortcutTitle("Name", 1);
    bench.open();
    press(bench.field(0), with(Modifier::Command, Keys::A)); // key code 0
    click(*bench.controller.assignButton());
    EXPECT_EQ(bench.button(0).uniqueName(), u"Name");
    press(bench.field(0), Keys::Unnamed);
    click(*bench.controller.assignButton());
    EXPECT_EQ(bench.button(0).uniqueName(), u"");
}

TEST(Editing, cancel_restores_no_title_of_a_key_that_the_live_set_lacks)
{
    SetupBench outer;
    const auto titles = std::make_shared<ArchiveDictionary>();
    titles->set(3, QString("Three"));
    UserAssinableWindowController fresh(outer.services());
    fresh.initShortcut(setOf(std::make_shared<ArchiveDictionary>(), titles));
    fresh.userAssignableButtons()[2]->view()->setUniqueName("Typed");
    fresh.cancel();
    EXPECT_EQ(fresh.userAssignableButtons()[2]->view()->uniqueName(), u"Typed");
}

} // namespace
} // namespace kestrel::test
