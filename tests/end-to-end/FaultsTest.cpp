#include "tests/end-to-end/RunningStudio.h"
#include "tools/stage/KeysDown.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <fstream>

namespace kestrel {
namespace {

using stage::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;

// The shortcut of key 1 still goes the whole way.
void expectKeyPasses(RunningStudio& studio)
{
    EXPECT_THAT(studio.keysAfter("press 1"), ElementsAre("down A"));
    EXPECT_THAT(studio.keysAfter("release 1"), ElementsAre("up A"));
    EXPECT_THAT(stage::keysDown(studio.studio.displayName()), IsEmpty());
}

class Faults : public testing::Test {
protected:
    Faults() { studio.studio.assign({ "1", "A" }); }

    void goOnline()
    {
        studio.startEverything();
        ASSERT_TRUE(studio.isAnswered());
    }

    RunningStudio studio;
};

TEST_F(Faults, a_midi_server_that_comes_later_is_found)
{
    studio.studio.jack().kill();
    studio.startWorkstation();
    studio.startKestrel();
    EXPECT_FALSE(studio.kestrel->wait(milliseconds(11000))) << "it must stay up without one";
    studio.studio.jack().start();
    studio.startConsole();
    EXPECT_TRUE(studio.isAnswered());
    expectKeyPasses(studio);
    EXPECT_EQ(studio.terminateKestrel(), 0);
}

TEST_F(Faults, the_link_recovers_from_a_killed_midi_server)
{
    goOnline();
    EXPECT_THAT(studio.keysAfter("press 1"), ElementsAre("down A"));
    studio.studio.jack().kill();
    EXPECT_THAT(studio.arrivingKeys(*studio.workstation), ElementsAre("up A"));
    EXPECT_EQ(studio.console->wait(milliseconds(10000)), 3);
    studio.studio.jack().start();
    studio.startConsole();
    EXPECT_TRUE(studio.isAnswered());
    EXPECT_THAT(studio.keysAfter("release 1"), IsEmpty());
    expectKeyPasses(studio);
    EXPECT_EQ(studio.terminateKestrel(), 0);
}

TEST_F(Faults, the_link_recovers_from_a_midi_server_that_stood_still)
{
    goOnline();
    studio.studio.jack().stop();
    EXPECT_FALSE(studio.kestrel->wait(milliseconds(10000)));
    studio.studio.jack().resume();
    EXPECT_TRUE(studio.isAnswered());
    expectKeyPasses(studio);
    EXPECT_EQ(studio.terminateKestrel(), 0);
}

TEST_F(Faults, it_ends_in_time_while_the_midi_server_stands_still)
{
    goOnline();
    studio.studio.jack().stop();
    EXPECT_EQ(studio.terminateKestrel(), 0);
    studio.studio.jack().resume();
}

TEST_F(Faults, a_console_that_goes_and_comes_back_is_connected_again)
{
    goOnline();
    EXPECT_THAT(studio.keysAfter("press 1"), ElementsAre("down A"));
    studio.console->signal(SIGTERM);
    EXPECT_EQ(studio.console->wait(milliseconds(5000)), 0);
    EXPECT_THAT(studio.arrivingKeys(*studio.workstation), ElementsAre("up A"))
        << "nobody is left to release the key";
    studio.startConsole();
    EXPECT_TRUE(studio.isAnswered());
    expectKeyPasses(studio);
}

TEST_F(Faults, a_console_with_four_pairs_of_ports_is_left_alone)
{
    studio.startWorkstation();
    studio.startConsole({ "--pairs", "4" });
    studio.startKestrel();
    EXPECT_FALSE(studio.isAnswered(milliseconds(13000)));
    studio.console.reset();
    studio.startConsole();
    EXPECT_TRUE(studio.isAnswered());
}

TEST_F(Faults, a_device_of_another_model_is_left_alone)
{
    studio.startWorkstation();
    studio.startConsole({ "--name", "ZENTA 2" });
    studio.startKestrel();
    EXPECT_FALSE(studio.isAnswered(milliseconds(13000)));
}

TEST_F(Faults, without_the_workstation_the_link_stays_closed)
{
    studio.startConsole();
    studio.startKestrel();
    EXPECT_FALSE(studio.isAnswered(milliseconds(13000)));
    studio.startWorkstation();
    EXPECT_TRUE(studio.isAnswered());
}

TEST_F(Faults, a_storm_of_heartbeats_is_survived)
{
    goOnline();
    const auto script = studio.studio.home() / "storm";
    {
        std::ofstream file(script);
        for (int i = 0; i < 20000; ++i)
            file << "send 90 00 00\n";
        file << "quit\n";
    }
    studio.console.reset();
    studio.startConsole({ script.string() });
    static_cast<void>(studio.console->waitForLineWith("end of output", milliseconds(120000)));
    EXPECT_EQ(studio.console->wait(milliseconds(5000)), 0);
    studio.startConsole();
    EXPECT_TRUE(studio.isAnswered());
    expectKeyPasses(studio);
}

TEST_F(Faults, keys_that_a_killed_program_held_are_let_go_by_the_next_start)
{
    goOnline();
    EXPECT_THAT(studio.keysAfter("press 1"), ElementsAre("down A"));
    studio.kestrel->signal(SIGKILL);
    EXPECT_EQ(studio.kestrel->wait(milliseconds(5000)), 128 + SIGKILL);
    EXPECT_FALSE(stage::keysDown(studio.studio.displayName()).empty());
    studio.startKestrel();
    EXPECT_TRUE(studio.workstation->waitForLineWith("up A", RunningStudio::StartTimeout));
    EXPECT_THAT(stage::keysDown(studio.studio.displayName()), IsEmpty());
}

class OrderlyEnd : public Faults, public testing::WithParamInterface<int> { };

TEST_P(OrderlyEnd, lets_every_key_go_and_stores_the_assignments)
{
    goOnline();
    const auto defaults = studio.studio.configFolder() / "com.holvik.kestrel.plist";
    EXPECT_THAT(studio.keysAfter("press 1"), ElementsAre("down A"));
    std::filesystem::remove(defaults);
    studio.kestrel->signal(GetParam());
    EXPECT_EQ(studio.kestrel->wait(milliseconds(10000)), 0);
    EXPECT_THAT(studio.arrivingKeys(*studio.workstation), ElementsAre("up A"));
    EXPECT_THAT(stage::keysDown(studio.studio.displayName()), IsEmpty());
    EXPECT_TRUE(std::filesystem::exists(defaults));
}

INSTANTIATE_TEST_SUITE_P(BySignal, OrderlyEnd, testing::Values(SIGTERM, SIGINT, SIGHUP));

} // namespace
} // namespace kestrel
