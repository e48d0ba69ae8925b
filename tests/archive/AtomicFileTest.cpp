#include "archive/AtomicFile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>

namespace kestrel::test {

namespace {

// Lets no file of this process grow beyond a size, as a full disk would: writes fail in part.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes)
        : m_previousHandler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_previous);
        rlimit limit = m_previous;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_previous);
        std::signal(SIGXFSZ, m_previousHandler);
    }

private:
    void (*m_previousHandler)(int);
    rlimit m_previous {};
};

constexpr int LongAgoSeconds = 120;
constexpr uid_t Nobody = 65534;

class AtomicFileTest : public testing::Test {
protected:
    QString path(const QString& name = QStringLiteral("set.ZKCF")) const
    {
        return m_folder.filePath(name);
    }
    QStringList names() const
    {
        return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    QByteArray content() const
    {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }
    void leave(const QString& name) const
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTime().addSecs(-LongAgoSeconds),
            QFileDevice::FileModificationTime));
    }

    QTemporaryDir m_folder;
};

TEST_F(AtomicFileTest, writes_a_new_file_and_replaces_an_old_one)
{
    EXPECT_TRUE(AtomicFile::write(path(), viewOf(QByteArray("first"))));
    EXPECT_EQ(content(), "first");
    EXPECT_TRUE(AtomicFile::write(path(), viewOf(QByteArray("2"))));
    EXPECT_EQ(content(), "2");
    EXPECT_EQ(names(), QStringList { "set.ZKCF" });
}

TEST_F(AtomicFileTest, writes_an_empty_file)
{
    EXPECT_TRUE(AtomicFile::write(path(), {}));
    EXPECT_EQ(content(), "");
}

TEST_F(AtomicFileTest, a_small_save_on_a_full_disk_fails_and_keeps_the_old_file)
{
    ASSERT_TRUE(AtomicFile::write(path(), viewOf(QByteArray("old"))));
    for (const rlim_t room : { rlim_t(0), rlim_t(1), rlim_t(4096), rlim_t(4999) }) {
        const FullDisk disk(room);
        EXPECT_FALSE(AtomicFile::write(path(), viewOf(QByteArray(5000, 'x')))) << room;
        EXPECT_EQ(content(), "old");
        EXPECT_EQ(names(), QStringList { "set.ZKCF" });
    }
    const FullDisk disk(5000);
    EXPECT_TRUE(AtomicFile::write(path(), viewOf(QByteArray(5000, 'x'))));
}

