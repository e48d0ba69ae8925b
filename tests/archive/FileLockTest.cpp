#include "archive/FileLock.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace kestrel::test {
namespace {

using std::chrono::milliseconds;

class FileLockTest : public testing::Test {
protected:
    [[nodiscard]] QString path(const char* name = "lock") const { return m_folder.filePath(name); }
    [[nodiscard]] std::errc errorOf(const char* name) const
    {
        const FileLock lock(path(name), milliseconds(0));
        EXPECT_FALSE(lock.isHeld());
        return static_cast<std::errc>(lock.error().value());
    }

    QTemporaryDir m_folder;
};

TEST_F(FileLockTest, is_held_by_one_at_a_time)
{
    {
        const FileLock first(path(), milliseconds(0));
        ASSERT_TRUE(first.isHeld());
        const FileLock second(path(), milliseconds(0));
        EXPECT_FALSE(second.isHeld());
        EXPECT_FALSE(second.error()) << "a lock in use is no error";
    }
    EXPECT_TRUE(FileLock(path(), milliseconds(0)).isHeld());
}

TEST_F(FileLockTest, ends_with_the_process_that_holds_it_though_the_file_stays)
{
    const pid_t child = fork();
    if (child == 0) {
        const FileLock lock(path(), milliseconds(0));
        kill(getpid(), lock.isHeld() ? SIGKILL : SIGTERM);
    }
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_EQ(WTERMSIG(status), SIGKILL);
    ASSERT_TRUE(QFile::exists(path()));
    EXPECT_TRUE(FileLock(path(), milliseconds(0)).isHeld());
}

TEST_F(FileLockTest, says_why_the_file_cannot_be_locked)
{
    ASSERT_EQ(mkdir(QFile::encodeName(path("folder")).constData(), 0700), 0);
    ASSERT_EQ(symlink("elsewhere", QFile::encodeName(path("link")).constData()), 0);
    EXPECT_EQ(errorOf("folder"), std::errc::is_a_directory);
    EXPECT_EQ(errorOf("link"), std::errc::too_many_symbolic_link_levels);
    EXPECT_EQ(errorOf("missing/lock"), std::errc::no_such_file_or_directory);
    EXPECT_FALSE(QFile::exists(path("elsewhere"))) << "the link is not followed";
}

} // namespace
} // namespace kestrel::test
