#include "tests/end-to-end/RunningStudio.h"

#include <gtest/gtest.h>

#include <csignal>

namespace kestrel::test {
namespace {

using stage::milliseconds;

constexpr milliseconds EndTimeout { 10000 };

std::vector<int> endingSignals()
{
    std::vector<int> numbers { SIGHUP, SIGINT, SIGQUIT, SIGUSR1, SIGUSR2, SIGALRM, SIGTERM,
        SIGSTKFLT, SIGXCPU, SIGVTALRM, SIGPROF, SIGIO, SIGPWR };
    numbers.insert(numbers.end(), { SIGRTMIN, SIGRTMIN + 1, SIGRTMAX });
    return numbers;
}

class Ending : public testing::Test {
protected:
    [[nodiscard]] std::filesystem::path defaultsFile() const
    {
        return studio.studio.configFolder() / "com.holvik.kestrel.plist";
    }

    RunningStudio studio { stage::Studio::Options { .tray = false } };
};

TEST_F(Ending, by_any_signal_that_ends_programs_stores_the_assignments)
{
    for (const int number : endingSignals()) {
        studio.startKestrel();
        std::filesystem::remove(defaultsFile());
        studio.kestrel->signal(number);
        EXPECT_EQ(studio.kestrel->wait(EndTimeout), 0) << "signal " << number;
        EXPECT_TRUE(std::filesystem::exists(defaultsFile())) << "signal " << number;
    }
}

TEST_F(Ending, by_a_signal_during_the_start_is_orderly_or_leaves_nothing_to_restore)
{
    for (int delay = 0; delay < 400; delay += 20) {
        const auto kestrel = studio.studio.start("kestrel");
        EXPECT_FALSE(kestrel->wait(milliseconds(delay)));
        kestrel->signal(SIGQUIT);
        const auto code = kestrel->wait(EndTimeout);
        EXPECT_TRUE(code == 0 || code == 128 + SIGQUIT) << code.value_or(-1) << " at " << delay;
    }
    studio.startKestrel();
    EXPECT_EQ(studio.terminateKestrel(), 0);
}

TEST_F(Ending, by_signals_that_rain_is_orderly)
{
    studio.startKestrel();
    std::filesystem::remove(defaultsFile());
    for (int round = 0; round < 2000 && !studio.kestrel->wait(milliseconds(0)); ++round) {
        for (const int number : { SIGPIPE, SIGXFSZ, SIGCHLD, SIGWINCH, SIGURG, SIGCONT })
            studio.kestrel->signal(number);
    }
    EXPECT_FALSE(studio.kestrel->wait(milliseconds(100))) << "none of these ends it";
    for (int round = 0; round < 20; ++round) {
        for (const int number : endingSignals())
            studio.kestrel->signal(number);
    }
    EXPECT_EQ(studio.kestrel->wait(EndTimeout), 0);
    EXPECT_TRUE(std::filesystem::exists(defaultsFile()));
}

TEST_F(Ending, comes_also_while_the_main_thread_waits_for_a_display_that_has_stopped)
{
    studio.startKestrel();
    studio.studio.display().stop();
    // A second start on a display that answers makes the first one open its window on its own.
    const stage::PrivateXServer otherDisplay;
    auto environment = studio.studio.environment();
    environment["DISPLAY"] = otherDisplay.display();
    stage::ChildProcess second({ std::string(KESTREL_PROGRAMS) + "/kestrel" }, environment);
    EXPECT_FALSE(studio.kestrel->wait(milliseconds(3000)));
    studio.kestrel->signal(SIGTERM);
    EXPECT_EQ(studio.kestrel->wait(EndTimeout), 1);
    studio.studio.display().resume();
}

} // namespace
} // namespace kestrel::test
