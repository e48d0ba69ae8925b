#include "archive/KeyedArchive.h"
#include "tests/sets/SetBuilder.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class SetCommand : public testing::Test {
protected:
    struct Outcome {
        int code = -1;
        std::string output;
        std::string errors;
    };

    using Variables = QList<std::pair<QString, QString>>;

    Outcome run(const QStringList& arguments,
        const QString& executable = QStringLiteral(KESTRELCTL),
        const Variables& variables = {}) const
    {
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_CONFIG_HOME", m_folder.path());
        environment.remove("DISPLAY");
        for (const auto& [name, value] : variables)
            environment.insert(name, value);
        program.setProcessEnvironment(environment);
        program.setWorkingDirectory(m_folder.path());
        program.start(executable, arguments);
        EXPECT_TRUE(program.waitForFinished());
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
        return { program.exitCode(), program.readAllStandardOutput().toStdString(),
            program.readAllStandardError().toStdString() };
    }
    Outcome set(const QStringList& arguments) const { return run(QStringList("set") + arguments); }

    void write(const QString& name, const QByteArray& content) const
    {
        QFile file(m_folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }
    void write(const QString& name, const SetBuilder& builder) const
    {
        const Bytes bytes = KeyedArchive::archivedData(builder.set());
        write(name,
            QByteArray(
                reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size())));
    }
    [[nodiscard]] QByteArray content(const QString& name) const
    {
        QFile file(m_folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    [[nodiscard]] bool exists(const QString& name) const
    {
        return QFile::exists(m_folder.filePath(name));
    }

    QTemporaryDir m_folder;
};

SetBuilder saving()
{
    SetBuilder builder;
    builder.title(6, "Save").record(6, 0, { 0x100000, 1, QStringLiteral("S"), false });
    return builder;
}

TEST_F(SetCommand, the_text_of_a_file_becomes_the_same_file_again)
{
    SetBuilder builder = saving();
    builder.titles->set(QStringLiteral("odd"), 1.5);
    write("a.ZKCF", builder);
    const Outcome json = set({ "json", "a.ZKCF" });
    EXPECT_EQ(json.code, 0);
    write("a.json", QByteArray::fromStdString(json.output));
    EXPECT_EQ(set({ "from-json", "a.json", "-o", "b.ZKCF" }).code, 0);
    EXPECT_EQ(content("b.ZKCF"), content("a.ZKCF"));
}

TEST_F(SetCommand, without_a_file_it_works_on_the_stored_set)
{
    ASSERT_EQ(run({ "assign", "6", "⌘S", "--title", "Save" }).code, 0);
    EXPECT_THAT(set({ "json" }).output, HasSubstr("{ \"shortcut\": \"⌘S\", \"keyCode\": 1"));
    EXPECT_THAT(set({ "show" }).output, HasSubstr("\n  6  Save  ⌘S\n"));
    write("a.ZKCF", saving());
    EXPECT_EQ(set({ "diff", "a.ZKCF" }).code, 0);
    write("a.ZKCF", SetBuilder());
    EXPECT_EQ(set({ "diff", "a.ZKCF" }).code, 1);
}

TEST_F(SetCommand, a_text_that_is_no_set_is_refused_with_its_place)
{
    write("a.json", "{\n  \"keys\": [{ \"key\": 1, \"titel\": \"\" }]\n}\n");
    const Outcome outcome = set({ "from-json", "a.json", "-o", "a.ZKCF" });
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.errors, "kestrelctl: a.json:2:24: \"titel\" has no meaning here\n");
    EXPECT_FALSE(exists("a.ZKCF"));
    write("list.json", "\n []");
    EXPECT_THAT(set({ "from-json", "list.json", "-o", "a.ZKCF" }).errors,
        testing::StartsWith("kestrelctl: list.json:2:2: "));
    write("b.json", R"({ "keys": [{ "key": 1, "title": "\ud800" }] })");
    EXPECT_EQ(set({ "from-json", "b.json", "-o", "b.ZKCF" }).errors,
        "kestrelctl: b.json: has something that no archive can hold\n");
    EXPECT_FALSE(exists("b.ZKCF"));
}

TEST_F(SetCommand, replaces_a_file_only_when_told_to)
{
    write("a.json", "{ \"keys\": [] }");
    write("a.ZKCF", QByteArray("precious"));
    const Outcome outcome = set({ "from-json", "a.json", "-o", "a.ZKCF" });
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.errors, "kestrelctl: a.ZKCF is there already; --force replaces it\n");
    EXPECT_EQ(content("a.ZKCF"), "precious");
    EXPECT_EQ(set({ "from-json", "a.json", "-o", "a.ZKCF", "--force" }).code, 0);
    EXPECT_TRUE(content("a.ZKCF").startsWith("bplist00"));
}

TEST_F(SetCommand, shows_a_table_without_what_a_terminal_would_obey)
{
    SetBuilder builder = saving();
    builder.title(1, "\033[31mred");
    write("a.ZKCF", builder);
    const Outcome outcome = set({ "show", "a.ZKCF" });
    EXPECT_EQ(outcome.code, 0);
    EXPECT_THAT(outcome.output, StartsWith("KEY  NAME      SHORTCUTS\n  1   [31mred\n  2\n"));
    EXPECT_THAT(outcome.output, HasSubstr("\n  6  Save      ⌘S\n"));
}

