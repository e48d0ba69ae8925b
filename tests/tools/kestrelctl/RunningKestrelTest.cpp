#include "tools/kestrelctl/RunningKestrel.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <string>
#include <thread>

namespace kestrel::test {
namespace {

using ctl::RunningKestrel;
using Outcome = RunningKestrel::Outcome;
using Kind = InstanceMessage::Kind;
using std::chrono::milliseconds;

constexpr milliseconds Short { 200 };

// A program at the socket that does with its first connection what the test says.
class Listener {
public:
    explicit Listener(const QString& path)
        : m_descriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_un address {};
        address.sun_family = AF_UNIX;
        path.toStdString().copy(address.sun_path, sizeof address.sun_path - 1);
        const auto* const where = reinterpret_cast<const sockaddr*>(&address);
        EXPECT_EQ(::bind(m_descriptor, where, sizeof address), 0);
        EXPECT_EQ(::listen(m_descriptor, 0), 0);
    }
    ~Listener()
    {
        if (m_thread.joinable())
            m_thread.join();
        ::close(m_descriptor);
    }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    void serve(const QByteArray& bytes, milliseconds pause = milliseconds(0))
    {
        m_thread = std::thread([this, bytes, pause] {
            const int connection = ::accept(m_descriptor, nullptr, nullptr);
            char request[10];
            EXPECT_EQ(::read(connection, request, sizeof request), ssize_t { sizeof request });
            for (const char byte : bytes) {
                if (::send(connection, &byte, 1, MSG_NOSIGNAL) != 1)
                    break; // the other side has given up
                if (pause > milliseconds(0))
                    std::this_thread::sleep_for(pause);
            }
            ::close(connection);
        });
    }

private:
    int m_descriptor;
    std::thread m_thread;
};

class RunningKestrelTest : public testing::Test {
protected:
    RunningKestrel::Reply ask(milliseconds patience = milliseconds(10000)) const
    {
        return RunningKestrel(socket, patience).ask(Kind::Status);
    }

    QTemporaryDir folder;
    QString socket = folder.filePath("socket");
};

TEST_F(RunningKestrelTest, answers_in_pieces)
{
    Listener listener(socket);
    listener.serve(InstanceMessage { Kind::Report, "{\"a\":1}" }.encoded());
    const auto reply = ask();
    EXPECT_EQ(reply.outcome, Outcome::Answered);
    EXPECT_EQ(reply.message.kind, Kind::Report);
    EXPECT_EQ(reply.message.body, "{\"a\":1}");
}

TEST_F(RunningKestrelTest, goes_on_with_messages_until_it_ends)
{
    Listener listener(socket);
    listener.serve(InstanceMessage { Kind::Done, {} }.encoded()
        + InstanceMessage { Kind::Events, "one\n" }.encoded()
        + InstanceMessage { Kind::Events, "two\n" }.encoded());
    RunningKestrel kestrel(socket);
    EXPECT_EQ(kestrel.ask(Kind::Follow).outcome, Outcome::Answered);
    EXPECT_EQ(kestrel.next().value().body, "one\n");
    EXPECT_EQ(kestrel.next().value().body, "two\n");
    EXPECT_FALSE(kestrel.next());
}

TEST_F(RunningKestrelTest, is_not_running_without_a_socket_or_behind_one_that_was_left)
{
    EXPECT_EQ(ask().outcome, Outcome::NotRunning);
    EXPECT_EQ(ask().problem, "Kestrel is not running.");
    static_cast<void>(Listener(socket)); // closed, not removed
    ASSERT_TRUE(QFile::exists(socket));
    EXPECT_EQ(ask().outcome, Outcome::NotRunning);
}

TEST_F(RunningKestrelTest, that_is_silent_is_not_waited_for_longer_than_allowed)
{
    const Listener silent(socket);
    const auto start = std::chrono::steady_clock::now();
    const auto reply = ask(Short);
    EXPECT_EQ(reply.outcome, Outcome::NoAnswer);
    EXPECT_EQ(reply.problem, "Kestrel runs, but it has not answered within 0.2 seconds.");
    const auto passed = std::chrono::steady_clock::now() - start;
    EXPECT_GE(passed, Short);
    EXPECT_LT(passed, milliseconds(9000)) << "the usual patience is longer";
}

TEST_F(RunningKestrelTest, that_answers_too_slowly_is_given_up_in_the_same_time)
{
    Listener slow(socket);
    slow.serve(InstanceMessage { Kind::Done, {} }.encoded(), milliseconds(500)); // five seconds
    EXPECT_EQ(ask(Short).outcome, Outcome::NoAnswer);
}

TEST_F(RunningKestrelTest, whose_queue_is_full_is_not_waited_for_longer_than_allowed)
{
    const Listener stopped(socket);
    std::vector<std::unique_ptr<RunningKestrel>> waiting;
    for (int i = 0; i < 3; ++i) { // more than its queue takes
        waiting.push_back(std::make_unique<RunningKestrel>(socket, milliseconds(1)));
        static_cast<void>(waiting.back()->ask(Kind::Status));
    }
    const auto reply = ask(Short);
    EXPECT_EQ(reply.outcome, Outcome::NoAnswer);
    EXPECT_EQ(reply.problem, "Kestrel runs, but it has not answered within 0.2 seconds.");
}

TEST_F(RunningKestrelTest, that_ends_meanwhile_says_so)
{
    Listener listener(socket);
    listener.serve("KSTL");
    const auto reply = ask();
    EXPECT_EQ(reply.outcome, Outcome::NoAnswer);
    EXPECT_EQ(reply.problem, "Kestrel has closed the connection. It is ending.");
}

TEST_F(RunningKestrelTest, refuses_with_its_own_sentence)
{
    Listener listener(socket);
    listener.serve(InstanceMessage::refused("No.").encoded());
    const auto reply = ask();
    EXPECT_EQ(reply.outcome, Outcome::Refused);
    EXPECT_EQ(reply.problem, "No.");
}

TEST_F(RunningKestrelTest, of_another_protocol_is_refused)
{
    Listener listener(socket);
    listener.serve("HTTP/1.1 400 Bad Request");
    EXPECT_EQ(ask().problem, "The running Kestrel speaks another protocol.");
}

TEST_F(RunningKestrelTest, that_cannot_be_reached_gives_the_reason)
{
    socket = folder.filePath(QString(200, 'x'));
    EXPECT_EQ(ask().outcome, Outcome::Refused);
    EXPECT_EQ(ask().problem, socket.toStdString() + ": File name too long.");
}

} // namespace
} // namespace kestrel::test
