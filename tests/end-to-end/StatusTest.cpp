#include "tests/end-to-end/KestrelctlBench.h"

#include <chrono>
#include <csignal>

namespace kestrel::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class Status : public KestrelctlBench { };

TEST_F(Status, says_what_the_running_program_does)
{
    studio.studio.assign({ "1", "A" });
    studio.studio.assign({ "6", "⌘S" });
    studio.startEverything();
    ASSERT_TRUE(studio.isAnswered());
    EXPECT_THAT(studio.keysAfter("press 1"), ElementsAre("down A"));
    const Outcome outcome = run({ "status" });
    EXPECT_EQ(outcome.code, 0);
    EXPECT_THAT(outcome.lines,
        ElementsAre(StartsWith("Kestrel " KESTREL_VERSION ", process "),
            StartsWith("Link         online since 20"), "Console      ZENTA, 5 pairs of ports",
            StartsWith("Heartbeats   "), "Workstation  Pro Tools runs", "In front     Pro Tools",
            "Keys         2 of 12 set, 1 press typed, 0 kept back", "Permission   given"));
    const Outcome json = run({ "status", "--json" });
    ASSERT_EQ(json.lines.size(), 1u);
    EXPECT_THAT(json.lines[0], HasSubstr("\"link\":\"online\""));
    EXPECT_THAT(json.lines[0], HasSubstr("\"keysSet\":2"));
}

TEST_F(Status, of_no_running_program_is_an_error)
{
    const Outcome outcome = run({ "status" });
    EXPECT_EQ(outcome.code, 1);
    EXPECT_THAT(outcome.lines, ElementsAre("kestrelctl: Kestrel is not running."));
}

TEST_F(Status, of_a_killed_program_is_an_error)
{
    studio.startKestrel();
    studio.kestrel->signal(SIGKILL);
    ASSERT_TRUE(studio.kestrel->wait(Timeout));
    EXPECT_THAT(run({ "status" }).lines, ElementsAre("kestrelctl: Kestrel is not running."));
}

TEST_F(Status, of_a_program_that_stands_still_is_an_error_after_five_seconds)
{
    studio.startKestrel();
    studio.kestrel->stop();
    const auto start = std::chrono::steady_clock::now();
    const Outcome outcome = run({ "status", "--json" });
    const auto passed = std::chrono::steady_clock::now() - start;
    studio.kestrel->resume();
    EXPECT_EQ(outcome.code, 1);
    EXPECT_THAT(outcome.lines,
        ElementsAre("kestrelctl: Kestrel runs, but it has not answered within 5 seconds."));
    EXPECT_LT(passed, std::chrono::seconds(10));
    EXPECT_EQ(run({ "status" }).code, 0) << "it goes on and answers again";
}

} // namespace
} // namespace kestrel::test
