#include "archive/ArchiveObject.h"
#include "archive/KeyedArchive.h"
#include "tests/setup/SetupBench.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <sys/stat.h>

namespace kestrel::test {
namespace {

struct FileBench {
    FileBench()
    {
        set.initShortcutArray();
        set.setShortcutTitle("Name", 3);
    }
    [[nodiscard]] QString path(const QString& name) const { return folder.filePath(name); }
    QString writeBytes(const UserAssignFile::Bytes& bytes, const QString& name = "x.ZKCF")
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<qint64>(bytes.size()));
        return path(name);
    }

    QTemporaryDir folder;
    FakeDocumentFiles attributes;
    AssignmentFiles files { attributes };
    UserAssignFile set;
};

UserAssignFile::Bytes archiveOf(std::initializer_list<ArchiveObject::Member> members,
    const QString& className = "UserAssignFile")
{
    auto object = std::make_shared<ArchiveObject>(QStringList { className, "NSObject" });
    for (const auto& member : members)
        object->append(member);
    return KeyedArchive::archivedData(object);
}

TEST(AssignmentFiles, what_is_written_is_read_again)
{
    FileBench bench;
    ASSERT_TRUE(bench.files.write(bench.path("a.ZKCF"), bench.set));
    const auto read = bench.files.read(bench.path("a.ZKCF"));
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->getShortcutTitle(3), u"Name");
    EXPECT_EQ(*read->getShortcutArray(), *bench.set.getShortcutArray());
}

TEST(AssignmentFiles, a_written_file_has_type_USAS_and_creator_KZLQ)
{
    FileBench bench;
    const QString path = bench.path("a.ZKCF");
    ASSERT_TRUE(bench.files.write(path, bench.set));
    const auto codes = bench.attributes.codes(path.toStdString());
    ASSERT_TRUE(codes);
    EXPECT_EQ(codes->type, 0x55534153U); // U S A S
    EXPECT_EQ(codes->creator, 0x4B5A4C51U); // K Z L Q
}

TEST(AssignmentFiles, an_existing_file_is_replaced_by_a_fresh_one)
{
    FileBench bench;
    const QString path = bench.writeBytes({ 1, 2, 3 });
    struct stat before { };
    struct stat after { };
    ASSERT_EQ(stat(path.toUtf8().constData(), &before), 0);
    QFile held(path); // keeps the inode of the old file in use
    ASSERT_TRUE(held.open(QIODevice::ReadOnly));
    ASSERT_TRUE(bench.files.write(path, bench.set));
    ASSERT_EQ(stat(path.toUtf8().constData(), &after), 0);
    EXPECT_NE(before.st_ino, after.st_ino);
    EXPECT_NE(bench.files.read(path), nullptr);
    EXPECT_TRUE(bench.attributes.codes(path.toStdString()));
}

TEST(AssignmentFiles, refused_attributes_do_not_matter)
{
    FileBench bench;
    bench.attributes.refusing = true;
    EXPECT_TRUE(bench.files.write(bench.path("a.ZKCF"), bench.set));
    EXPECT_NE(bench.files.read(bench.path("a.ZKCF")), nullptr);
}

TEST(AssignmentFiles, a_file_that_cannot_be_made_is_reported_and_gets_no_attributes)
{
    FileBench bench;
    EXPECT_FALSE(bench.files.write(bench.path("missing/a.ZKCF"), bench.set));
    EXPECT_TRUE(bench.attributes.byPath.empty());
}

TEST(AssignmentFiles, a_file_that_the_system_does_not_replace_keeps_its_content_and_codes)
{
    FileBench bench;
    const QString path = bench.writeBytes({ 1, 2, 3 });
    bench.attributes.failure = "You do not have permission";
    EXPECT_FALSE(bench.files.write(path, bench.set));
    EXPECT_EQ(QFileInfo(path).size(), 3);
    EXPECT_TRUE(bench.attributes.byPath.empty());
}

