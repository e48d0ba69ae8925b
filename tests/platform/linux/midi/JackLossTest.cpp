#include "tests/platform/linux/midi/JackFixture.h"

#include <gmock/gmock.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>

namespace kestrel::test {
namespace {

// A server that does not wait for its clients, as people run it.
class JackLoss : public JackFixture {
public:
    JackLoss()
        : JackFixture(Cycles::Independent)
    {
        zenta.addPairs(5);
    }

    // True when the services have told of a loss that they had not told of at `before`.
    [[nodiscard]] bool isTold(int before)
    {
        return loop.runUntil([&] { return losses > before; }, Long);
    }

    JackPeer zenta { "ZENTA" };
};

// Returns the kernel's number of the thread that runs our process callback.
pid_t processThread()
{
    for (const auto& task : std::filesystem::directory_iterator("/proc/self/task")) {
        std::string name;
        std::getline(std::ifstream(task.path() / "comm"), name);
        if (name == "jack-process")
            return std::stoi(task.path().filename());
    }
    return 0;
}

// Holds up the thread, as a busy machine may.
void holdUp(pid_t thread)
{
    struct sigaction action { };
    action.sa_handler = [](int) { ::usleep(30000); };
    action.sa_flags = SA_RESTART;
    ::sigaction(SIGUSR2, &action, nullptr);
    ASSERT_EQ(::syscall(SYS_tgkill, ::getpid(), thread, SIGUSR2), 0);
}

TEST_F(JackLoss, cycles_that_the_process_callback_missed_are_told)
{
    connect();
    for (int i = 0; i < 10; ++i) {
        const int before = losses;
        holdUp(processThread());
        ASSERT_TRUE(isTold(before));
    }
}

// A key that is pressed after a loss must not be let go because of it.
TEST_F(JackLoss, a_loss_is_told_between_the_packets_before_it_and_those_after_it)
{
    connect();
    std::vector<std::size_t> deliveredBefore; // each loss: how many packets came before it
    services.setPacketsLost([&] { deliveredBefore.push_back(packets.size()); });
    // On a busy machine a cycle may be lost that holds a packet. Such a round shows nothing.
    int shown = 0;
    for (int round = 0; shown < 3 && round < 30; ++round) {
        const std::size_t before = packets.size();
        // The main loop does not run meanwhile, so one wake-up brings all of it.
        zenta.send("midi_5", { { 0xB0, 0x2F, 0x40 } });
        ASSERT_TRUE(zenta.hasSentAll("midi_5", Long));
        zenta.overrun(30ms);
        zenta.send("midi_5", { { 0xB0, 0x2F, 0x41 } });
        ASSERT_TRUE(zenta.hasSentAll("midi_5", Long));
        if (!loop.runUntil([&] { return packets.size() == before + 2; }, 2s))
            continue;
        EXPECT_THAT(deliveredBefore, testing::Contains(before + 1));
        ++shown;
    }
    EXPECT_EQ(shown, 3);
}

TEST_F(JackLoss, a_cycle_of_the_server_that_came_too_late_is_told)
{
    connect();
    const int before = losses;
    zenta.overrun(30ms);
    EXPECT_TRUE(isTold(before));
}

} // namespace
} // namespace kestrel::test
