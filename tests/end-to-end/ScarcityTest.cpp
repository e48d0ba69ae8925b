#include "tests/end-to-end/RunningStudio.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>

namespace kestrel::test {
namespace {

using stage::milliseconds;
using testing::AnyOf;
using testing::Contains;
using testing::ElementsAre;
using testing::StartsWith;

constexpr milliseconds ScarceEndTimeout { 20000 };
constexpr milliseconds RunningTime { 2000 };

class Scarcity : public testing::Test {
protected:
    struct Outcome {
        bool isRunning = false; // still after RunningTime
        std::optional<int> exitCode;
        std::vector<std::string> errors;
    };

    // Runs the program under limits of the shell and without the descriptors of this test, and ends
    // it in order if it runs.
    [[nodiscard]] Outcome outcomeUnder(const std::string& limits) const
    {
        stage::ChildProcess kestrel(
            { "sh", "-c", "exec 2>&1 3>&- 4>&- 5>&- 6>&- 7>&- 8>&-; " + limits + "; exec \"$0\"",
                std::string(KESTREL_PROGRAMS) + "/kestrel" },
            studio.environment());
        Outcome outcome;
        outcome.isRunning = !kestrel.wait(RunningTime);
        kestrel.signal(SIGTERM);
        outcome.exitCode = kestrel.wait(ScarceEndTimeout);
        outcome.errors = kestrel.linesUntilQuiet(milliseconds(0));
        return outcome;
    }

    stage::Studio studio { KESTREL_PROGRAMS, stage::Studio::Options { .tray = false } };
};

TEST_F(Scarcity, of_descriptors_is_told_at_the_start)
{
    for (const int limit : { 6, 8, 16, 24, 40 }) {
        const Outcome outcome = outcomeUnder("ulimit -n " + std::to_string(limit));
        EXPECT_FALSE(outcome.isRunning) << limit;
        EXPECT_EQ(outcome.exitCode, 1) << limit;
        EXPECT_THAT(outcome.errors,
            ElementsAre("kestrel: Kestrel needs 40 open files, and the limit of this session "
                        "(ulimit -n) leaves fewer."))
            << limit;
    }
    const Outcome enough = outcomeUnder("ulimit -n 64");
    EXPECT_TRUE(enough.isRunning);
    EXPECT_EQ(enough.exitCode, 0);
}

TEST_F(Scarcity, of_descriptors_that_the_program_may_end_itself_is_none)
{
    const Outcome outcome = outcomeUnder("ulimit -S -n 16");
    EXPECT_TRUE(outcome.isRunning);
    EXPECT_EQ(outcome.exitCode, 0);
}

// Below these limits the dynamic linker fails, with exit code 127.
TEST_F(Scarcity, of_memory_ends_the_program_with_a_sentence)
{
    for (int limit = 110'000; limit <= 500'000; limit += 30'000) {
        const Outcome outcome = outcomeUnder("ulimit -v " + std::to_string(limit));
        EXPECT_THAT(outcome.exitCode.value_or(-1), AnyOf(0, 1)) << limit;
        if (outcome.exitCode == 1) {
            EXPECT_THAT(outcome.errors, Contains(StartsWith("kestrel: "))) << limit;
        }
    }
}

TEST_F(Scarcity, of_memory_while_it_runs_ends_it_with_a_sentence)
{
    for (int limit = 4'000; limit <= 40'000; limit += 4'000) {
        const Outcome outcome = outcomeUnder("ulimit -d " + std::to_string(limit));
        EXPECT_THAT(outcome.exitCode.value_or(-1), AnyOf(0, 1)) << limit;
    }
}

} // namespace
} // namespace kestrel::test
