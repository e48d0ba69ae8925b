#include "tests/setup/SetupBench.h"

namespace kestrel::test {
namespace {

ArchiveArray counted(std::size_t size)
{
    ArchiveArray values;
    for (std::size_t i = 0; i < size; ++i)
        values.append(i % 4 == 2 ? ArchiveValue(QString("t%1").arg(i)) : ArchiveValue(i));
    return values;
}

ButtonEntry entryOf(ArchiveArray values)
{
    return std::make_shared<ArchiveArray>(std::move(values));
}

TEST(CopyShortcutData, four_elements_at_the_offset_are_copied_and_the_rest_stays)
{
    const auto source = entryOf(counted(16));
    const auto target = entryOf({ 9, 9, 9, 9, 9, 9, 9, 9, 9 });
    UserAssinableWindowController::copyShortcutData(4, source, target);
    EXPECT_EQ(*target, (ArchiveArray { 9, 9, 9, 9, 4, 5, QString("t6"), 7, 9 }));
    EXPECT_EQ(*source, counted(16));
}

TEST(CopyShortcutData, a_source_without_the_record_is_padded_and_the_destination_left_alone)
{
    const auto source = entryOf({ 1, 2, QString("x"), 3 });
    const auto target = entryOf({ 9, 9, 9, 9, 9, 9, 9, 9 });
    UserAssinableWindowController::copyShortcutData(4, source, target);
    EXPECT_EQ(*target, (ArchiveArray { 9, 9, 9, 9, 9, 9, 9, 9 }));
    EXPECT_EQ(*source, (ArchiveArray { 1, 2, QString("x"), 3, 0, 0, QString(), 0 }));
}

TEST(CopyShortcutData, a_record_that_ends_early_is_completed_in_the_source_and_copied)
{
    const auto source = entryOf({ 1, 2 });
    const auto target = entryOf({ 9, 9, 9, 9 });
    UserAssinableWindowController::copyShortcutData(0, source, target);
    EXPECT_EQ(*source, (ArchiveArray { 1, 2, QString(), 0 }));
    EXPECT_EQ(*target, *source);
}

TEST(CopyShortcutData, without_a_destination_nothing_is_copied)
{
    const auto source = entryOf(counted(16));
    UserAssinableWindowController::copyShortcutData(0, source, nullptr);
    EXPECT_EQ(*source, counted(16));
}

TEST(WorkingCopy, it_has_entries_of_its_own_that_the_buttons_share)
{
    SetupBench bench;
    const auto working = bench.controller.myShortcutArray();
    for (int number = 1; number <= 12; ++number) {
        const ButtonEntry entry = working->value(number).array();
        EXPECT_NE(entry, bench.live->getSwitchShortcut(number));
        EXPECT_EQ(bench.button(number - 1).shortcutArray(), entry);
    }
}

TEST(WorkingCopy, taking_another_set_replaces_entries_and_titles)
{
    SetupBench bench;
    UserAssignFile other;
    other.initShortcutArray();
    other.getSwitchShortcut(3)->replace(2, QString("X"));
    other.setShortcutTitle("Three", 3);
    const ButtonEntry former = bench.button(2).shortcutArray();
    bench.controller.setupShortcut(other);
    EXPECT_NE(bench.button(2).shortcutArray(), former);
    EXPECT_EQ(bench.workingText(3), u"X");
    EXPECT_EQ(bench.button(2).uniqueName(), u"Three");
    EXPECT_EQ(bench.liveText(3), u"");
}

TEST(WorkingCopy, taking_another_set_compares_the_fields_with_it)
{
    SetupBench bench;
    bench.open();
    press(bench.field(0), Keys::F5);
    ASSERT_TRUE(bench.mayAssign());
    UserAssignFile other;
    other.initShortcutArray();
    other.getSwitchShortcut(1)->replace(1, 96);
    other.getSwitchShortcut(1)->replace(2, QString("F5"));
    bench.controller.setupShortcut(other);
    EXPECT_FALSE(bench.mayAssign());
}

TEST(WorkingCopy, entries_that_the_set_does_not_have_stay)
{
    SetupBench bench;
    bench.give(2, 0, 0, 0, "A");
    bench.controller.setupShortcut(*bench.live);
    UserAssignFile empty;
    bench.controller.setupShortcut(empty);
    EXPECT_EQ(bench.workingText(2), u"A");
}

TEST(WorkingCopy, short_entries_of_a_set_are_padded_in_the_set_and_read_as_far_as_they_go)
{
    SetupBench bench;
    UserAssignFile set;
    set.initShortcutArray();
    set.getShortcutArray()->set(1, entryOf({}));
    set.getShortcutArray()->set(2, entryOf({ 0x100000, 1, QString("S"), 0 }));
    set.getShortcutArray()->set(3, entryOf({ 0x100000, 1, QString("S"), 0, 5, 6 }));
    bench.controller.setupShortcut(set);
    for (int number = 1; number <= 3; ++number)
        EXPECT_EQ(set.getSwitchShortcut(number)->size(), 16U);
    EXPECT_EQ(bench.workingText(2), u"S");
    EXPECT_EQ(bench.controller.myShortcutArray()->value(3).array()->at(5), ArchiveValue(6));
    EXPECT_EQ(bench.button(2).getEntryShortcutNum(), 1);
}

TEST(WorkingCopy, committing_copies_every_record_into_the_sets_own_entries)
{
    SetupBench bench;
    const ButtonEntry liveEntry = bench.live->getSwitchShortcut(7);
    const ButtonEntry working = bench.controller.myShortcutArray()->value(7).array();
    *working = counted(16);
    bench.controller.changeShortcut(*bench.live);
    EXPECT_EQ(bench.live->getSwitchShortcut(7), liveEntry);
    EXPECT_EQ(*liveEntry, counted(16));
}

TEST(WorkingCopy, committing_writes_names_only_where_the_set_has_titles)
{
    SetupBench bench;
    UserAssignFile set;
    set.initShortcutArray();
    set.getShortcutTitleArray()->set(2, ArchiveValue());
    bench.button(0).setUniqueName("One");
    bench.button(1).setUniqueName("Two");
    bench.controller.changeShortcut(set);
    EXPECT_EQ(set.getShortcutTitle(1), u"One");
    EXPECT_EQ(set.getShortcutTitle(2), std::nullopt);
}

TEST(WorkingCopy, keys_that_the_set_lacks_are_not_added_to_it)
{
    SetupBench bench;
    UserAssignFile set;
    set.setShortcutTitle("ignored", 1);
    bench.controller.changeShortcut(set);
    EXPECT_EQ(set.count(), 0U);
}

TEST(WorkingCopy, committing_before_any_set_was_taken_does_nothing)
{
    SetupBench outer;
    UserAssinableWindowController fresh(outer.services());
    UserAssignFile set;
    set.initShortcutArray();
    fresh.changeShortcut(set);
    fresh.ok();
    fresh.cancel();
    EXPECT_EQ(set.count(), 12U);
}

TEST(WorkingCopy, the_title_of_a_button_without_an_entry_outlives_ok)
{
    SetupBench outer;
    const auto entries = std::make_shared<ArchiveDictionary>();
    entries->set(1, entryOf(counted(16)));
    const auto titles = std::make_shared<ArchiveDictionary>();
    titles->set(1, QString("One"));
    titles->set(3, QString("Three"));
    const auto live = setOf(entries, titles);
    UserAssinableWindowController fresh(outer.services());
    fresh.initShortcut(live);
    fresh.ok();
    EXPECT_EQ(live->getShortcutTitle(1), u"One");
    EXPECT_EQ(live->getShortcutTitle(3), u"Three");
}

TEST(WorkingCopy, an_entry_of_no_button_is_kept_and_goes_where_a_set_has_one)
{
    SetupBench bench;
    UserAssignFile loaded;
    loaded.initShortcutArray();
    loaded.getShortcutArray()->set(13, entryOf(counted(16)));
    bench.controller.setupShortcut(loaded);
    EXPECT_EQ(*bench.controller.myShortcutArray()->value(13).array(), counted(16));
    UserAssignFile set;
    set.initShortcutArray();
    set.getShortcutArray()->set(13, entryOf(ArchiveArray(*set.getSwitchShortcut(1))));
    bench.controller.changeShortcut(set);
    EXPECT_EQ(*set.getSwitchShortcut(13), counted(16));
}

} // namespace
} // namespace kestrel::test
