#include "app/InstanceServer.h"
#include "control/InstanceMessageReader.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLocalSocket>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <vector>

namespace kestrel::test {
namespace {

using Kind = InstanceMessage::Kind;

constexpr int PatienceMs = 10000;

bool comesTrue(const std::function<bool()>& condition)
{
    QElapsedTimer passed;
    passed.start();
    while (!condition() && !passed.hasExpired(PatienceMs))
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    return condition();
}

// Takes the whole messages off the front of the bytes.
std::vector<InstanceMessage> messagesIn(QByteArray bytes)
{
    std::vector<InstanceMessage> messages;
    for (;;) {
        InstanceMessageReader reader;
        if (reader.add(bytes) != InstanceMessageReader::State::Complete)
            return messages;
        messages.push_back(reader.message());
        bytes.remove(0, reader.message().encoded().size());
    }
}

// A server whose feed gives what the test puts in.
class Followers : public testing::Test {
protected:
    Followers() { EXPECT_FALSE(server.listen(path)); }

    InstanceReply answer(const InstanceMessage& request)
    {
        if (request.kind != Kind::Follow)
            return { { Kind::Done, {} } };
        return { { Kind::Done, {} }, [this] {
                    ++asked;
                    return endless ? QByteArray(EndlessBatch, 'x') : std::exchange(waiting, {});
                } };
    }
    std::unique_ptr<QLocalSocket> ask(Kind kind = Kind::Follow) const
    {
        auto socket = std::make_unique<QLocalSocket>();
        socket->connectToServer(path);
        EXPECT_TRUE(socket->waitForConnected(PatienceMs));
        socket->write(InstanceMessage { kind, {} }.encoded());
        return socket;
    }
    static bool receives(QLocalSocket& socket, Kind kind, const QByteArray& body)
    {
        QByteArray bytes;
        return comesTrue([&] {
            bytes += socket.readAll();
            const auto messages = messagesIn(bytes);
            return !messages.empty() && messages.back().kind == kind
                && messages.back().body == body;
        });
    }

    static constexpr int EndlessBatch = 1000;
    QTemporaryDir folder;
    QString path = folder.filePath("socket");
    InstanceServer server { [this](const InstanceMessage& request) { return answer(request); } };
    QByteArray waiting;
    bool endless = false;
    int asked = 0;
};

TEST_F(Followers, get_what_there_is_and_then_what_comes)
{
    waiting = "one\n";
    const auto follower = ask();
    EXPECT_TRUE(receives(*follower, Kind::Events, "one\n"));
    waiting = "two\n";
    EXPECT_TRUE(receives(*follower, Kind::Events, "two\n"));
    EXPECT_EQ(follower->state(), QLocalSocket::ConnectedState);
}

TEST_F(Followers, are_told_at_once_that_they_are_heard)
{
    const auto follower = ask();
    EXPECT_TRUE(receives(*follower, Kind::Done, {}));
}

TEST_F(Followers, that_do_not_read_cost_a_bounded_memory)
{
    endless = true;
    const auto follower = ask();
    follower->setReadBufferSize(1); // the socket reads no more than that
    EXPECT_TRUE(comesTrue([&] { return asked > 0; }));
    int before = -1;
    for (int turn = 0; turn < 20 && before != asked; ++turn) {
        before = asked;
        QElapsedTimer passed;
        passed.start();
        while (!passed.hasExpired(3 * InstanceServer::FeedInterval.count()))
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
    }
    EXPECT_EQ(before, asked) << "it went on reading the feed";
    constexpr qint64 KernelBuffers = 1024 * 1024; // more than Linux gives a local socket
    EXPECT_LT(asked * EndlessBatch, InstanceServer::MaxUnread + KernelBuffers);
    EXPECT_TRUE(receives(*ask(Kind::Status), Kind::Done, {})) << "and others are answered";
}

TEST_F(Followers, stay_when_other_connections_are_too_many)
{
    const auto follower = ask();
    EXPECT_TRUE(receives(*follower, Kind::Done, {}));
    std::vector<std::unique_ptr<QLocalSocket>> silent;
    for (int i = 0; i < 2 * InstanceServer::MaxConnections; ++i) {
        silent.push_back(std::make_unique<QLocalSocket>());
        silent.back()->connectToServer(path);
        ASSERT_TRUE(silent.back()->waitForConnected(PatienceMs));
        QCoreApplication::processEvents();
    }
    EXPECT_TRUE(comesTrue([&] { return silent[0]->state() == QLocalSocket::UnconnectedState; }));
    waiting = "still here\n";
    EXPECT_TRUE(receives(*follower, Kind::Events, "still here\n"));
}

TEST_F(Followers, are_refused_when_there_are_enough)
{
    std::vector<std::unique_ptr<QLocalSocket>> followers;
    for (int i = 0; i < InstanceServer::MaxFollowers; ++i) {
        followers.push_back(ask());
        ASSERT_TRUE(receives(*followers.back(), Kind::Done, {}));
    }
    EXPECT_TRUE(receives(*ask(), Kind::Refused, "Too many programs follow the activity."));
    followers.pop_back();
    EXPECT_TRUE(comesTrue([&] { return receives(*ask(), Kind::Done, {}); }));
}

TEST_F(Followers, that_have_gone_are_fed_no_more)
{
    ask().reset();
    auto follower = ask();
    EXPECT_TRUE(receives(*follower, Kind::Done, {}));
    follower.reset();
    const int before = asked;
    EXPECT_TRUE(comesTrue([&] {
        const int now = asked;
        QElapsedTimer passed;
        passed.start();
        while (!passed.hasExpired(3 * InstanceServer::FeedInterval.count()))
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
        return asked == now;
    })) << before;
}

} // namespace
} // namespace kestrel::test
