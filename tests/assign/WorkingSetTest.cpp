#include "assign/WorkingSet.h"

#include "archive/ArchiveObject.h"

#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

ButtonEntry entryOf(ArchiveArray values)
{
    return std::make_shared<ArchiveArray>(std::move(values));
}

// The four records hold "A" to "D" under the key codes 1 to 4.
ButtonEntry filledEntry()
{
    return entryOf({ 0, 1, QString("A"), 0, 0, 2, QString("B"), 0, 0, 3, QString("C"), 0, 0, 4,
        QString("D"), true });
}

// Makes a set of the two tables. Either one may be null.
UserAssignFile setOf(const ArchiveValue& shortcuts, const ArchiveValue& titles)
{
    ArchiveObject coder({ "UserAssignFile", "NSObject" });
    coder.encodeObject("orgShortcutArray", shortcuts);
    coder.encodeObject("orgShortcutTitleArray", titles);
    return UserAssignFile(coder);
}

std::shared_ptr<ArchiveDictionary> table(std::initializer_list<ArchiveDictionary::Entry> entries)
{
    auto table = std::make_shared<ArchiveDictionary>();
    for (const auto& [key, value] : entries)
        table->set(key, value);
    return table;
}

UserAssignFile emptySet()
{
    UserAssignFile set;
    set.initShortcutArray();
    return set;
}

TEST(ButtonEntry, an_empty_entry_is_four_empty_records_and_shares_nothing)
{
    const ButtonEntry entry = emptyButtonEntry();
    EXPECT_EQ(*entry,
        (ArchiveArray {
            0, 0, QString(), 0, 0, 0, QString(), 0, 0, 0, QString(), 0, 0, 0, QString(), 0 }));
    EXPECT_EQ(*emptySet().getSwitchShortcut(12), *entry);
    EXPECT_NE(emptyButtonEntry(), entry);
}

TEST(ButtonEntry, copying_completes_what_the_source_lacks)
{
    const ButtonEntry source = entryOf({ 7, 8 });
    const ButtonEntry target = filledEntry();
    copyButtonEntry(source, target);
    EXPECT_EQ(*source,
        (ArchiveArray {
            7, 8, QString(), 0, 0, 0, QString(), 0, 0, 0, QString(), 0, 0, 0, QString(), 0 }));
    EXPECT_EQ(target->at(0), ArchiveValue(7));
    EXPECT_EQ(target->at(6).text(), u"B") << "a record that the source did not have is not copied";
}

TEST(WorkingSet, it_is_empty_until_a_set_was_taken)
{
    WorkingSet working;
    EXPECT_EQ(working.myShortcutArray(), nullptr);
    EXPECT_EQ(working.entry(1), nullptr);
    EXPECT_EQ(working.name(1), u"");
    UserAssignFile set = emptySet();
    set.setShortcutTitle("Stored", 1);
    working.setName(1, "Typed");
    working.write(set);
    EXPECT_EQ(set.getShortcutTitle(1), u"Stored");
}

TEST(WorkingSet, its_entries_are_copies_and_its_names_the_titles)
{
    UserAssignFile set = emptySet();
    set.getShortcutArray()->set(3, filledEntry());
    set.setShortcutTitle("Three", 3);
    WorkingSet working;
    working.take(set);
    EXPECT_EQ(*working.entry(3), *filledEntry());
    EXPECT_NE(working.entry(3), set.getSwitchShortcut(3));
    EXPECT_EQ(*working.entry(12), *emptyButtonEntry());
    EXPECT_EQ(working.name(3), u"Three");
    working.entry(3)->replace(2, QString("X"));
    EXPECT_EQ(set.getSwitchShortcut(3)->at(2).text(), u"A");
}

TEST(WorkingSet, an_entry_that_is_handed_out_stays_the_one_that_is_written)
{
    UserAssignFile set = emptySet();
    WorkingSet working;
    working.take(set);
    const ButtonEntry shared = working.entry(5);
    EXPECT_EQ(working.entry(5), shared);
    shared->replace(2, QString("X"));
    const ButtonEntry stored = set.getSwitchShortcut(5);
    working.write(set);
    EXPECT_EQ(set.getSwitchShortcut(5), stored) << "the set keeps its own entry";
    EXPECT_EQ(stored->at(2).text(), u"X");
}

