#include "assign/StoredAssignments.h"

#include "tests/archive/ArchiveText.h"
#include "tests/archive/Refusal.h"
#include "tests/assign/RecordedDefaults.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>

namespace kestrel::test {

namespace {

const Bytes Damage { 'd', 'a', 'm', 'a', 'g', 'e' };

std::shared_ptr<UserAssignFile> someSet()
{
    auto set = std::make_shared<UserAssignFile>();
    set->initShortcutArray();
    set->getSwitchShortcut(6)->replace(2, QStringLiteral("S"));
    set->setShortcutTitle("Save", 6);
    return set;
}

class StoredAssignmentsTest : public testing::Test {
protected:
    void store(const UserAssignFile& set)
    {
        defaults.content["PT_UserAssign"] = set.getData();
        defaults.content["PT_UserAssignTitle"] = set.getTitleData();
    }
    const UserAssignFile& live() const { return *stored.myUserAssignFile(); }
    std::vector<std::string> keys() const
    {
        std::vector<std::string> keys;
        for (const auto& [key, value] : defaults.content)
            keys.push_back(key);
        return keys;
    }

    RecordedDefaults defaults;
    StoredAssignments stored { defaults };
};

TEST_F(StoredAssignmentsTest, the_first_launch_starts_with_twelve_empty_entries_and_titles)
{
    EXPECT_EQ(stored.myUserAssignFile(), nullptr);
    stored.setupShortcutKey();
    UserAssignFile fresh;
    fresh.initShortcutArray();
    EXPECT_EQ(archiveText(live().getShortcutArray()), archiveText(fresh.getShortcutArray()));
    EXPECT_EQ(
        archiveText(live().getShortcutTitleArray()), archiveText(fresh.getShortcutTitleArray()));
    EXPECT_TRUE(defaults.content.empty());
    EXPECT_TRUE(defaults.onDisk.empty());
}

TEST_F(StoredAssignmentsTest, shortcuts_and_titles_are_restored)
{
    store(*someSet());
    stored.setupShortcutKey();
    EXPECT_EQ(live().getSwitchShortcut(6)->at(2).text(), "S");
    EXPECT_EQ(live().getShortcutTitle(6), QString("Save"));
}

TEST_F(StoredAssignmentsTest, shortcuts_without_titles_get_empty_titles)
{
    defaults.content["PT_UserAssign"] = someSet()->getData();
    stored.setupShortcutKey();
    EXPECT_EQ(live().getSwitchShortcut(6)->at(2).text(), "S");
    EXPECT_EQ(live().getShortcutTitleArray()->size(), 12u);
    EXPECT_EQ(live().getShortcutTitle(6), QString());
}

TEST_F(StoredAssignmentsTest, titles_without_shortcuts_are_restored_over_the_empty_ones)
{
    defaults.content["PT_UserAssignTitle"] = someSet()->getTitleData();
    stored.setupShortcutKey();
    EXPECT_EQ(live().getSwitchShortcut(6)->at(2).text(), "");
    EXPECT_EQ(live().getShortcutTitle(6), QString("Save"));
}

TEST_F(StoredAssignmentsTest, every_restoring_replaces_the_live_set)
{
    stored.setupShortcutKey();
    const auto first = stored.myUserAssignFile();
    store(*someSet());
    stored.setupShortcutKey();
    EXPECT_NE(stored.myUserAssignFile(), first);
    EXPECT_EQ(first->getSwitchShortcut(6)->at(2).text(), "");
    EXPECT_EQ(live().getSwitchShortcut(6)->at(2).text(), "S");
}

TEST_F(StoredAssignmentsTest, the_live_set_is_written_and_synchronised_once)
{
    stored.setupShortcutKey();
    stored.myUserAssignFile()->setShortcutTitle("Undo", 1);
    EXPECT_TRUE(stored.writeUserDefault());
    ASSERT_EQ(defaults.onDisk.size(), 1u);
    EXPECT_EQ(defaults.onDisk[0].at("PT_UserAssign"), live().getData());
    EXPECT_EQ(defaults.onDisk[0].at("PT_UserAssignTitle"), live().getTitleData());
    EXPECT_EQ(keys(), (std::vector<std::string> { "PT_UserAssign", "PT_UserAssignTitle" }));
}

TEST_F(StoredAssignmentsTest, nothing_is_written_without_a_live_set)
{
    EXPECT_TRUE(stored.writeUserDefault());
    EXPECT_TRUE(defaults.content.empty());
    EXPECT_TRUE(defaults.onDisk.empty());
}

TEST_F(StoredAssignmentsTest, a_set_without_a_shortcut_table_writes_nothing_titles_included)
{
    const Bytes nothing = UserAssignFile().getData();
    const Bytes titles = someSet()->getTitleData();
    defaults.content["PT_UserAssign"] = nothing;
    defaults.content["PT_UserAssignTitle"] = titles;
    stored.setupShortcutKey();
    EXPECT_FALSE(live().isExistShortcut());
    stored.myUserAssignFile()->setShortcutTitle("changed", 6);
    EXPECT_TRUE(stored.writeUserDefault());
    EXPECT_TRUE(defaults.onDisk.empty());
    EXPECT_EQ(defaults.content["PT_UserAssign"], nothing);
    EXPECT_EQ(defaults.content["PT_UserAssignTitle"], titles);
}

TEST_F(StoredAssignmentsTest, a_failure_to_synchronise_is_told)
{
    stored.setupShortcutKey();
    defaults.isFailing = true;
    EXPECT_FALSE(stored.writeUserDefault());
}

TEST_F(StoredAssignmentsTest, a_set_that_cannot_be_archived_leaves_the_defaults_alone)
{
    store(*someSet());
    stored.setupShortcutKey();
    const auto before = defaults.content;
    const ButtonEntry entry = stored.myUserAssignFile()->getSwitchShortcut(1);
    entry->replace(0, entry);
    EXPECT_FALSE(stored.writeUserDefault());
    EXPECT_EQ(defaults.content, before);
    EXPECT_TRUE(defaults.onDisk.empty());
    entry->replace(0, 0);
}

TEST_F(StoredAssignmentsTest, damaged_shortcuts_are_kept_aside_and_start_empty)
{
    store(*someSet());
    defaults.content["PT_UserAssign"] = Damage;
    stored.setupShortcutKey();
    EXPECT_EQ(live().count(), 12u);
    EXPECT_EQ(live().getSwitchShortcut(6)->at(2).text(), "");
    EXPECT_EQ(live().getShortcutTitle(6), QString("Save"));
    ASSERT_EQ(defaults.onDisk.size(), 1u);
    EXPECT_EQ(defaults.onDisk[0].at("PT_UserAssign.damaged"), Damage);
    EXPECT_EQ(defaults.onDisk[0].at("PT_UserAssign"), Damage);
}

TEST_F(StoredAssignmentsTest, damaged_titles_are_kept_aside_and_start_empty)
{
    store(*someSet());
    defaults.content["PT_UserAssignTitle"] = Damage;
    stored.setupShortcutKey();
    EXPECT_EQ(live().getSwitchShortcut(6)->at(2).text(), "S");
    EXPECT_EQ(live().getShortcutTitle(6), QString());
    ASSERT_EQ(defaults.onDisk.size(), 1u);
    EXPECT_EQ(defaults.onDisk[0].at("PT_UserAssignTitle.damaged"), Damage);
    EXPECT_TRUE(stored.writeUserDefault());
    EXPECT_EQ(defaults.onDisk[1].at("PT_UserAssignTitle.damaged"), Damage);
    EXPECT_EQ(defaults.onDisk[1].at("PT_UserAssignTitle"), live().getTitleData());
}

TEST_F(StoredAssignmentsTest, what_could_not_be_kept_aside_at_once_is_written_with_the_next_write)
{
    defaults.content["PT_UserAssign"] = Damage;
    defaults.isFailing = true;
    stored.setupShortcutKey();
    defaults.isFailing = false;
    EXPECT_TRUE(stored.writeUserDefault());
    ASSERT_EQ(defaults.onDisk.size(), 1u);
    EXPECT_EQ(defaults.onDisk[0].at("PT_UserAssign.damaged"), Damage);
}

TEST_F(StoredAssignmentsTest, shortcuts_that_are_no_table_are_kept_aside_and_start_empty)
{
    store(*someSet());
    const Bytes wholeSet = someSet()->fileImage();
    defaults.content["PT_UserAssign"] = wholeSet;
    stored.setupShortcutKey();
    EXPECT_EQ(live().count(), 12u);
    EXPECT_EQ(live().getShortcutTitle(6), QString("Save"));
    ASSERT_EQ(defaults.onDisk.size(), 1u);
    EXPECT_EQ(defaults.onDisk[0].at("PT_UserAssign.damaged"), wholeSet);
    live().getSwitchShortcut(6)->replace(2, QStringLiteral("T"));
    EXPECT_TRUE(stored.writeUserDefault());
    EXPECT_EQ(defaults.onDisk[1].at("PT_UserAssign"), live().getData());
}

TEST_F(StoredAssignmentsTest, titles_that_are_no_table_are_kept_aside_and_start_empty)
{
    for (const Bytes& noTable : { someSet()->fileImage(), UserAssignFile().getTitleData() }) {
        defaults.onDisk.clear();
        store(*someSet());
        defaults.content["PT_UserAssignTitle"] = noTable;
        stored.setupShortcutKey();
        EXPECT_EQ(live().getSwitchShortcut(6)->at(2).text(), "S");
        ASSERT_TRUE(live().getShortcutTitleArray());
        EXPECT_EQ(live().getShortcutTitleArray()->size(), 12u);
        ASSERT_EQ(defaults.onDisk.size(), 1u);
        EXPECT_EQ(defaults.onDisk[0].at("PT_UserAssignTitle.damaged"), noTable);
    }
}

class RecoveryFile : public StoredAssignmentsTest {
protected:
    QString path() const { return folder.filePath("sub/recovery.ZKCF"); }
    StoredAssignments run() { return StoredAssignments(defaults, path().toStdString()); }
    void leave(const Bytes& content) const
    {
        QDir().mkpath(QFileInfo(path()).path());
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(
            reinterpret_cast<const char*>(content.data()), static_cast<qint64>(content.size()));
    }