TEST_F(AtomicFileTest, a_large_save_on_a_full_disk_fails_and_keeps_the_old_file)
{
    ASSERT_TRUE(AtomicFile::write(path(), viewOf(QByteArray("old"))));
    const FullDisk disk(50'000);
    EXPECT_FALSE(AtomicFile::write(path(), viewOf(QByteArray(100'000, 'x'))));
    EXPECT_EQ(content(), "old");
    EXPECT_EQ(names(), QStringList { "set.ZKCF" });
}

// Root may write to every file, so this is tried as somebody else.
TEST_F(AtomicFileTest, a_file_marked_read_only_is_not_replaced)
{
    ASSERT_TRUE(AtomicFile::write(path(), viewOf(QByteArray("old"))));
    ASSERT_TRUE(QFile::setPermissions(path(), QFile::ReadOwner));
    const auto exitCodeOfWriting = [this] {
        if (geteuid() == 0
            && (chown(qPrintable(m_folder.path()), Nobody, Nobody) != 0
                || chown(qPrintable(path()), Nobody, Nobody) != 0 || setuid(Nobody) != 0))
            return 2;
        return AtomicFile::write(path(), viewOf(QByteArray("new"))) ? 1 : 0;
    };
    EXPECT_EXIT(_exit(exitCodeOfWriting()), testing::ExitedWithCode(0), "");
    EXPECT_EQ(content(), "old");
    EXPECT_EQ(names(), QStringList { "set.ZKCF" });
}

TEST_F(AtomicFileTest, a_folder_that_does_not_exist_fails)
{
    EXPECT_FALSE(AtomicFile::write(path("none/set.ZKCF"), viewOf(QByteArray("x"))));
}

TEST_F(AtomicFileTest, removes_what_killed_saves_of_the_same_file_left_behind)
{
    leave("set.ZKCF.aBcDeF");
    ASSERT_TRUE(AtomicFile::write(path(), viewOf(QByteArray("x"))));
    EXPECT_EQ(names(), QStringList { "set.ZKCF" });
}

TEST_F(AtomicFileTest, removes_nothing_while_somebody_writes_in_the_folder)
{
    leave("set.ZKCF.aBcDeF");
    const int folder = open(qPrintable(QFileInfo(path()).absolutePath()), O_RDONLY | O_DIRECTORY);
    ASSERT_EQ(flock(folder, LOCK_SH), 0);
    ASSERT_TRUE(AtomicFile::write(path(), viewOf(QByteArray("x"))));
    EXPECT_TRUE(QFile::exists(path("set.ZKCF.aBcDeF")));
    close(folder);
    ASSERT_TRUE(AtomicFile::write(path(), viewOf(QByteArray("x"))));
    EXPECT_EQ(names(), QStringList { "set.ZKCF" });
}

TEST_F(AtomicFileTest, saves_of_one_file_at_the_same_time_all_succeed)
{
    constexpr int Saves = 300;
    const auto saveOften = [this] {
        for (int i = 0; i < Saves; ++i) {
            if (!AtomicFile::write(path(), viewOf(QByteArray("x"))))
                _exit(1);
        }
        _exit(0);
    };
    std::array<pid_t, 3> savers {};
    for (pid_t& saver : savers) {
        saver = fork();
        if (saver == 0)
            saveOften();
    }
    for (const pid_t saver : savers) {
        int status = -1;
        EXPECT_EQ(waitpid(saver, &status, 0), saver);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(names(), QStringList { "set.ZKCF" });
}

TEST_F(AtomicFileTest, a_link_stays_one_and_its_file_is_replaced)
{
    ASSERT_TRUE(QDir(m_folder.path()).mkdir("real"));
    leave("real/set.ZKCF");
    leave("real/set.ZKCF.aBcDeF");
    ASSERT_TRUE(QFile::link(path("real/set.ZKCF"), path()));
    EXPECT_TRUE(AtomicFile::write(path(), viewOf(QByteArray("new"))));
    EXPECT_TRUE(QFileInfo(path()).isSymLink());
    EXPECT_EQ(content(), "new");
    EXPECT_FALSE(QFile::exists(path("real/set.ZKCF.aBcDeF")));
}

TEST_F(AtomicFileTest, a_link_to_a_file_that_does_not_exist_yet_is_stored_through)
{
    ASSERT_TRUE(QDir(m_folder.path()).mkdir("real"));
    ASSERT_TRUE(QFile::link(path("real/second"), path("first")));
    ASSERT_TRUE(QFile::link(path("first"), path()));
    EXPECT_TRUE(AtomicFile::write(path(), viewOf(QByteArray("new"))));
    EXPECT_TRUE(QFileInfo(path()).isSymLink());
    EXPECT_TRUE(QFileInfo(path("first")).isSymLink());
    EXPECT_FALSE(QFileInfo(path("real/second")).isSymLink());
    EXPECT_EQ(content(), "new");
}

TEST_F(AtomicFileTest, a_dangling_link_costs_no_file_of_the_working_folder)
{
    ASSERT_TRUE(QFile::link(path("missing"), path("link")));
    leave(".aBcDeF");
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(m_folder.path()));
    AtomicFile::removeLeftovers(path("link"));
    EXPECT_TRUE(QDir::setCurrent(before));
    EXPECT_TRUE(QFile::exists(path(".aBcDeF")));
}

TEST_F(AtomicFileTest, links_in_a_circle_cost_no_file_of_the_working_folder)
{
    ASSERT_TRUE(QFile::link(path("circle"), path("circle")));
    leave(".aBcDeF");
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(m_folder.path()));
    AtomicFile::removeLeftovers(path("circle"));
    EXPECT_TRUE(QDir::setCurrent(before));
    EXPECT_TRUE(QFile::exists(path(".aBcDeF")));
}

TEST_F(AtomicFileTest, a_failure_says_why)
{
    const auto problemOf = [this](const QString& name) {
        return AtomicFile::write(path(name), viewOf(QByteArray(5000, 'x'))).problem.toStdString();
    };
    EXPECT_EQ(problemOf("set.ZKCF"), "");
    EXPECT_EQ(problemOf("none/set.ZKCF"), "No such file or directory");
    ASSERT_TRUE(QFile::link(path("circle"), path("circle")));
    EXPECT_EQ(problemOf("circle"), "Too many levels of symbolic links");
    ASSERT_TRUE(QDir(m_folder.path()).mkdir("folder"));
    EXPECT_EQ(problemOf("folder"), "Filename refers to a directory");
    const FullDisk disk(4096);
    EXPECT_EQ(problemOf("set.ZKCF"), "No space is left");
}

// Other programs replace files in the same way and take no lock.
TEST_F(AtomicFileTest, leaves_alone_what_another_program_may_be_writing)
{
    leave("set.ZKCF.oLdEsT");
    leave("set.ZKCF.yOuNgE");
    QFile young(path("set.ZKCF.yOuNgE"));
    ASSERT_TRUE(young.open(QIODevice::ReadWrite));
    ASSERT_TRUE(young.setFileTime(
        QDateTime::currentDateTime().addSecs(-30), QFileDevice::FileModificationTime));
    EXPECT_TRUE(AtomicFile::write(path(), viewOf(QByteArray("new"))));
    EXPECT_EQ(names(), (QStringList { "set.ZKCF", "set.ZKCF.yOuNgE" }));
}

TEST_F(AtomicFileTest, leaves_alone_what_belongs_to_another_user)
{
    leave("set.ZKCF.mYoWnX");
    QStringList left { "set.ZKCF" };
    if (geteuid() == 0) { // only root can give a file to another user
        leave("set.ZKCF.tHeIrS");
        left.append("set.ZKCF.tHeIrS");
        ASSERT_EQ(chown(qPrintable(path("set.ZKCF.tHeIrS")), Nobody, Nobody), 0);
    }
    EXPECT_TRUE(AtomicFile::write(path(), viewOf(QByteArray("new"))));
    EXPECT_EQ(names(), left);
}

TEST_F(AtomicFileTest, removes_a_file_only_if_it_still_has_the_content)
{
    const auto removes = [this](const char* text) {
        return AtomicFile::removeIfStill(path(), viewOf(QByteArray(text)));
    };
    EXPECT_FALSE(removes("old")) << "there is none";
    ASSERT_TRUE(AtomicFile::write(path(), viewOf(QByteArray("new"))));
    for (const char* other : { "old", "", "ne", "new and more" }) {
        EXPECT_FALSE(removes(other)) << other;
        EXPECT_EQ(content(), "new");
    }
    const int folder = ::open(QFileInfo(path()).path().toLocal8Bit().constData(), O_RDONLY);
    ASSERT_EQ(::flock(folder, LOCK_SH), 0);
    EXPECT_FALSE(removes("new")) << "somebody writes in the folder";
    ::close(folder);
    EXPECT_TRUE(removes("new"));
    EXPECT_FALSE(QFile::exists(path()));
}

TEST_F(AtomicFileTest, leaves_alone_whatever_else_lies_there)
{
    const QStringList others { "other.ZKCF.aBcDeF", "set.ZKCF.Backup", "set.ZKCF.ORIGIN",
        "set.ZKCF.aBcDe", "set.ZKCF.aBcDeFg", "set.ZKCF.aBc1eF", "set.ZKCF.backup", "setaBcDeF" };
    for (const QString& name : others)
        leave(name);
    AtomicFile::removeLeftovers(path());
    QStringList expected = others;
    expected.sort();
    EXPECT_EQ(names(), expected);
}

} // namespace

} // namespace kestrel::test
