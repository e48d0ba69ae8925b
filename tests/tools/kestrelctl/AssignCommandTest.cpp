#include "assign/StoredAssignments.h"
#include "platform/linux/defaults/FileDefaultsStore.h"
#include "sets/ShortcutParser.h"
#include "tests/archive/ArchiveText.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <map>

namespace kestrel::test {

namespace {

constexpr int Misused = 2;
constexpr int NotWritten = 1;

class AssignCommand : public testing::Test {
protected:
    struct Outcome {
        int code = -1;
        QString output;
        QString errors;
    };

    Outcome run(const QStringList& arguments) const
    {
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_CONFIG_HOME", m_folder.path());
        program.setProcessEnvironment(environment);
        program.start(QStringLiteral(KESTRELCTL), arguments);
        EXPECT_TRUE(program.waitForFinished());
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
        return { program.exitCode(), QString::fromUtf8(program.readAllStandardOutput()),
            QString::fromUtf8(program.readAllStandardError()) };
    }
    QString path() const { return m_folder.filePath("com.holvik.kestrel.plist"); }
    std::shared_ptr<UserAssignFile> stored() const
    {
        FileDefaultsStore defaults(path());
        StoredAssignments stored(defaults);
        stored.setupShortcutKey();
        return stored.myUserAssignFile();
    }
    // All files of the user.
    std::map<QString, QByteArray> content() const
    {
        std::map<QString, QByteArray> files;
        for (const QString& name : QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden)) {
            QFile file(m_folder.filePath(name));
            EXPECT_TRUE(file.open(QIODevice::ReadOnly));
            files[name] = file.readAll();
        }
        return files;
    }
    std::string entry(int number) const { return archiveText(stored()->getSwitchShortcut(number)); }

    QTemporaryDir m_folder;
};

std::string parsed(const char* text)
{
    const auto shortcut = TypedShortcut::parse(QString::fromUtf8(text));
    if (!shortcut)
        return "none";
    return std::to_string(shortcut->modifiers) + " " + std::to_string(shortcut->key.code) + " "
        + shortcut->key.name.toStdString();
}

TEST(TypedShortcut, takes_glyphs_and_words_with_or_without_a_plus)
{
    for (const char* text : { "⌘S", "⌘+S", "Command+S", "cmd+s" })
        EXPECT_EQ(parsed(text), "1048576 1 S") << text;
    EXPECT_EQ(parsed("⇪^⌥⌘+PAGE DOWN"), "1966080 121 PAGE DOWN");
    EXPECT_EQ(parsed("Shift+Ctrl+Alt+Command+page down"), "1966080 121 PAGE DOWN");
    EXPECT_EQ(parsed("F5"), "0 96 F5");
    EXPECT_EQ(parsed("⌥NUM +"), "524288 69 NUM +");
    EXPECT_EQ(parsed("↑"), "0 126 ↑");
    EXPECT_EQ(parsed("a"), "0 0 A");
    EXPECT_EQ(parsed("0"), "0 29 0");
    for (const char* text : { "", "⌘", "⌘+", "Command", "Command+", "Hyper+S", "F21", "SS" })
        EXPECT_EQ(parsed(text), "none") << text;
}

TEST(NamedKey, has_the_name_by_which_it_is_found)
{
    for (const char* name : { "A", "Z", "0", "`", "F5", "TAB", "ESC" })
        EXPECT_EQ(NamedKey::nameOf(NamedKey::find(name).value().code), name);
    EXPECT_EQ(NamedKey::nameOf(200), "key 200");
}

TEST_F(AssignCommand, writes_up_to_four_shortcuts_and_a_title)
{
    EXPECT_EQ(run({ "assign", "6", "⌘S", "--title", "Save ⌘" }).code, 0);
    EXPECT_EQ(entry(6), "[i1048576,i1,'S',false,i0,i0,'',false,i0,i0,'',false,i0,i0,'',false,]");
    EXPECT_EQ(stored()->getShortcutTitle(6), QString("Save ⌘"));
    EXPECT_EQ(run({ "assign", "6", "F1", "", "Option+Q", "^1" }).code, 0);
    EXPECT_EQ(entry(6),
        "[i0,i122,'F1',false,i0,i0,'',false,i524288,i12,'Q',false,i262144,i18,'1',false,]");
    EXPECT_EQ(stored()->getShortcutTitle(6), QString("Save ⌘"));
}

TEST_F(AssignCommand, a_title_alone_leaves_the_shortcuts)
{
    EXPECT_EQ(run({ "assign", "2", "F1" }).code, 0);
    EXPECT_EQ(run({ "assign", "2", "--title", "One" }).code, 0);
    EXPECT_EQ(stored()->getSwitchShortcut(2)->at(2).text(), "F1");
    EXPECT_EQ(stored()->getShortcutTitle(2), QString("One"));
}

TEST_F(AssignCommand, shows_what_is_stored)
{
    EXPECT_EQ(run({ "assign", "12", "⌘S", "shift+tab", "--title", "Last" }).code, 0);
    const Outcome outcome = run({ "show" });
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.output.split('\n').value(0), "1 \"\"");
    EXPECT_EQ(outcome.output.split('\n').value(11), "12 \"Last\" ⌘+S ⇪+TAB");
}

