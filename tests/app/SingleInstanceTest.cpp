#include "app/SingleInstance.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QLocalSocket>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <future>

namespace kestrel::test {
namespace {

using std::chrono::milliseconds;

// A temporary folder and a program that has claimed it.
class InstanceFolder {
public:
    InstanceFolder()
    {
        EXPECT_TRUE(first.claim());
        QObject::connect(&first, &SingleInstance::startedAgain, &first,
            [this](const QStringList& paths) { starts.append(paths); });
    }

    // Hands the paths over from another thread, like another process, while this event loop runs.
    bool handOver(const QStringList& paths) const
    {
        auto done = std::async(std::launch::async,
            [this, paths] { return SingleInstance(path).handOver(paths, milliseconds(10000)); });
        while (done.wait_for(milliseconds(0)) != std::future_status::ready)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        return done.get();
    }

    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("kestrel"));
    SingleInstance first { path };
    QList<QStringList> starts;
};

TEST(SingleInstance, only_the_first_start_claims_the_place)
{
    const InstanceFolder bench;
    SingleInstance second(bench.path);
    EXPECT_FALSE(second.claim());
}

TEST(SingleInstance, a_later_start_hands_over_its_files)
{
    const InstanceFolder bench;
    const QStringList files { QStringLiteral("/a b.ZKCF"), QStringLiteral("/ü\nx.ZKCF") };
    EXPECT_TRUE(bench.handOver(files));
    EXPECT_EQ(bench.starts, QList<QStringList> { files });
}

TEST(SingleInstance, a_bare_start_is_told_as_one)
{
    const InstanceFolder bench;
    EXPECT_TRUE(bench.handOver({}));
    EXPECT_EQ(bench.starts, QList<QStringList> { QStringList() });
}

TEST(SingleInstance, folder_and_socket_belong_to_the_user_alone)
{
    const InstanceFolder bench;
    const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther
        | QFile::WriteOther | QFile::ExeOther;
    EXPECT_FALSE(QFileInfo(bench.path).permissions() & others);
    const QString socket = bench.path + QStringLiteral("/kestrel.socket");
    ASSERT_TRUE(QFileInfo::exists(socket));
    EXPECT_FALSE(QFileInfo(socket).permissions() & others);
}

TEST(SingleInstance, what_a_crash_has_left_behind_is_no_obstacle)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("kestrel"));
    const pid_t child = ::fork();
    if (child == 0) {
        SingleInstance crashing(path);
        const bool claimed = crashing.claim();
        ::kill(::getpid(), claimed ? SIGKILL : SIGTERM);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    ASSERT_EQ(WTERMSIG(status), SIGKILL);
    ASSERT_TRUE(QFileInfo::exists(path + QStringLiteral("/kestrel.socket")));
    SingleInstance next(path);
    EXPECT_TRUE(next.claim());
}

TEST(SingleInstance, nobody_to_hand_over_to_is_told_in_time)
{
    const QTemporaryDir folder;
    EXPECT_FALSE(
        SingleInstance(folder.filePath(QStringLiteral("kestrel"))).handOver({}, milliseconds(100)));
}

TEST(SingleInstance, noise_on_the_socket_starts_nothing)
{
    const InstanceFolder bench;
    QLocalSocket noise;
    noise.connectToServer(bench.path + QStringLiteral("/kestrel.socket"));
    ASSERT_TRUE(noise.waitForConnected(1000));
    noise.write(QByteArray(3, '\xFF'));
    noise.flush();
    for (int i = 0; i < 10; ++i)
        QCoreApplication::processEvents();
    EXPECT_TRUE(bench.starts.isEmpty());
    EXPECT_TRUE(bench.handOver({}));
}

} // namespace
} // namespace kestrel::test
