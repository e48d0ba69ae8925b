#include "platform/linux/midi/DestinationLane.h"

#include "tests/platform/linux/midi/ServerStandIn.h"

#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <optional>
#include <thread>

namespace kestrel::test {
namespace {

constexpr std::array<std::uint8_t, 3> Answer { 0x90, 0x00, 0x7F };

// A byte in either direction between two threads or processes.
class Pipe {
public:
    Pipe() { EXPECT_EQ(::pipe(m_ends.data()), 0); }
    ~Pipe()
    {
        ::close(m_ends[0]);
        ::close(m_ends[1]);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    void signal() const { EXPECT_EQ(::write(m_ends[1], "", 1), 1); }
    void await() const
    {
        char byte = 0;
        EXPECT_EQ(::read(m_ends[0], &byte, 1), 1);
    }

private:
    std::array<int, 2> m_ends {};
};

// Runs a cycle in a process of its own that the test can halt between any two instructions, while
// another thread of that process sends the first packet.
class HaltedCycle {
public:
    HaltedCycle()
        : m_process(::fork())
    {
        if (m_process == 0)
            ::_exit(isPacketKept() ? 0 : 1);
        m_isAtEnd = signalOfHalt() != SIGSTOP;
    }
    HaltedCycle(const HaltedCycle&) = delete;
    HaltedCycle& operator=(const HaltedCycle&) = delete;

    // False when the cycle ends before that.
    bool run(int instructions)
    {
        for (; instructions > 0 && !m_isAtEnd; --instructions) {
            EXPECT_EQ(::ptrace(PTRACE_SINGLESTEP, m_process, nullptr, nullptr), 0);
            m_isAtEnd = signalOfHalt() != SIGTRAP;
        }
        return !m_isAtEnd;
    }
    void send() const
    {
        m_send.signal();
        m_sent.await();
    }
    // Ends the cycle. Returns whether the packet goes out once the connection stands.
    bool finish()
    {
        if (!m_isAtEnd) {
            EXPECT_EQ(::ptrace(PTRACE_CONT, m_process, nullptr, nullptr), 0);
            EXPECT_EQ(signalOfHalt(), SIGUSR1);
        }
        EXPECT_EQ(::ptrace(PTRACE_DETACH, m_process, nullptr, nullptr), 0);
        int status = 0;
        EXPECT_EQ(::waitpid(m_process, &status, 0), m_process);
        return WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }

private:
    // In the process of the cycle.
    bool isPacketKept() const
    {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        _jack_port port;
        DestinationLane lane(1, "ZENTA:midi_5");
        lane.bind(&port);
        // The same order as in JackMIDIServices::send().
        std::thread mainThread([&] {
            m_send.await();
            static_cast<void>(lane.wantsConnecting());
            static_cast<void>(lane.push(Answer));
            m_sent.signal();
        });
        ::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr); // this thread alone
        ::raise(SIGSTOP);
        lane.transmit(64);
        ::raise(SIGUSR1); // the tracer takes the signal
        mainThread.join();
        lane.connected();
        lane.transmit(64);
        lane.transmit(64);
        return port.events == std::vector<_jack_port::Event> { { 0x90, 0x00, 0x7F } };
    }

    [[nodiscard]] int signalOfHalt() const
    {
        int status = 0;
        EXPECT_EQ(::waitpid(m_process, &status, 0), m_process);
        EXPECT_TRUE(WIFSTOPPED(status)) << status;
        return WIFSTOPPED(status) ? WSTOPSIG(status) : 0;
    }

    Pipe m_send;
    Pipe m_sent;
    const pid_t m_process;
    bool m_isAtEnd = false;
};

TEST(DestinationLane, a_first_packet_is_kept_wherever_it_meets_a_cycle)
{
    int places = 0;
    for (bool isInCycle = true; isInCycle; ++places) {
        HaltedCycle cycle;
        isInCycle = cycle.run(places);
        cycle.send();
        ASSERT_TRUE(cycle.finish()) << "after " << places << " instructions";
    }
    EXPECT_GT(places, 20) << "the cycle was not halted within";
}

TEST(DestinationLane, packets_for_a_destination_that_has_gone_are_dropped)
{
    _jack_port port;
    DestinationLane lane(1, "ZENTA:midi_5");
    lane.bind(&port);
    ASSERT_TRUE(lane.wantsConnecting());
    lane.disconnected();
    ASSERT_TRUE(lane.push(Answer));
    lane.transmit(64);
    ASSERT_TRUE(lane.wantsConnecting());
    lane.connected();
    lane.transmit(64);
    lane.transmit(64);
    EXPECT_TRUE(port.events.empty());
}

} // namespace
} // namespace kestrel::test
