#include "tools/kestrelctl/Program.h"

#include <QProcess>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

namespace kestrel::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAre;

QByteArray outputOf(const QString& program, const QStringList& arguments, const QString& folder)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished()) << program.toStdString();
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
    return process.readAllStandardOutput();
}

// A shell with the completions that kestrelctl prints for it, in a folder with the file "set.ZKCF".
class Shell {
public:
    explicit Shell(const QString& name)
        : m_name(name)
        , m_script(m_folder.filePath("completions"))
    {
        std::ofstream(m_script.toStdString())
            << outputOf(KESTRELCTL, { "completion", name }, m_folder.path()).constData();
        std::ofstream(m_folder.filePath("set.ZKCF").toStdString()) << "";
    }

    // What the shell says when it runs this.
    [[nodiscard]] std::vector<std::string> run(const QString& commands) const
    {
        std::vector<std::string> lines;
        const QByteArray output
            = outputOf(m_name, { "-c", "source " + m_script + "\n" + commands }, m_folder.path());
        for (const QByteArray& line : output.split('\n')) {
            if (!line.isEmpty())
                lines.push_back(line.split('\t').first().toStdString());
        }
        return lines;
    }
    [[nodiscard]] QString script() const { return m_script; }
    [[nodiscard]] QString folder() const { return m_folder.path(); }

private:
    QString m_name;
    QTemporaryDir m_folder;
    QString m_script;
};

std::vector<std::string> inBash(const QString& line)
{
    const Shell bash("bash");
    // compopt works only while the user completes; here it tells that bash would offer files.
    return bash.run("compopt() { echo files; }\n"
                    "COMP_WORDS=("
        + line
        + "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n"
          "_kestrelctl; printf '%s\\n' \"${COMPREPLY[@]}\"");
}

std::vector<std::string> inFish(const QString& line)
{
    const Shell fish("fish");
    return fish.run("complete -C '" + line + "'");
}

// The arguments that kestrelctl gets when the user of an interactive zsh types the line, the tab
// key and the return key.
std::string inZsh(const QString& line)
{
    const Shell zsh("zsh");
    const QString prepare = "PS1=; autoload -U compinit; compinit -u -D; source " + zsh.script()
        + "; kestrelctl() { print -r -- \"$*\" >arguments; print -r -- DO\"\"NE }";
    const QString commands = "zmodload zsh/zpty; zpty shell zsh -f -i\n"
                             "zpty -w shell '"
        + prepare
        + "; print -r -- REA\"\"DY'\n"
          "zpty -r -m shell printed '*READY*'\n"
          "zpty -w shell $'"
        + line
        + "\\t'\n"
          "zpty -r -m shell printed '*DONE*'\n";
    outputOf("zsh", { "-f", "-c", commands }, zsh.folder());
    std::string arguments;
    std::getline(std::ifstream((zsh.folder() + "/arguments").toStdString()), arguments);
    return arguments;
}

std::vector<std::string> commandNames()
{
    std::vector<std::string> names;
    for (const ctl::Command& command : ctl::commandTable())
        names.emplace_back(command.name);
    return names;
}

TEST(Completion, offers_every_command_of_the_table)
{
    EXPECT_THAT(inBash("kestrelctl ''"), testing::ElementsAreArray(commandNames()));
    EXPECT_THAT(inFish("kestrelctl "), testing::UnorderedElementsAreArray(commandNames()));
}

TEST(Completion, offers_the_options_of_the_command_alone)
{
    EXPECT_THAT(inBash("kestrelctl --"), UnorderedElementsAre("--help", "--version"));
    EXPECT_THAT(inBash("kestrelctl assign 6 --"), ElementsAre("--help", "--title", "--to"));
    EXPECT_THAT(inFish("kestrelctl assign 6 --"), ElementsAre("--help", "--title", "--to"));
    EXPECT_THAT(inBash("kestrelctl assign s"), IsEmpty());
    EXPECT_THAT(inFish("kestrelctl assign s"), IsEmpty());
}

TEST(Completion, offers_values_and_files_where_they_belong)
{
    EXPECT_THAT(inBash("kestrelctl completion ''"), ElementsAre("bash", "fish", "zsh"));
    EXPECT_THAT(inFish("kestrelctl completion "), ElementsAre("bash", "fish", "zsh"));
    EXPECT_THAT(inBash("kestrelctl assign 6 --to ''"), ElementsAre("files"));
    EXPECT_THAT(inFish("kestrelctl assign 6 --to "), Contains("set.ZKCF"));
    EXPECT_THAT(inBash("kestrelctl assign 6 --title ''"), IsEmpty());
    EXPECT_THAT(inFish("kestrelctl assign 6 --title "), Not(Contains("set.ZKCF")));
}

TEST(Completion, completes_in_zsh)
{
    EXPECT_EQ(inZsh("kestrelctl assi"), "assign");
    EXPECT_EQ(inZsh("kestrelctl assign 6 --ti"), "assign 6 --title");
    EXPECT_EQ(inZsh("kestrelctl completion fi"), "completion fish");
    EXPECT_EQ(inZsh("kestrelctl assign 6 --to se"), "assign 6 --to set.ZKCF");
}

} // namespace
} // namespace kestrel::test