    void age(int seconds) const
    {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.setFileTime(
            QDateTime::currentDateTime().addSecs(-seconds), QFileDevice::FileModificationTime));
    }

    // The defaults were last stored an hour from now.
    void setClockBack()
    {
        const std::string inAnHour
            = std::to_string(QDateTime::currentDateTime().addSecs(3600).toMSecsSinceEpoch());
        defaults.content["KestrelAssignmentsStoredAt"] = Bytes(inAnHour.begin(), inAnHour.end());
    }

    QTemporaryDir folder;
};

TEST_F(RecoveryFile, brings_a_set_that_was_live_to_the_next_run_and_leaves_the_defaults)
{
    StoredAssignments killed = run();
    killed.setupShortcutKey();
    EXPECT_FALSE(QFile::exists(path()));
    killed.myUserAssignFile()->setShortcutTitle("Undo", 1);
    EXPECT_TRUE(killed.writeRecoveryFile());
    EXPECT_TRUE(defaults.content.empty());
    EXPECT_TRUE(defaults.onDisk.empty());

    StoredAssignments next = run();
    next.setupShortcutKey();
    EXPECT_EQ(next.myUserAssignFile()->getShortcutTitle(1), QString("Undo"));
    EXPECT_TRUE(QFile::exists(path())) << "this run may be killed too";
    EXPECT_TRUE(next.writeUserDefault());
    EXPECT_FALSE(QFile::exists(path()));
    EXPECT_EQ(defaults.content.at("PT_UserAssignTitle"), next.myUserAssignFile()->getTitleData());
}

TEST_F(RecoveryFile, stays_until_the_defaults_are_written)
{
    StoredAssignments assignments = run();
    assignments.setupShortcutKey();
    ASSERT_TRUE(assignments.writeRecoveryFile());
    defaults.isFailing = true;
    EXPECT_FALSE(assignments.writeUserDefault());
    EXPECT_EQ(assignments.problem(), "No space");
    EXPECT_TRUE(QFile::exists(path()));
    defaults.isFailing = false;
    EXPECT_TRUE(assignments.writeUserDefault());
    EXPECT_EQ(assignments.problem(), "");
    EXPECT_FALSE(QFile::exists(path()));
}

TEST_F(RecoveryFile, of_another_run_is_left_to_it)
{
    StoredAssignments first = run();
    first.setupShortcutKey();
    StoredAssignments second = run();
    second.setupShortcutKey();
    ASSERT_TRUE(second.writeRecoveryFile());
    EXPECT_TRUE(first.writeUserDefault());
    EXPECT_TRUE(QFile::exists(path()));
    EXPECT_TRUE(second.writeUserDefault());
    EXPECT_FALSE(QFile::exists(path()));
}

TEST_F(RecoveryFile, that_another_run_has_read_and_replaced_is_left_to_it)
{
    StoredAssignments killed = run();
    killed.setupShortcutKey();
    ASSERT_TRUE(killed.writeRecoveryFile());
    StoredAssignments first = run();
    first.setupShortcutKey();
    StoredAssignments second = run();
    second.setupShortcutKey();
    second.myUserAssignFile()->setShortcutTitle("Undo", 1);
    ASSERT_TRUE(second.writeRecoveryFile());
    EXPECT_TRUE(first.writeUserDefault());
    EXPECT_TRUE(QFile::exists(path())) << "it holds what only the second run has";
    EXPECT_TRUE(second.writeUserDefault());
    EXPECT_FALSE(QFile::exists(path()));
}

TEST_F(RecoveryFile, that_is_older_than_the_defaults_is_kept_aside)
{
    StoredAssignments other = run();
    other.setupShortcutKey();
    StoredAssignments killed = run();
    killed.setupShortcutKey();
    killed.myUserAssignFile()->setShortcutTitle("Older", 1);
    ASSERT_TRUE(killed.writeRecoveryFile());
    age(3600);
    other.myUserAssignFile()->setShortcutTitle("Newer", 1);
    EXPECT_TRUE(other.writeUserDefault());
    EXPECT_TRUE(QFile::exists(path())) << "its run may be alive";

    StoredAssignments next = run();
    next.setupShortcutKey();
    EXPECT_EQ(next.myUserAssignFile()->getShortcutTitle(1), QString("Newer"));
    EXPECT_FALSE(QFile::exists(path()));
    EXPECT_TRUE(QFile::exists(path() + ".replaced"));
}

TEST_F(RecoveryFile, wins_over_a_run_that_has_stored_nothing_new_since)
{
    StoredAssignments other = run();
    other.setupShortcutKey();
    StoredAssignments killed = run();
    killed.setupShortcutKey();
    killed.myUserAssignFile()->setShortcutTitle("Undo", 1);
    ASSERT_TRUE(killed.writeRecoveryFile());
    age(3600);
    EXPECT_TRUE(other.writeUserDefault());
    StoredAssignments next = run();
    next.setupShortcutKey();
    EXPECT_EQ(next.myUserAssignFile()->getShortcutTitle(1), QString("Undo"));
}

TEST_F(RecoveryFile, wins_over_older_defaults)
{
    StoredAssignments first = run();
    first.setupShortcutKey();
    first.myUserAssignFile()->setShortcutTitle("Older", 1);
    EXPECT_TRUE(first.writeUserDefault());
    StoredAssignments killed = run();
    killed.setupShortcutKey();
    killed.myUserAssignFile()->setShortcutTitle("Newer", 1);
    ASSERT_TRUE(killed.writeRecoveryFile());
    age(-3600); // the clock of the file system may tick more slowly
    StoredAssignments next = run();
    next.setupShortcutKey();
    EXPECT_EQ(next.myUserAssignFile()->getShortcutTitle(1), QString("Newer"));
    EXPECT_FALSE(QFile::exists(path() + ".replaced"));
}

TEST_F(RecoveryFile, wins_over_defaults_from_before_the_clock_was_set_back)
{
    setClockBack();
    StoredAssignments killed = run();
    killed.setupShortcutKey();
    killed.myUserAssignFile()->setShortcutTitle("Undo", 1);
    ASSERT_TRUE(killed.writeRecoveryFile());
    StoredAssignments next = run();
    next.setupShortcutKey();
    EXPECT_EQ(next.myUserAssignFile()->getShortcutTitle(1), QString("Undo"));
}

TEST_F(RecoveryFile, is_older_than_what_is_stored_after_the_clock_was_set_back)
{
    setClockBack();
    StoredAssignments other = run();
    other.setupShortcutKey();
    StoredAssignments killed = run();
    killed.setupShortcutKey();
    ASSERT_TRUE(killed.writeRecoveryFile());
    other.myUserAssignFile()->setShortcutTitle("Newer", 1);
    EXPECT_TRUE(other.writeUserDefault());
    StoredAssignments next = run();
    next.setupShortcutKey();
    EXPECT_EQ(next.myUserAssignFile()->getShortcutTitle(1), QString("Newer"));
}

// The time of a folder in its place says nothing about a set.
TEST_F(RecoveryFile, that_is_a_folder_does_not_make_the_defaults_newer)
{
    ASSERT_TRUE(QDir().mkpath(path()));
    std::filesystem::last_write_time(path().toStdString(),
        std::filesystem::file_time_type::clock::now() + std::chrono::hours(1));
    const auto inTheFuture = QFileInfo(path()).lastModified().toMSecsSinceEpoch();
    StoredAssignments assignments = run();
    assignments.setupShortcutKey();
    assignments.myUserAssignFile()->setShortcutTitle("Undo", 1);
    EXPECT_TRUE(assignments.writeUserDefault());
    const Bytes& text = defaults.content.at("KestrelAssignmentsStoredAt");
    EXPECT_LT(std::stoll(std::string(text.begin(), text.end())), inTheFuture);
}

TEST_F(RecoveryFile, that_is_no_whole_set_is_kept_aside_and_the_defaults_are_restored)
{
    store(*someSet());
    for (const Bytes& content :
        { Damage, Bytes(), UserAssignFile().fileImage(), someSet()->getData() }) {
        leave(content);
        StoredAssignments assignments = run();
        assignments.setupShortcutKey();
        EXPECT_EQ(assignments.myUserAssignFile()->getShortcutTitle(6), QString("Save"));
        EXPECT_FALSE(QFile::exists(path()));
        QFile aside(path() + ".damaged");
        ASSERT_TRUE(aside.open(QIODevice::ReadOnly));
        EXPECT_EQ(aside.size(), static_cast<qint64>(content.size()));
    }
}

TEST_F(RecoveryFile, that_cannot_be_written_says_why)
{
    StoredAssignments assignments = run();
    assignments.setupShortcutKey();
    ASSERT_TRUE(QDir().mkpath(path())); // a folder in its place
    EXPECT_FALSE(assignments.writeRecoveryFile());
    EXPECT_EQ(assignments.problem(), "Filename refers to a directory");
    ASSERT_TRUE(QDir().rmdir(path()));
    EXPECT_TRUE(assignments.writeRecoveryFile());
    EXPECT_EQ(assignments.problem(), "");
}

} // namespace

} // namespace kestrel::test
