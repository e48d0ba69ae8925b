#include "app/SingleInstance.h"

#include "app/InstanceServer.h"
#include "app/SecondStart.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocalSocket>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace kestrel::test {
namespace {

using Claim = SingleInstance::Claim;
using Outcome = SecondStart::Outcome;

// A temporary folder and a program that has claimed it.
class InstanceFolder {
public:
    InstanceFolder()
    {
        EXPECT_EQ(first.claim(), Claim::First);
        QObject::connect(&first, &SingleInstance::startedAgain, &first,
            [this](const QStringList& paths) { starts.append(paths); });
    }

    bool handOver(const QStringList& paths) const
    {
        SingleInstance second(path);
        SecondStart start(second, paths);
        start.begin();
        return start.wait() == Outcome::HandedOver;
    }
    [[nodiscard]] QString socket() const { return first.socketPath(); }

    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("kestrel"));
    SingleInstance first { path };
    QList<QStringList> starts;
};

TEST(SingleInstance, only_the_first_start_claims_the_place)
{
    const InstanceFolder bench;
    SingleInstance second(bench.path);
    EXPECT_EQ(second.claim(), Claim::Taken);
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
        const bool claimed = crashing.claim() == Claim::First;
        ::kill(::getpid(), claimed ? SIGKILL : SIGTERM);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    ASSERT_EQ(WTERMSIG(status), SIGKILL);
    ASSERT_TRUE(QFileInfo::exists(path + QStringLiteral("/kestrel.socket")));
    SingleInstance next(path);
    EXPECT_EQ(next.claim(), Claim::First);
}

TEST(SingleInstance, a_start_with_nobody_to_hand_over_to_has_the_place)
{
    const QTemporaryDir folder;
    SingleInstance only(folder.filePath(QStringLiteral("kestrel")));
    SecondStart start(only, { QStringLiteral("/a") });
    start.begin();
    EXPECT_EQ(start.wait(), Outcome::Claimed);
    EXPECT_EQ(start.files(), QStringList { QStringLiteral("/a") });
}

TEST(SingleInstance, an_empty_lock_file_is_no_running_program)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("kestrel"));
    ASSERT_TRUE(QDir().mkpath(path));
    ASSERT_TRUE(QFile(path + QStringLiteral("/kestrel.lock")).open(QIODevice::WriteOnly));
    EXPECT_EQ(SingleInstance(path).claim(), Claim::First);
}

TEST(SingleInstance, the_reason_of_a_failure_is_named)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("kestrel"));
    const QString lock = path + QStringLiteral("/kestrel.lock");
    ASSERT_TRUE(QDir().mkpath(lock));
    SingleInstance instance(path);
    EXPECT_EQ(instance.claim(), Claim::Failed);
    EXPECT_EQ(instance.problem(), lock + QStringLiteral(": Is a directory"));
    ASSERT_TRUE(QDir().rmdir(lock));
    EXPECT_EQ(instance.claim(), Claim::First);
}

TEST(SingleInstance, a_closed_one_keeps_the_place_and_ends_its_connections)
{
    InstanceFolder bench;
    QLocalSocket waiting;
    waiting.connectToServer(bench.socket());
    ASSERT_TRUE(waiting.waitForConnected(10000));
    for (int i = 0; i < 10; ++i)
        QCoreApplication::processEvents();
    bench.first.close();
    EXPECT_TRUE(waiting.waitForDisconnected(10000));
    EXPECT_FALSE(QFileInfo::exists(bench.socket()));
    EXPECT_EQ(SingleInstance(bench.path).claim(), Claim::Taken);
}

TEST(InstanceServer, a_place_that_cannot_be_listened_at_is_named)
{
    const QTemporaryDir folder;
    InstanceServer server([](const InstanceMessage&) { return InstanceReply(); });
    EXPECT_EQ(server.listen(folder.filePath(QString(200, 'x'))), std::errc::filename_too_long);
    EXPECT_EQ(
        server.listen(folder.filePath("missing/socket")), std::errc::no_such_file_or_directory);
    EXPECT_TRUE(server.listen(folder.path())) << "a folder is not replaced";
    EXPECT_TRUE(QFileInfo(folder.path()).isDir());
}

TEST(InstanceServer, more_than_enough_connections_drop_the_oldest)
{
    const InstanceFolder bench;
    std::vector<std::unique_ptr<QLocalSocket>> sockets;
    for (int i = 0; i < InstanceServer::MaxConnections + 1; ++i) {
        sockets.push_back(std::make_unique<QLocalSocket>());
        sockets.back()->connectToServer(bench.socket());
        ASSERT_TRUE(sockets.back()->waitForConnected(10000));
        QCoreApplication::processEvents();
    }
    for (int i = 0; i < 50; ++i)
        QCoreApplication::processEvents();
    EXPECT_EQ(sockets[0]->state(), QLocalSocket::UnconnectedState);
    EXPECT_EQ(sockets[1]->state(), QLocalSocket::ConnectedState);
    EXPECT_TRUE(bench.handOver({}));
}

TEST(SingleInstance, noise_on_the_socket_starts_nothing)
{
    const InstanceFolder bench;
    QLocalSocket noise;
    noise.connectToServer(bench.path + QStringLiteral("/kestrel.socket"));
    ASSERT_TRUE(noise.waitForConnected(10000));
    noise.write(QByteArray(3, '\xFF'));
    noise.flush();
    for (int i = 0; i < 10; ++i)
        QCoreApplication::processEvents();
    EXPECT_TRUE(bench.starts.isEmpty());
    EXPECT_TRUE(bench.handOver({}));
}

} // namespace
} // namespace kestrel::test
