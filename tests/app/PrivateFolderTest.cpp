#include "app/PrivateFolder.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kestrel::test {
namespace {

class PrivateFolderTest : public testing::Test {
protected:
    [[nodiscard]] QByteArray path(const char* name) const
    {
        return QFile::encodeName(folder.filePath(name));
    }
    [[nodiscard]] QString problemOf(const char* name) const
    {
        return makePrivateFolder(folder.filePath(name)).value_or(QString());
    }
    [[nodiscard]] mode_t modeOf(const char* name) const
    {
        struct stat status { };
        EXPECT_EQ(stat(path(name).constData(), &status), 0);
        return status.st_mode & 0777;
    }

    QTemporaryDir folder;
};

TEST_F(PrivateFolderTest, is_made_with_its_parents)
{
    EXPECT_EQ(problemOf("a/b/c"), QString());
    EXPECT_EQ(modeOf("a/b/c"), 0700u);
    EXPECT_EQ(problemOf("a/b/c"), QString());
}

TEST_F(PrivateFolderTest, is_closed_to_others)
{
    ASSERT_EQ(mkdir(path("open").constData(), 0777), 0);
    ASSERT_EQ(chmod(path("open").constData(), 0777), 0);
    EXPECT_EQ(problemOf("open"), QString());
    EXPECT_EQ(modeOf("open"), 0700u);
}

TEST_F(PrivateFolderTest, is_neither_a_file_nor_a_link)
{
    ASSERT_EQ(mkdir(path("real").constData(), 0755), 0);
    ASSERT_EQ(symlink("real", path("link").constData()), 0);
    ASSERT_EQ(mknod(path("file").constData(), S_IFREG | 0600, 0), 0);
    EXPECT_TRUE(problemOf("link").startsWith(folder.filePath("link") + ": "));
    EXPECT_EQ(problemOf("file"), folder.filePath("file") + ": Not a directory");
    EXPECT_EQ(problemOf("file/sub"), folder.filePath("file/sub") + ": Not a directory");
    EXPECT_EQ(modeOf("real"), 0755u);
}

TEST_F(PrivateFolderTest, belongs_to_this_user)
{
    QString other = "/"; // belongs to root
    if (geteuid() == 0) {
        ASSERT_EQ(mkdir(path("other").constData(), 0755), 0);
        ASSERT_EQ(chown(path("other").constData(), 65534, 65534), 0);
        other = folder.filePath("other");
    }
    EXPECT_EQ(makePrivateFolder(other), other + " belongs to another user");
}

} // namespace
} // namespace kestrel::test