TEST_F(SetCommand, diff_ends_like_diff)
{
    write("a.ZKCF", saving());
    SetBuilder other = saving();
    other.title(6, "Save as");
    write("b.ZKCF", other);
    EXPECT_EQ(set({ "diff", "a.ZKCF", "a.ZKCF" }).code, 0);
    const Outcome outcome = set({ "diff", "a.ZKCF", "b.ZKCF" });
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.output, "key 6 name: \"Save\" → \"Save as\"\n");
    EXPECT_EQ(set({ "diff", "a.ZKCF", "none.ZKCF" }).code, 2);
    write("c.ZKCF", QByteArray("bplist00"));
    EXPECT_EQ(set({ "diff", "a.ZKCF", "c.ZKCF" }).code, 2);
}

TEST_F(SetCommand, check_ends_with_one_when_it_has_something_to_say)
{
    write("a.ZKCF", saving());
    EXPECT_EQ(set({ "check", "a.ZKCF" }).code, 0);
    write("b.ZKCF", saving().title(7, "Mute"));
    const Outcome outcome = set({ "check", "b.ZKCF" });
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.output, "no-shortcut: key 7 has the name \"Mute\" and no shortcut\n");
    EXPECT_THAT(set({ "check", "--json", "b.ZKCF" }).output,
        HasSubstr("\"kind\": \"no-shortcut\",\n      \"keys\": [7],"));
    write("c.ZKCF", QByteArray("bplist00"));
    const Outcome damaged = set({ "check", "c.ZKCF" });
    EXPECT_EQ(damaged.code, 1);
    EXPECT_THAT(damaged.output, StartsWith("damage: c.ZKCF: "));
    EXPECT_EQ(set({ "check", "none.ZKCF" }).code, 2);
}

TEST_F(SetCommand, merges_and_tells_conflicts)
{
    write("base.ZKCF", SetBuilder());
    write("ours.ZKCF", SetBuilder().title(1, "Ours"));
    write("theirs.ZKCF", SetBuilder().title(2, "Theirs"));
    EXPECT_EQ(set({ "merge", "base.ZKCF", "ours.ZKCF", "theirs.ZKCF", "-o", "out.ZKCF" }).code, 0);
    EXPECT_THAT(set({ "show", "out.ZKCF" }).output, HasSubstr("  1  Ours\n  2  Theirs\n"));
    write("theirs.ZKCF", SetBuilder().title(1, "Theirs"));
    const Outcome outcome
        = set({ "merge", "base.ZKCF", "ours.ZKCF", "theirs.ZKCF", "-o", "out.ZKCF", "--force" });
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.errors,
        "kestrelctl: conflict, key 1 name: was \"\"; ours, which was taken: \"Ours\"; theirs: "
        "\"Theirs\"\n");
    EXPECT_THAT(set({ "show", "out.ZKCF" }).output, HasSubstr("  1  Ours\n"));
    EXPECT_EQ(set({ "merge", "base.ZKCF", "ours.ZKCF", "none", "-o", "x.ZKCF" }).code, 2);
}

TEST_F(SetCommand, draws_a_sheet_without_a_display)
{
    write("Mixing.ZKCF", saving());
    for (const char* const name : { "keys.pdf", "keys.svg", "keys.png" })
        EXPECT_EQ(set({ "sheet", "Mixing.ZKCF", "-o", name }).code, 0) << name;
    EXPECT_TRUE(content("keys.pdf").startsWith("%PDF-"));
    EXPECT_TRUE(content("keys.svg").contains("<title>Mixing</title>"));
    EXPECT_TRUE(content("keys.svg").contains("width=\"11.6929in\""));
    EXPECT_EQ(set({ "sheet", "-o", "letter.svg", "--paper", "letter" }).code, 0);
    EXPECT_TRUE(content("letter.svg").contains("width=\"11in\" height=\"8.5in\""));
    EXPECT_EQ(set({ "sheet", "-o", "keys.txt" }).code, 2);
    EXPECT_EQ(set({ "sheet", "-o", "keys.pdf", "--paper", "a3" }).code, 2);
    EXPECT_EQ(set({ "sheet", "-o", "keys.pdf" }).code, 1) << "there already";
}

TEST_F(SetCommand, looks_for_plug_ins_in_its_bundle_also_through_a_link)
{
    QDir folder(m_folder.path());
    for (const char* part : { "Contents/MacOS", "Contents/PlugIns", "bin" })
        ASSERT_TRUE(folder.mkpath(part));
    const QString program = folder.filePath("Contents/MacOS/kestrelctl");
    ASSERT_TRUE(QFile::copy(QStringLiteral(KESTRELCTL), program));
    const QString link = folder.filePath("bin/kestrelctl");
    ASSERT_TRUE(QFile::link(program, link));
    for (const QString& start : { program, link }) {
        const Outcome outcome = run({ "set", "sheet", "-o", "keys.svg", "--force" }, start,
            { { "QT_DEBUG_PLUGINS", "1" } });
        EXPECT_EQ(outcome.code, 0) << outcome.errors;
        EXPECT_THAT(
            outcome.errors, HasSubstr(folder.filePath("Contents/PlugIns/platforms").toStdString()));
    }
}

} // namespace
} // namespace kestrel::test
