#include "app/ArgumentText.h"

#include <QSysInfo>

#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

std::optional<std::string> aliasOf(const char* path)
{
    return "alias of " + std::to_string(std::string_view(path).size()) + " bytes";
}

QString textOf(const QByteArray& argument)
{
    return textOfArgument(argument, aliasOf);
}

TEST(ArgumentText, is_the_argument_in_UTF_8)
{
    EXPECT_EQ(textOf("a b\n%20ü.ZKCF"), "a b\n%20ü.ZKCF");
    EXPECT_EQ(textOf(""), "");
    EXPECT_EQ(textOf("file:a"), "file:a");
}

TEST(ArgumentText, is_the_path_of_a_file_s_URL)
{
    EXPECT_EQ(textOf("file:///home/a%20b%C3%BC.ZKCF"), "/home/a bü.ZKCF");
    EXPECT_EQ(textOf("FILE://localhost/a"), "/a");
    EXPECT_EQ(textOf("file://" + QSysInfo::machineHostName().toUtf8() + "/a"), "/a");
    EXPECT_EQ(textOf("file://elsewhere/a"), "file://elsewhere/a");
    EXPECT_EQ(textOf("file://"), "file://");
}

TEST(ArgumentText, is_another_path_for_a_file_whose_name_is_not_in_UTF_8)
{
    EXPECT_EQ(textOf("/\xE4.ZKCF"), "alias of 7 bytes");
    EXPECT_EQ(textOf("file:///%E4.ZKCF"), "alias of 7 bytes");
    const auto nothing = [](const char*) { return std::optional<std::string>(); };
    EXPECT_EQ(textOfArgument("/\xE4.ZKCF", nothing), QString("/\uFFFD.ZKCF"));
}

} // namespace
} // namespace kestrel::test
