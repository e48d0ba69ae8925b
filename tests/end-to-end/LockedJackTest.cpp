#include "tests/end-to-end/RunningStudio.h"
#include "tools/stage/JackMetadataStore.h"

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

namespace kestrel::test {
namespace {

using namespace std::chrono_literals;

// Gives this process and its children a shared memory of their own, so that the test does not lock
// out the JACK programs of the user. False where that is forbidden.
bool leaveSharedMemory()
{
    return ::unshare(CLONE_NEWNS) == 0
        && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
        && ::mount("tmpfs", "/dev/shm", "tmpfs", 0, nullptr) == 0;
}

bool comesToUse(pid_t process, const std::string& file)
{
    for (int look = 0; look < 1000; ++look) {
        std::ifstream maps("/proc/" + std::to_string(process) + "/maps");
        for (std::string line; std::getline(maps, line);) {
            if (line.find(file) != std::string::npos)
                return true;
        }
        std::this_thread::sleep_for(20ms);
    }
    return false;
}

TEST(LockedJack, by_a_client_that_was_killed_does_not_hold_up_the_end_and_is_cleared_away)
{
    ASSERT_TRUE(leaveSharedMemory()) << "this needs the right to make a mount namespace";
    const std::string store = stage::jackMetadataFolder().string();
    {
        RunningStudio studio;
        auto environment = studio.studio.environment();
        environment["LD_PRELOAD"] = KESTREL_DIE_WITH_LOCK;
        stage::ChildProcess victim({ "jack_lsp" }, environment);
        ASSERT_EQ(victim.wait(10s), 128 + SIGKILL);
        stage::ChildProcess next({ "jack_lsp" }, studio.studio.environment());
        ASSERT_FALSE(next.wait(1s)) << "JACK has no lock that a killed client could keep";

        studio.startWorkstation();
        studio.startKestrel();
        ASSERT_TRUE(comesToUse(studio.kestrel->pid(), store));
        EXPECT_EQ(studio.terminateKestrel(), 0);
        next.signal(SIGKILL);
        next.wait(5s);
    }
    EXPECT_FALSE(std::filesystem::exists(store)) << "the next server would not come up";
}

} // namespace
} // namespace kestrel::test
