#include "tests/platform/linux/midi/JackFixture.h"

#include <gmock/gmock.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

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

// A key that is pressed after a loss must not be let go because of it. A busy machine loses cycles
// that hold packets, so many carry one before the loss and after it. A round that lost all shows
// nothing.
TEST_F(JackLoss, a_loss_is_told_between_the_packets_before_it_and_those_after_it)
{
    const auto sendInCycles = [this](const Bytes& packet) {
        for (int i = 0; i < 20; ++i) {
            zenta.send("midi_5", { packet });
            if (!zenta.hasSentAll("midi_5", Long))
                return false;
        }
        return true;
    };
    const auto count = [this](const Bytes& packet) {
        return std::count(packets.begin(), packets.end(), packet);
    };
    connect();
    std::vector<std::ptrdiff_t> deliveredBefore; // each loss: how many packets came before it
    services.setPacketsLost([&] { deliveredBefore.push_back(std::ssize(packets)); });
    std::optional<std::ptrdiff_t> shown; // how many packets came before the loss
    for (std::uint8_t round = 0; !shown && round < 20; ++round) {
        const Bytes before { 0xB0, 0x2F, round }; // differ from round to round, and may come late
        const Bytes after { 0xB0, 0x30, round };
        packets.clear();
        deliveredBefore.clear();
        // The main loop does not run meanwhile, so one wake-up brings all of it.
        ASSERT_TRUE(sendInCycles(before));
        zenta.overrun(30ms);
        ASSERT_TRUE(sendInCycles(after));
        if (loop.runUntil([&] { return count(after) > 0; }, 2s) && count(before) > 0)
            shown = std::find(packets.begin(), packets.end(), after) - packets.begin();
    }
    ASSERT_TRUE(shown);
    EXPECT_THAT(deliveredBefore, testing::Contains(*shown));
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
