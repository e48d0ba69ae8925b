#include "app/CommandLine.h"

#include <QDir>

#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

CommandLine with(const QStringList& arguments)
{
    return CommandLine(QStringList { QStringLiteral("kestrel") } + arguments);
}

void expectRefused(const QStringList& arguments, const QString& text)
{
    const auto answer = with(arguments).answer();
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->text, text);
    EXPECT_TRUE(answer->isError);
}

TEST(CommandLine, without_arguments_the_program_starts_with_no_file)
{
    EXPECT_FALSE(with({}).answer());
    EXPECT_EQ(with({}).files(), QStringList());
}

TEST(CommandLine, files_become_absolute_and_keep_their_order)
{
    const CommandLine line = with({ "b.ZKCF", "/sets/a.ZKCF" });
    EXPECT_FALSE(line.answer());
    EXPECT_EQ(line.files(), QStringList({ QDir::current().filePath("b.ZKCF"), "/sets/a.ZKCF" }));
}

TEST(CommandLine, behind_two_dashes_everything_is_a_file)
{
    const CommandLine line = with({ "a", "--", "--help", "-style", "--" });
    EXPECT_FALSE(line.answer());
    const QDir here = QDir::current();
    EXPECT_EQ(line.files(),
        QStringList({ here.filePath("a"), here.filePath("--help"), here.filePath("-style"),
            here.filePath("--") }));
}

TEST(CommandLine, the_version_is_that_of_the_bundle)
{
    const auto answer = with({ "--version" }).answer();
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->text, "kestrel " KESTREL_VERSION "\n");
    EXPECT_FALSE(answer->isError);
}

TEST(CommandLine, help_names_the_usage_before_anything_else)
{
    const auto answer = with({ "a.ZKCF", "--help" }).answer();
    ASSERT_TRUE(answer);
    EXPECT_TRUE(answer->text.startsWith("Usage: kestrel [--] [file ...]\n"));
    EXPECT_TRUE(answer->text.endsWith('\n'));
    EXPECT_FALSE(answer->isError);
}

TEST(CommandLine, a_wrong_option_is_named)
{
    expectRefused({ "--verbose" }, "kestrel: Unknown option 'verbose'.\nTry \"kestrel --help\".\n");
    expectRefused({ "a.ZKCF", "-x" }, "kestrel: Unknown option 'x'.\nTry \"kestrel --help\".\n");
    expectRefused(
        { "-style", "fusion" }, "kestrel: Unknown option 'style'.\nTry \"kestrel --help\".\n");
    expectRefused(
        { "--help", "--wrong" }, "kestrel: Unknown option 'wrong'.\nTry \"kestrel --help\".\n");
}

TEST(CommandLine, what_a_session_manager_adds_is_no_file)
{
    const CommandLine line = with({ "-session", "10e1_150", "a.ZKCF" });
    EXPECT_FALSE(line.answer());
    EXPECT_EQ(line.files(), QStringList(QDir::current().filePath("a.ZKCF")));
}

} // namespace
} // namespace kestrel::test
