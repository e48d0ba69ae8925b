#include "tests/end-to-end/RunningStudio.h"
#include "tools/stage/KeysDown.h"
#include "tools/stage/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <jack/jack.h>

#include <csignal>
#include <fstream>
#include <memory>

namespace kestrel::test {
namespace {

using stage::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// Expects the shortcut of key 1 to reach the workstation.
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
    EXPECT_THAT(studio.strayKeysAfter("release 1"), IsEmpty());
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

// This isolation protects the other tests from programs on the same machine.
TEST_F(Faults, a_workstation_outside_of_the_studio_is_not_seen)
{
    const stage::TemporaryFolder folder;
    const auto outsider = folder.path() / "Pro Tools";
    std::filesystem::create_symlink("/bin/sleep", outsider);
    const stage::ChildProcess outside({ outsider.string(), "60" });
    studio.startConsole();
    studio.startKestrel();
    EXPECT_FALSE(studio.isAnswered(milliseconds(13000)));
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

TEST_F(Faults, a_key_held_by_a_program_that_ends_while_the_display_stands_still_is_let_go_of)
{
    goOnline();
    EXPECT_THAT(studio.keysAfter("press 1"), ElementsAre("down A"));
    studio.studio.display().stop();
    EXPECT_EQ(studio.terminateKestrel(), 0) << "it must end without the display";
    studio.studio.display().resume();
    studio.startKestrel();
    EXPECT_TRUE(studio.allKeysComeUp());
}

TEST_F(Faults, a_display_that_stands_still_is_not_waited_for_without_end)
{
    studio.studio.display().stop();
    stage::ChildProcess kestrel(
        { "sh", "-c", "exec \"$0\" 2>&1", std::string(KESTREL_PROGRAMS) + "/kestrel" },
        studio.studio.environment());
    EXPECT_TRUE(kestrel.waitForLineWith("kestrel: Kestrel needs an X11 display, and \""
            + studio.studio.displayName() + "\" does not answer.",
        milliseconds(20000)));
    EXPECT_EQ(kestrel.wait(milliseconds(5000)), 1);
    studio.studio.display().resume();
}

// Returns the ports of the program on the MIDI server.
std::vector<std::string> kestrelPorts(const std::string& server)
{
    const std::unique_ptr<jack_client_t, decltype(&jack_client_close)> probe(
        jack_client_open("ports-probe",
            static_cast<jack_options_t>(JackNoStartServer | JackServerName), nullptr,
            server.c_str()),
        &jack_client_close);
    const std::unique_ptr<const char*, decltype(&jack_free)> names(
        jack_get_ports(probe.get(), "^inputMIDIReceiver Client:", nullptr, 0), &jack_free);
    std::vector<std::string> ports;
    for (const char** name = names.get(); name && *name; ++name)
        ports.emplace_back(*name);
    return ports;
}

class OrderlyEnd : public Faults, public testing::WithParamInterface<int> { };

TEST_P(OrderlyEnd, with_an_open_link_takes_it_down_lets_every_key_go_and_stores_the_assignments)
{
    goOnline();
    const std::string& server = studio.studio.jack().name();
    EXPECT_THAT(kestrelPorts(server), SizeIs(2));
    const auto defaults = studio.studio.configFolder() / "com.holvik.kestrel.plist";
    EXPECT_THAT(studio.keysAfter("press 1"), ElementsAre("down A"));
    std::filesystem::remove(defaults);
    studio.kestrel->signal(GetParam());
    EXPECT_EQ(studio.kestrel->wait(milliseconds(10000)), 0);
    EXPECT_THAT(studio.arrivingKeys(*studio.workstation), ElementsAre("up A"));
    EXPECT_THAT(stage::keysDown(studio.studio.displayName()), IsEmpty());
    EXPECT_TRUE(std::filesystem::exists(defaults));
    EXPECT_THAT(kestrelPorts(server), IsEmpty());
    EXPECT_FALSE(studio.console->wait(milliseconds(0))) << "the console goes on";
    studio.startKestrel();
    EXPECT_TRUE(studio.isAnswered()) << "and so does the next run";
}

INSTANTIATE_TEST_SUITE_P(BySignal, OrderlyEnd, testing::Values(SIGTERM, SIGINT, SIGHUP, SIGQUIT));

} // namespace
} // namespace kestrel::test
