#include "assign/UserAssignFile.h"

#include "archive/ArchiveObject.h"
#include "archive/KeyedArchive.h"
#include "archive/PropertyList.h"
#include "tests/archive/ArchiveText.h"
#include "tests/archive/Refusal.h"

#include <gtest/gtest.h>

namespace kestrel::test {

namespace {

const std::string EmptyEntry = "[i0,i0,'',i0,i0,i0,'',i0,i0,i0,'',i0,i0,i0,'',i0,]";

// Decodes a set from an archived object with the given members.
std::shared_ptr<UserAssignFile> decoded(std::initializer_list<ArchiveObject::Member> members)
{
    auto coder = std::make_shared<ArchiveObject>(QStringList { "UserAssignFile", "NSObject" });
    for (const ArchiveObject::Member& member : members)
        coder->append(member);
    return UserAssignFile::fromFileImage(KeyedArchive::archivedData(coder));
}

TEST(UserAssignFile, a_new_set_has_no_tables)
{
    const UserAssignFile set;
    EXPECT_FALSE(set.isExistShortcut());
    EXPECT_EQ(set.count(), 0u);
    EXPECT_TRUE(set.allKeys().empty());
    EXPECT_EQ(set.getShortcutArray(), nullptr);
    EXPECT_EQ(set.getShortcutTitleArray(), nullptr);
    EXPECT_EQ(set.getSwitchShortcut(1), nullptr);
    EXPECT_EQ(set.getShortcutTitle(1), std::nullopt);
    EXPECT_EQ(set.myType().text(), "PT_UserAssign");
    EXPECT_EQ(set.myVersion(), 1);
    EXPECT_TRUE(set.isUserAssignFile());
}

TEST(UserAssignFile, the_default_table_has_twelve_empty_entries_and_titles)
{
    UserAssignFile set;
    set.initShortcutArray();
    EXPECT_TRUE(set.isExistShortcut());
    EXPECT_EQ(set.count(), 12u);
    for (int number = 1; number <= 12; ++number) {
        EXPECT_EQ(set.allKeys()[static_cast<std::size_t>(number - 1)], ArchiveValue(number));
        EXPECT_EQ(archiveText(set.getSwitchShortcut(number)), EmptyEntry);
        EXPECT_EQ(set.getShortcutTitle(number), QString());
    }
    for (int number = 2; number <= 12; ++number) {
        for (int other = 1; other < number; ++other)
            EXPECT_NE(set.getSwitchShortcut(number), set.getSwitchShortcut(other));
    }
}

TEST(UserAssignFile, only_buttons_one_to_twelve_have_an_entry)
{
    UserAssignFile set;
    set.initShortcutArray();
    for (const int number : { 0, 13, -1, 64 })
        EXPECT_EQ(set.getSwitchShortcut(number), nullptr);
    EXPECT_NE(set.getSwitchShortcut(12), nullptr);
}

TEST(UserAssignFile, a_key_is_found_by_its_numeric_value)
{
    UserAssignFile set;
    set.initShortcutArray();
    EXPECT_EQ(set.getShortcut(std::int64_t(7)), set.getSwitchShortcut(7));
    EXPECT_EQ(set.getShortcut(7.0), set.getSwitchShortcut(7));
    EXPECT_EQ(set.getShortcut(QStringLiteral("7")), nullptr);
    EXPECT_EQ(set.getShortcut({}), nullptr);
}

TEST(UserAssignFile, filling_the_shortcuts_resets_the_titles_but_not_the_other_way_round)
{
    UserAssignFile set;
    set.initShortcutArray();
    set.setShortcutTitle("Save", 6);
    set.getSwitchShortcut(6)->replace(1, 5);
    set.initShortcutTitleArray();
    EXPECT_EQ(set.getShortcutTitle(6), QString());
    EXPECT_EQ(set.getSwitchShortcut(6)->at(1), ArchiveValue(5));
    set.setShortcutTitle("Save", 6);
    set.initShortcutArray();
    EXPECT_EQ(set.getShortcutTitle(6), QString());
}

TEST(UserAssignFile, filling_replaces_the_tables_and_touches_nothing_of_the_old_ones)
{
    UserAssignFile set;
    set.initShortcutArray();
    set.getShortcutArray()->set(13, set.getSwitchShortcut(1));
    set.setShortcutTitle("more", 13);
    set.getSwitchShortcut(1)->replace(1, 5);
    const auto shortcuts = set.getShortcutArray();
    const auto titles = set.getShortcutTitleArray();
    set.initShortcutArray();
    EXPECT_EQ(set.count(), 12u);
    EXPECT_EQ(set.getShortcutTitle(13), std::nullopt);
    EXPECT_EQ(shortcuts->size(), 13u);
    EXPECT_EQ(shortcuts->value(1).array()->at(1), ArchiveValue(5));
    EXPECT_EQ(titles->value(13).text(), "more");
}

TEST(UserAssignFile, the_two_tables_are_set_read_and_counted_apart)
{
    auto shortcuts = std::make_shared<ArchiveDictionary>();
    shortcuts->set(3, std::make_shared<ArchiveArray>());
    auto titles = std::make_shared<ArchiveDictionary>();
    titles->set(1, QStringLiteral("Undo"));
    titles->set(2, QStringLiteral("Redo"));
    UserAssignFile set;
    set.setTitleData(KeyedArchive::archivedData(titles));
    EXPECT_FALSE(set.isExistShortcut());
    set.setData(KeyedArchive::archivedData(shortcuts));
    EXPECT_EQ(set.count(), 1u);
    ASSERT_EQ(set.allKeys().size(), 1u);
    EXPECT_EQ(set.allKeys()[0], ArchiveValue(3));
    EXPECT_EQ(set.getShortcutTitle(2), QString("Redo"));
    EXPECT_EQ(set.getData(), KeyedArchive::archivedData(shortcuts));
    EXPECT_EQ(set.getTitleData(), KeyedArchive::archivedData(titles));
}

TEST(UserAssignFile, a_change_inside_an_entry_changes_the_set)
{
    UserAssignFile set;
    set.initShortcutArray();
    set.getShortcut(3)->replace(2, QStringLiteral("F5"));
    EXPECT_EQ(set.getSwitchShortcut(3)->at(2).text(), "F5");
    EXPECT_EQ(set.getShortcutArray()->value(3).array()->at(2).text(), "F5");
    UserAssignFile copy;
    copy.setData(set.getData());
    EXPECT_EQ(copy.getShortcut(3)->at(2).text(), "F5");
}

TEST(UserAssignFile, the_tables_are_handed_out_and_not_copied)
{
    UserAssignFile set;
    set.initShortcutArray();
    set.getShortcutTitleArray()->set(2, QStringLiteral("Undo"));
    EXPECT_EQ(set.getShortcutTitle(2), QString("Undo"));
    EXPECT_EQ(set.getShortcutArray(), set.getShortcutArray());
}

TEST(UserAssignFile, a_title_is_stored_under_any_key)
{
    UserAssignFile set;
    set.setShortcutTitle("lost", 1); // no table yet
    EXPECT_EQ(set.getShortcutTitle(1), std::nullopt);
    set.initShortcutTitleArray();
    set.setShortcutTitle("Undo", 1.0);
    set.setShortcutTitle("more", 40);
    EXPECT_EQ(set.getShortcutTitle(1), QString("Undo"));
    EXPECT_EQ(set.getShortcutTitle(40), QString("more"));
    EXPECT_EQ(set.getShortcutTitleArray()->size(), 13u);
}

TEST(UserAssignFile, encoding_then_decoding_gives_an_equal_set)
{
    UserAssignFile set;
    set.initShortcutArray();
    set.setShortcutTitle("Größer ⌘", 6);
    const ButtonEntry entry = set.getSwitchShortcut(6);
    entry->replace(0, 0x120000);
    entry->replace(1, 1);
    entry->replace(2, QStringLiteral("S"));
    entry->replace(3, true);
    const auto again = UserAssignFile::fromFileImage(set.fileImage());
    ASSERT_TRUE(again);
    EXPECT_EQ(archiveText(again->getShortcutArray()), archiveText(set.getShortcutArray()));
    EXPECT_EQ(
        archiveText(again->getShortcutTitleArray()), archiveText(set.getShortcutTitleArray()));
    EXPECT_EQ(again->myType(), set.myType());
    EXPECT_EQ(again->myVersion(), 1);
}

TEST(UserAssignFile, writes_its_four_members_in_order)
{
    const UserAssignFile set;
    EXPECT_EQ(archiveText(KeyedArchive::unarchivedRoot(set.fileImage())),
        "UserAssignFile:NSObject<&myType 'PT_UserAssign';=myVersion i1;&orgShortcutArray nil;"
        "&orgShortcutTitleArray nil;>");
}

TEST(UserAssignFile, keeps_the_version_that_it_read)
{
    const auto set
        = decoded({ { "myVersion", std::int64_t(1) << 40, ArchiveObject::Storage::Inline } });
    EXPECT_EQ(set->myVersion(), std::int64_t(1) << 40);
    EXPECT_EQ(UserAssignFile::fromFileImage(set->fileImage())->myVersion(), std::int64_t(1) << 40);
}

TEST(UserAssignFile, a_decoded_set_gets_no_defaults)
{
    const auto set = decoded({});
    EXPECT_EQ(set->myVersion(), 0);
    EXPECT_TRUE(set->myType().isNull());
    EXPECT_FALSE(set->isExistShortcut());
}

TEST(UserAssignFile, a_set_without_a_type_counts_and_one_of_another_type_does_not)
{
    EXPECT_TRUE(decoded({})->isUserAssignFile());
    EXPECT_TRUE(decoded({ { "myType", QStringLiteral("PT_UserAssign") } })->isUserAssignFile());
    EXPECT_FALSE(decoded({ { "myType", QStringLiteral("pt_userassign") } })->isUserAssignFile());
    EXPECT_FALSE(decoded({ { "myType", QString() } })->isUserAssignFile());
    EXPECT_FALSE(decoded({ { "myType", 5 } })->isUserAssignFile());
}

TEST(UserAssignFile, an_archive_of_something_else_is_no_set)
{
    EXPECT_EQ(UserAssignFile::fromFileImage(KeyedArchive::archivedData(5)), nullptr);
    UserAssignFile set;
    set.initShortcutArray();
    EXPECT_EQ(UserAssignFile::fromFileImage(set.getData()), nullptr);
    const auto other = std::make_shared<ArchiveObject>(QStringList { "Other", "UserAssignFile" });
    EXPECT_EQ(UserAssignFile::fromFileImage(KeyedArchive::archivedData(other)), nullptr);
    EXPECT_THROW(
        (void)UserAssignFile::fromFileImage(viewOf(QByteArray("no archive"))), ArchiveError);
}

TEST(UserAssignFile, takes_any_root_for_a_table_and_writes_it_again)
{
    const Bytes odd
        = KeyedArchive::archivedData(std::make_shared<ArchiveArray>(ArchiveArray { 1, 2 }));
    UserAssignFile set;
    set.setData(odd);
    set.setTitleData(odd);
    EXPECT_TRUE(set.isExistShortcut());
    EXPECT_EQ(set.count(), 0u);
    EXPECT_EQ(set.getSwitchShortcut(1), nullptr);
    EXPECT_EQ(set.getShortcutTitle(1), std::nullopt);
    set.setShortcutTitle("lost", 1);
    EXPECT_EQ(set.getData(), odd);
    EXPECT_EQ(set.getTitleData(), odd);
}

TEST(UserAssignFile, a_table_of_other_things_has_no_entries_and_keeps_them)
{
    auto table = std::make_shared<ArchiveDictionary>();
    table->set(1, QStringLiteral("no entry"));
    table->set(QStringLiteral("x"), 5);
    const Bytes odd = KeyedArchive::archivedData(table);
    UserAssignFile set;
    set.setData(odd);
    set.setTitleData(odd);
    EXPECT_EQ(set.count(), 2u);
    EXPECT_EQ(set.getSwitchShortcut(1), nullptr);
    EXPECT_EQ(set.getShortcutTitle(1), QString("no entry"));
    EXPECT_EQ(set.getShortcutTitle(QStringLiteral("x")), std::nullopt);
    EXPECT_EQ(set.getData(), odd);
}

TEST(UserAssignFile, data_that_is_no_archive_leaves_the_table_as_it_was)
{
    UserAssignFile set;
    set.initShortcutArray();
    EXPECT_THROW(set.setData(viewOf(QByteArray("no archive"))), ArchiveError);
    EXPECT_THROW(set.setTitleData(viewOf(QByteArray())), ArchiveError);
    EXPECT_EQ(set.count(), 12u);
    EXPECT_EQ(set.getShortcutTitle(12), QString());
}

TEST(UserAssignFile, a_root_that_is_nothing_is_a_missing_table)
{
    UserAssignFile set;
    set.initShortcutArray();
    set.setData(UserAssignFile().getData());
    EXPECT_FALSE(set.isExistShortcut());
}

} // namespace

} // namespace kestrel::test
