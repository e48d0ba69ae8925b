#include "tests/end-to-end/KestrelctlBench.h"
#include "tools/stage/Patience.h"

#include <csignal>
#include <fstream>
#include <iterator>
#include <sstream>

namespace kestrel::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class Activity : public KestrelctlBench {
protected:
    void goOnline()
    {
        studio.studio.assign({ "1", "A" });
        studio.startEverything();
        ASSERT_TRUE(studio.isAnswered());
    }
    // A script with packets for the panel, two a millisecond, in which key 1 is pressed. It ends
    // with the release of key 2.
    [[nodiscard]] std::string flood(int packets) const
    {
        std::string path = (studio.studio.home() / "flood").string();
        std::ofstream script(path);
        script << "expect listener 20000\nexpect answer 20000\n";
        for (int i = 0; i < packets; ++i) {
            script << "at " << i / 2000.0 << " send B0 18 " << i % 10 << "\n";
            if (i == 1000)
                script << "press 1\nrelease 1\n";
        }
        script << "release 2\n";
        return path;
    }
    static long kibibytesOf(const stage::ChildProcess& process)
    {
        std::ifstream status("/proc/" + std::to_string(process.pid()) + "/status");
        std::string word;
        while (status >> word && word != "VmRSS:") { }
        long size = 0;
        status >> size;
        return size;
    }
};

TEST_F(Activity, tells_what_was_before_and_what_comes)
{
    goOnline();
    EXPECT_THAT(studio.keysAfter("press 1"), ElementsAre("down A"));
    const auto activity = start({ "activity" });
    EXPECT_TRUE(activity->waitForLineWith("Link opened: ZENTA", Timeout));
    EXPECT_TRUE(activity->waitForLineWith("Heartbeat → answered", Timeout));
    EXPECT_TRUE(activity->waitForLineWith("Key 1 pressed → typed A", Timeout));
    EXPECT_THAT(studio.keysAfter("release 1"), ElementsAre("up A"));
    EXPECT_TRUE(activity->waitForLineWith("Key 1 released → let go of A", Timeout));
    EXPECT_EQ(studio.terminateKestrel(), 0);
    EXPECT_TRUE(activity->waitForLineWith("kestrelctl: Kestrel has ended.", Timeout));
    EXPECT_EQ(activity->wait(Timeout), 0);
}

TEST_F(Activity, tells_it_in_JSON)
{
    goOnline();
    const auto activity = start({ "activity", "--json" });
    EXPECT_THAT(studio.strayKeysAfter("press 2"), testing::IsEmpty());
    const auto line = activity->waitForLineWith("\"event\":\"packet\"", Timeout);
    ASSERT_TRUE(line);
    EXPECT_TRUE(line->starts_with("{") && line->ends_with("}")) << *line;
    const auto press = activity->waitForLineWith("\"what\":\"Key 2 pressed\"", Timeout);
    ASSERT_TRUE(press);
    EXPECT_THAT(*press, HasSubstr("\"outcome\":\"noShortcut\""));
}

TEST_F(Activity, a_follower_that_stands_still_delays_nothing_and_is_told_what_it_has_lost)
{
    constexpr int Packets = 12'000; // far more than the log and all buffers hold
    goOnline();
    const auto follower = start({ "activity" });
    ASSERT_TRUE(follower->waitForLineWith("Heartbeat → answered", Timeout));
    follower->stop();
    const long before = kibibytesOf(*studio.kestrel);
    studio.console->writeLine("quit");
    ASSERT_EQ(studio.console->wait(Timeout), 0);
    studio.startConsole({ flood(Packets) });
    ASSERT_TRUE(studio.workstation->waitForLineWith("down A", RunningStudio::LinkTimeout));
    EXPECT_TRUE(studio.workstation->waitForLineWith("up A", Timeout));
    EXPECT_EQ(run({ "status" }).code, 0) << "answers in the flood";
    EXPECT_TRUE(studio.console->waitForLineWith("sent B0 2F 01", Timeout))
        << "the end of the flood";
    EXPECT_LT(kibibytesOf(*studio.kestrel) - before, 4096);

    follower->resume();
    const auto lost = follower->waitForLineWith("events were lost", Timeout);
    ASSERT_TRUE(lost);
    EXPECT_GT(std::stol(lost->substr(lost->find_first_of("0123456789"))), Packets / 2) << *lost;
    EXPECT_THAT(*lost, HasSubstr("because this reader was too slow"));
    EXPECT_TRUE(follower->waitForLineWith("Key 2 released", Timeout)) << "what comes after that";
}

TEST_F(Activity, of_no_running_program_is_an_error)
{
    const Outcome outcome = run({ "activity" });
    EXPECT_EQ(outcome.code, 1);
    EXPECT_THAT(outcome.lines, ElementsAre("kestrelctl: Kestrel is not running."));
}

TEST_F(Activity, is_recorded_as_a_script_that_the_console_plays_again)
{
    goOnline();
    const std::string recording = (studio.studio.home() / "recording").string();
    const auto record = start({ "record", recording });
    EXPECT_THAT(studio.keysAfter("press 1"), ElementsAre("down A"));
    EXPECT_THAT(studio.keysAfter("release 1"), ElementsAre("up A"));
    const auto content = [&recording] {
        std::ifstream file(recording);
        return std::string(std::istreambuf_iterator(file), {});
    };
    ASSERT_TRUE(stage::comesTrue(
        [&] { return content().find("Key 1 released") != std::string::npos; }, Timeout));
    record->signal(SIGTERM);
    ASSERT_TRUE(record->wait(Timeout));

    studio.console->writeLine("quit");
    ASSERT_EQ(studio.console->wait(Timeout), 0);
    studio.startConsole({ recording });
    EXPECT_TRUE(studio.workstation->waitForLineWith("down A", RunningStudio::LinkTimeout));
    EXPECT_TRUE(studio.workstation->waitForLineWith("up A", Timeout));
}

TEST_F(Activity, that_cannot_be_recorded_is_an_error)
{
    studio.startKestrel();
    const std::string nowhere = (studio.studio.home() / "none" / "recording").string();
    const Outcome outcome = run({ "record", nowhere });
    EXPECT_EQ(outcome.code, 1);
    EXPECT_THAT(outcome.lines,
        ElementsAre("kestrelctl: cannot write " + nowhere + ": No such file or directory"));
}

} // namespace
} // namespace kestrel::test