TEST(AssignmentFiles, a_set_too_large_for_a_file_leaves_the_old_file)
{
    FileBench bench;
    const QString path = bench.writeBytes({ 1, 2, 3 });
    for (int i = 0; i < 16; ++i)
        bench.set.getSwitchShortcut(1)->replace(
            static_cast<std::size_t>(i), QString(300'000, QChar('a' + i)));
    EXPECT_FALSE(bench.files.write(path, bench.set));
    EXPECT_EQ(QFileInfo(path).size(), 3);
}

TEST(AssignmentFiles, what_is_missing_or_no_ordinary_file_is_refused)
{
    FileBench bench;
    EXPECT_EQ(bench.files.read({}), nullptr);
    EXPECT_EQ(bench.files.read(bench.path("missing.ZKCF")), nullptr);
    EXPECT_EQ(bench.files.read(bench.folder.path()), nullptr);
    const QString pipe = bench.path("pipe.ZKCF");
    ASSERT_EQ(mkfifo(pipe.toUtf8().constData(), 0600), 0);
    EXPECT_EQ(bench.files.read(pipe), nullptr);
}

TEST(AssignmentFiles, a_file_larger_than_any_archive_is_refused_unread)
{
    FileBench bench;
    QFile file(bench.path("huge.ZKCF"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.resize(qint64(1) << 40)); // sparse
    EXPECT_EQ(bench.files.read(file.fileName()), nullptr);
}

TEST(AssignmentFiles, empty_and_damaged_files_and_archives_of_other_objects_are_refused)
{
    FileBench bench;
    auto cut = bench.set.fileImage();
    cut.resize(cut.size() / 2);
    EXPECT_EQ(bench.files.read(bench.writeBytes({})), nullptr);
    EXPECT_EQ(bench.files.read(bench.writeBytes({ 'b', 'p', 'l', 'i', 's', 't' })), nullptr);
    EXPECT_EQ(bench.files.read(bench.writeBytes(cut)), nullptr);
    EXPECT_EQ(
        bench.files.read(bench.writeBytes(KeyedArchive::archivedData(QStringLiteral("text")))),
        nullptr);
    EXPECT_EQ(bench.files.read(bench.writeBytes(bench.set.getData())), nullptr);
    EXPECT_EQ(bench.files.read(bench.writeBytes(archiveOf({}, "Other"))), nullptr);
}

TEST(AssignmentFiles, a_set_without_a_type_is_accepted_one_of_another_type_refused)
{
    FileBench bench;
    EXPECT_NE(bench.files.read(bench.writeBytes(archiveOf({}))), nullptr);
    EXPECT_NE(bench.files.read(
                  bench.writeBytes(archiveOf({ { "myType", QStringLiteral("PT_UserAssign") } }))),
        nullptr);
    EXPECT_EQ(bench.files.read(
                  bench.writeBytes(archiveOf({ { "myType", QStringLiteral("PT_userassign") } }))),
        nullptr);
}

TEST(AssignmentFiles, a_set_that_cannot_be_saved_is_logged_with_its_reason)
{
    static QStringList log;
    FileBench bench;
    const auto before = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& text) { log.append(text); });
    EXPECT_TRUE(bench.files.write(bench.path("a.ZKCF"), bench.set));
    EXPECT_FALSE(bench.files.write(bench.path("none/a.ZKCF"), bench.set));
    qInstallMessageHandler(before);
    EXPECT_EQ(log,
        QStringList { "Cannot save " + bench.path("none/a.ZKCF") + ": No such file or directory" });
}

TEST(AssignmentFiles, loading_into_the_window_shows_the_set_and_leaves_the_live_one)
{
    FileBench files;
    SetupBench bench;
    files.set.getSwitchShortcut(1)->replace(2, QStringLiteral("X"));
    const QString path = files.writeBytes(files.set.fileImage());
    bench.open();
    EXPECT_TRUE(bench.controller.loadFile(path, true));
    EXPECT_EQ(bench.field(0).stringValue(), u"X");
    EXPECT_EQ(bench.button(2).uniqueName(), u"Name");
    EXPECT_EQ(bench.liveText(1), u"");
    bench.controller.ok();
    EXPECT_EQ(bench.liveText(1), u"X");
    EXPECT_EQ(bench.live->getShortcutTitle(3), u"Name");
}

TEST(AssignmentFiles, loading_without_the_window_takes_the_working_copy_and_keeps_the_fields)
{
    FileBench files;
    SetupBench bench;
    files.set.getSwitchShortcut(1)->replace(2, QStringLiteral("X"));
    EXPECT_TRUE(bench.controller.loadFile(files.writeBytes(files.set.fileImage()), false));
    EXPECT_EQ(bench.workingText(1), u"X");
    EXPECT_EQ(bench.field(0).stringValue(), u"");
    bench.controller.changeShortcut(*bench.live);
    EXPECT_EQ(bench.liveText(1), u"X");
    EXPECT_EQ(bench.field(0).stringValue(), u"X");
}

TEST(AssignmentFiles, a_refused_file_changes_nothing)
{
    FileBench files;
    SetupBench bench;
    bench.give(1, 0, 0, 0, "A");
    bench.open();
    press(bench.field(0), Keys::F5);
    EXPECT_FALSE(bench.controller.loadFile(files.writeBytes({ 1 }), true));
    EXPECT_FALSE(bench.controller.loadFile({}, false));
    EXPECT_EQ(bench.field(0).stringValue(), u"F5");
    EXPECT_EQ(bench.workingText(1), u"A");
}

} // namespace
} // namespace kestrel::test