TEST_F(AssignCommand, commands_that_store_nothing_change_nothing_on_disk)
{
    const QString recovery = m_folder.filePath("com.holvik.kestrel.recovery.ZKCF");
    const auto leave = [](const QString& path, const QByteArray& content) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    };
    const auto expectNoChange = [this] {
        const auto before = content();
        QTemporaryDir elsewhere;
        for (const QStringList& command : { QStringList { "show" }, QStringList { "set", "show" },
                 QStringList { "assign", "7", "F9", "--to", elsewhere.filePath("set.ZKCF") } }) {
            EXPECT_EQ(run(command).code, 0);
            EXPECT_EQ(content(), before) << command.join(' ').toStdString();
        }
    };
    expectNoChange();
    leave(recovery, "damaged");
    expectNoChange();
    EXPECT_EQ(run({ "assign", "6", "⌘S" }).code, 0);
    leave(recovery, "as old as the studio");
    QFile old(recovery);
    ASSERT_TRUE(old.open(QIODevice::ReadWrite));
    ASSERT_TRUE(
        old.setFileTime(QDateTime::fromSecsSinceEpoch(0), QFileDevice::FileModificationTime));
    expectNoChange();
    FileDefaultsStore defaults(path());
    defaults.setData(StoredAssignments::ShortcutsKey, Bytes { 'x' });
    ASSERT_TRUE(defaults.synchronise());
    expectNoChange();
    leave(path(), "no property list");
    expectNoChange();
}

TEST_F(AssignCommand, writes_the_changed_set_to_a_file_and_stores_nothing)
{
    EXPECT_EQ(run({ "assign", "6", "⌘S" }).code, 0);
    const QString file = m_folder.filePath("Mixing.ZKCF");
    EXPECT_EQ(run({ "assign", "7", "F9", "--title", "Solo", "--to", file }).code, 0);
    QFile written(file);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    const QByteArray bytes = written.readAll();
    const auto set
        = UserAssignFile::fromFileImage({ reinterpret_cast<const std::uint8_t*>(bytes.constData()),
            static_cast<std::size_t>(bytes.size()) });
    ASSERT_TRUE(set);
    EXPECT_EQ(set->getSwitchShortcut(6)->at(2).text(), "S");
    EXPECT_EQ(set->getSwitchShortcut(7)->at(2).text(), "F9");
    EXPECT_EQ(set->getShortcutTitle(7), QString("Solo"));
    EXPECT_EQ(stored()->getSwitchShortcut(7)->at(2).text(), "");

    const QString nowhere = m_folder.filePath("none/set.ZKCF");
    const Outcome outcome = run({ "assign", "7", "F9", "--to", nowhere });
    EXPECT_EQ(outcome.code, NotWritten);
    EXPECT_EQ(
        outcome.errors, "kestrelctl: cannot write " + nowhere + ": No such file or directory\n");
}

TEST_F(AssignCommand, refuses_what_it_does_not_understand_and_writes_nothing)
{
    EXPECT_EQ(run({ "assign", "6", "Hyper+S" }).errors, "kestrelctl: \"Hyper+S\" names no key\n");
    for (const QStringList& arguments : { QStringList {}, { "6" }, { "0", "F1" }, { "13", "F1" },
             { "six", "F1" }, { "6", "Hyper+S" }, { "6", "1", "2", "3", "4", "5" },
             { "--title", "x" }, { "6", "--unknown" } }) {
        const Outcome outcome = run(QStringList { "assign" } + arguments);
        EXPECT_EQ(outcome.code, Misused) << arguments.join(' ').toStdString();
        EXPECT_FALSE(outcome.errors.isEmpty());
    }
    EXPECT_FALSE(QFile::exists(path()));
}

TEST_F(AssignCommand, keeps_a_damaged_set_aside_when_it_stores_another_one)
{
    const Bytes damaged { 'x' };
    FileDefaultsStore defaults(path());
    defaults.setData(StoredAssignments::ShortcutsKey, damaged);
    ASSERT_TRUE(defaults.synchronise());
    EXPECT_EQ(run({ "assign", "6", "F1" }).code, 0);
    EXPECT_EQ(FileDefaultsStore(path()).data("PT_UserAssign.damaged"), damaged);
    EXPECT_EQ(stored()->getSwitchShortcut(6)->at(2).text(), "F1");
}

TEST_F(AssignCommand, tells_when_nothing_could_be_written)
{
    ASSERT_TRUE(QDir(m_folder.path()).mkdir("com.holvik.kestrel.plist.lock"));
    const Outcome outcome = run({ "assign", "6", "F1" });
    EXPECT_EQ(outcome.code, NotWritten);
    EXPECT_TRUE(outcome.errors.startsWith("kestrelctl: cannot write " + path() + ": "))
        << outcome.errors.toStdString();
    EXPECT_FALSE(QFile::exists(path()));
}

TEST_F(AssignCommand, takes_no_empty_set_for_a_stored_one_that_cannot_be_read)
{
    ASSERT_TRUE(QDir(m_folder.path()).mkdir("com.holvik.kestrel.plist"));
    const QString copy = m_folder.filePath("copy.ZKCF");
    for (const QStringList& arguments : { QStringList { "show" }, { "set", "json" },
             { "assign", "6", "F1" }, { "assign", "6", "F1", "--to", copy } }) {
        const Outcome outcome = run(arguments);
        EXPECT_NE(outcome.code, 0);
        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(outcome.errors,
            "kestrelctl: cannot read " + path() + ": The file of the defaults cannot be read\n");
    }
    EXPECT_FALSE(QFile::exists(copy));
}

} // namespace

} // namespace kestrel::test