TEST(WorkingSet, taking_leaves_what_the_set_lacks)
{
    WorkingSet working;
    UserAssignFile first = emptySet();
    first.getShortcutArray()->set(2, filledEntry());
    first.setShortcutTitle("Two", 2);
    working.take(first);
    const ButtonEntry kept = working.entry(2);
    working.take(setOf(table({ { 1, filledEntry() }, { 3, 7 } }), table({ { 2, QString("?") } })));
    EXPECT_EQ(working.entry(2), kept);
    EXPECT_EQ(working.name(2), u"Two") << "a title without an entry is not taken";
    EXPECT_EQ(*working.entry(1), *filledEntry());
    EXPECT_EQ(*working.entry(3), *emptyButtonEntry()) << "what is no entry is not taken";
}

TEST(WorkingSet, a_missing_title_leaves_the_name)
{
    WorkingSet working;
    working.setName(1, "Typed");
    working.take(setOf(table({ { 1, filledEntry() } }), {}));
    EXPECT_EQ(working.name(1), u"Typed");
}

TEST(WorkingSet, entries_that_are_too_short_are_completed_in_the_set_that_is_taken)
{
    const UserAssignFile set = setOf(table({ { 1, entryOf({ 0, 1, QString("A") }) } }), {});
    WorkingSet working;
    working.take(set);
    EXPECT_EQ(set.getSwitchShortcut(1)->size(), ButtonEntrySize);
    EXPECT_EQ(working.entry(1)->at(2).text(), u"A");
}

TEST(WorkingSet, writing_adds_neither_entries_nor_titles)
{
    WorkingSet working;
    working.take(emptySet());
    working.setName(1, "One");
    working.setName(2, "Two");
    UserAssignFile set = setOf(
        table({ { 1, emptyButtonEntry() } }), table({ { 2, QString() }, { 3, ArchiveValue() } }));
    working.write(set);
    EXPECT_EQ(set.count(), 1U);
    EXPECT_EQ(set.getShortcutTitle(1), std::nullopt);
    EXPECT_EQ(set.getShortcutTitle(2), u"Two");
    EXPECT_EQ(set.getShortcutTitle(3), std::nullopt);
}

TEST(WorkingSet, an_empty_name_erases_the_title_of_a_button_that_has_an_entry)
{
    UserAssignFile set = setOf(
        table({ { 1, filledEntry() } }), table({ { 1, QString("One") }, { 3, QString("Three") } }));
    WorkingSet working;
    working.take(set);
    working.setName(1, {});
    working.write(set);
    EXPECT_EQ(set.getShortcutTitle(1), u"");
    EXPECT_EQ(set.getShortcutTitle(3), u"Three") << "a button without an entry keeps its title";
    working.setName(3, "Typed");
    working.write(set);
    EXPECT_EQ(set.getShortcutTitle(3), u"Typed");
}

TEST(WorkingSet, entries_of_no_button_are_kept_and_written_where_a_set_has_them)
{
    WorkingSet working;
    working.take(setOf(table({ { 13, filledEntry() }, { QString("1"), filledEntry() } }), {}));
    EXPECT_EQ(*working.entry(13), *filledEntry());
    EXPECT_EQ(working.entry(1), nullptr) << "a text is no button number";
    UserAssignFile set = setOf(table({ { 13, emptyButtonEntry() } }), {});
    working.write(set);
    EXPECT_EQ(*set.getSwitchShortcut(13), *filledEntry());
}

TEST(WorkingSet, titles_alone_are_taken_for_the_keys_of_the_set)
{
    WorkingSet working;
    working.take(emptySet());
    const ButtonEntry entry = working.entry(1);
    for (int number = 1; number <= 12; ++number)
        working.setName(number, "Typed");
    working.takeTitles(setOf(table({ { 1, filledEntry() }, { 2, filledEntry() } }),
        table({ { 1, QString("One") }, { 3, QString("Three") } })));
    EXPECT_EQ(working.name(1), u"One");
    EXPECT_EQ(working.name(2), u"Typed") << "the set has no title for it";
    EXPECT_EQ(working.name(3), u"Typed") << "the set has no such key";
    EXPECT_EQ(working.entry(1), entry);
}

TEST(WorkingSet, numbers_of_no_button_have_no_name)
{
    WorkingSet working;
    for (const int number : { 0, 13, -1 }) {
        working.setName(number, "Typed");
        EXPECT_EQ(working.name(number), u"");
    }
}

} // namespace
} // namespace kestrel::test
