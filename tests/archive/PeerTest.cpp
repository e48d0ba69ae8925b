#include "archive/AtomicFile.h"
#include "archive/KeyedArchive.h"
#include "assign/UserAssignFile.h"
#include "tests/archive/ArchiveText.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace kestrel::test {

namespace {

// GNUstep, an independent implementation, reads and writes the same archives.
class PeerTest : public testing::Test {
protected:
    QString path(const char* name) const { return m_folder.filePath(name); }
    std::string run(const QStringList& arguments) const
    {
        QProcess peer;
        peer.setProcessEnvironment(environment());
        peer.start(QStringLiteral(KESTREL_PEER), arguments);
        EXPECT_TRUE(peer.waitForFinished());
        EXPECT_EQ(peer.exitCode(), 0) << peer.readAllStandardError().toStdString();
        return peer.readAllStandardOutput().trimmed().toStdString();
    }
    std::string printed(const Bytes& archive) const
    {
        EXPECT_TRUE(AtomicFile::write(path("archive"), archive));
        return run({ "print", path("archive") });
    }
    Bytes copied(const Bytes& archive, const char* format) const
    {
        EXPECT_TRUE(AtomicFile::write(path("archive"), archive));
        run({ "copy", path("archive"), path("copy"), format });
        QFile file(path("copy"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        return { bytes.begin(), bytes.end() };
    }

private:
    QProcessEnvironment environment() const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("HOME", m_folder.path()); // it would make its own folders there
        environment.insert("LC_ALL", "C.UTF-8");
        return environment;
    }

    QTemporaryDir m_folder;
};

UserAssignFile fullSet()
{
    UserAssignFile set;
    set.initShortcutArray();
    for (int number = 1; number <= 12; ++number) {
        const ButtonEntry entry = set.getSwitchShortcut(number);
        for (std::size_t record = 0; record < ButtonEntrySize; record += ShortcutRecordSize) {
            entry->replace(record, 0x20000 << (record / 4));
            entry->replace(record + 1, number);
            entry->replace(record + 2, QStringLiteral("KEY %1 →").arg(number));
            entry->replace(record + 3, number % 2 == 0);
        }
        set.setShortcutTitle(QStringLiteral("Größe ⌘ 😀 %1").arg(number), number);
    }
    set.getSwitchShortcut(12)->replace(0, -1);
    set.getSwitchShortcut(12)->replace(4, std::int64_t(1) << 40);
    set.getSwitchShortcut(12)->replace(8, 2.5);
    set.setShortcutTitle("", 3);
    return set;
}

std::string textOf(const UserAssignFile& set)
{
    return archiveText(KeyedArchive::unarchivedRoot(set.fileImage()));
}

TEST_F(PeerTest, reads_every_value_of_a_set_that_was_written_here)
{
    const UserAssignFile set = fullSet();
    EXPECT_EQ(printed(set.fileImage()), textOf(set));
    EXPECT_EQ(printed(set.getData()), archiveText(set.getShortcutArray()));
    EXPECT_EQ(printed(set.getTitleData()), archiveText(set.getShortcutTitleArray()));
}

TEST_F(PeerTest, reads_a_set_without_tables)
{
    EXPECT_EQ(printed(UserAssignFile().fileImage()), textOf(UserAssignFile()));
}

TEST_F(PeerTest, writes_what_is_read_here_in_both_forms)
{
    UserAssignFile set = fullSet();
    for (const char* format : { "binary", "xml" }) {
        if (*format == 'x') // where the peer writes pairs of surrogates as an escape of its own
            for (int number = 1; number <= 12; ++number)
                set.setShortcutTitle(QStringLiteral("Größe ⌘ <&> %1").arg(number), number);
        const Bytes copy = copied(set.fileImage(), format);
        EXPECT_EQ(copy[0], *format == 'x' ? '<' : 'b');
        const auto again = UserAssignFile::fromFileImage(copy);
        ASSERT_TRUE(again);
        EXPECT_TRUE(again->isUserAssignFile());
        EXPECT_EQ(again->myVersion(), 1);
        EXPECT_EQ(again->count(), 12u);
        for (int number = 1; number <= 12; ++number) {
            EXPECT_EQ(archiveText(again->getSwitchShortcut(number)),
                archiveText(set.getSwitchShortcut(number)));
            EXPECT_EQ(again->getShortcutTitle(number), set.getShortcutTitle(number));
        }
    }
}

TEST_F(PeerTest, reads_again_what_it_wrote_and_was_edited_here)
{
    const auto set = UserAssignFile::fromFileImage(copied(fullSet().fileImage(), "binary"));
    ASSERT_TRUE(set);
    set->getSwitchShortcut(5)->replace(2, QStringLiteral("F5"));
    set->setShortcutTitle("edited", 5);
    const auto again = UserAssignFile::fromFileImage(copied(set->fileImage(), "xml"));
    ASSERT_TRUE(again);
    EXPECT_EQ(again->getSwitchShortcut(5)->at(2).text(), "F5");
    EXPECT_EQ(again->getShortcutTitle(5), QString("edited"));
}

} // namespace

} // namespace kestrel::test
