#include "tests/end-to-end/RunningStudio.h"
#include "tests/platform/linux/midi/JackPeer.h"
#include "tools/stage/KeysDown.h"
#include "tools/stage/StatusIcon.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <memory>
#include <thread>

namespace kestrel::test {
namespace {

using namespace std::chrono_literals;
using stage::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* Traffic = "ZENTA:midi_5";
constexpr const char* Answers = "ZENTA:midi_5_in";

bool waitUntil(const std::function<bool()>& holds)
{
    for (int look = 0; look < 1000; ++look) {
        if (holds())
            return true;
        std::this_thread::sleep_for(20ms);
    }
    return false;
}

// The real programs among JACK clients that behave badly.
class MIDITrouble : public testing::Test {
protected:
    explicit MIDITrouble(const stage::Studio::Options& options = {})
        : studio(options)
    {
        ::setenv("JACK_DEFAULT_SERVER", studio.studio.jack().name().c_str(), 1);
        studio.studio.assign({ "1", "A" });
    }

    void goOnline()
    {
        studio.startEverything();
        ASSERT_TRUE(studio.isAnswered());
        other = std::make_unique<JackPeer>("other");
    }

    void expectKeyPasses()
    {
        EXPECT_THAT(studio.keysAfter("press 1"), ElementsAre("down A"));
        EXPECT_THAT(studio.keysAfter("release 1"), ElementsAre("up A"));
    }

    // Counts the clients that receive from the console.
    [[nodiscard]] std::size_t listeners() const { return other->connections(Traffic).size(); }

    RunningStudio studio;
    std::unique_ptr<JackPeer> other;
};

TEST_F(MIDITrouble, a_connection_that_a_patchbay_cuts_lets_the_keys_go_and_is_made_again)
{
    goOnline();
    for (int i = 0; i < 3; ++i) {
        EXPECT_THAT(studio.keysAfter("press 1"), ElementsAre("down A"));
        const auto ours = other->connections(Traffic);
        ASSERT_EQ(ours.size(), 1u);
        ASSERT_TRUE(other->disconnect(Traffic, ours[0]));
        EXPECT_THAT(studio.arrivingKeys(*studio.workstation), ElementsAre("up A"));
        EXPECT_TRUE(studio.isAnswered());
    }
    expectKeyPasses();
}

TEST_F(MIDITrouble, an_answer_that_a_patchbay_cuts_comes_back)
{
    goOnline();
    const auto ours = other->connections(Answers);
    ASSERT_EQ(ours.size(), 1u);
    ASSERT_TRUE(other->disconnect(ours[0], Answers));
    ASSERT_TRUE(waitUntil([&] { return other->connections(Answers) != ours; }));
    EXPECT_TRUE(studio.isAnswered());
}

TEST_F(MIDITrouble, two_programs_on_one_server_leave_each_other_alone)
{
    goOnline();
    const stage::ThrowAwaySettings settings;
    auto environment = settings.environment();
    environment.merge(studio.studio.environment());
    const stage::ChildProcess second({ std::string(KESTREL_PROGRAMS) + "/kestrel" }, environment);
    ASSERT_TRUE(waitUntil([this] { return listeners() == 2; }));
    const auto before = other->connections(Traffic);
    for (int look = 0; look < 150; ++look) {
        ASSERT_EQ(other->connections(Traffic), before) << "a link was built anew";
        std::this_thread::sleep_for(20ms);
    }
    EXPECT_TRUE(studio.isAnswered());
}

TEST_F(MIDITrouble, a_port_that_comes_and_goes_all_the_time_disturbs_neither_link_nor_held_keys)
{
    goOnline();
    EXPECT_THAT(studio.keysAfter("press 1"), ElementsAre("down A"));
    static_cast<void>(studio.console->linesUntilQuiet(0ms));
    for (int i = 0; i < 50; ++i) {
        other->addOutput("flapping");
        std::this_thread::sleep_for(50ms);
        other->remove("flapping");
        std::this_thread::sleep_for(50ms);
        ASSERT_EQ(listeners(), 1u);
    }
    EXPECT_THAT(studio.strayKeys(*studio.workstation), IsEmpty());
    int answers = 0;
    while (studio.console->waitForLineWith("answer 90 00 7F", 0ms))
        ++answers;
    EXPECT_GE(answers, 3) << "the console sends five heartbeats, later ones if it is busy";
    EXPECT_THAT(studio.keysAfter("release 1"), ElementsAre("up A"));
}

TEST_F(MIDITrouble, two_hundred_clients_that_come_and_go_disturb_neither_link_nor_held_keys)
{
    goOnline();
    EXPECT_THAT(studio.keysAfter("press 1"), ElementsAre("down A"));
    for (int i = 0; i < 200; ++i) {
        JackPeer passing("passing " + std::to_string(i));
        passing.addPairs(1);
        std::this_thread::sleep_for(10ms);
    }
    EXPECT_TRUE(studio.isAnswered());
    EXPECT_THAT(studio.strayKeys(*studio.workstation), IsEmpty());
    EXPECT_THAT(studio.keysAfter("release 1"), ElementsAre("up A"));
}

TEST_F(MIDITrouble, the_largest_message_of_jack_disturbs_nothing)
{
    goOnline();
    std::string message = "send F0 00 00 66 05 00 12";
    for (int size = 7; size < 32719; ++size)
        message += " 41";
    for (int i = 0; i < 20; ++i) {
        studio.console->writeLine(message + " F7");
        ASSERT_TRUE(studio.console->waitForLineWith("sent F0", 20s));
    }
    expectKeyPasses();
    EXPECT_TRUE(studio.isAnswered());
}

TEST_F(MIDITrouble, a_storm_of_heartbeats_with_the_panel_open_is_survived)
{
    goOnline();
    stage::StatusIcon(studio.studio.displayName(), studio.studio.environment()).choosePanel();
    const auto script = studio.studio.home() / "storm";
    {
        std::ofstream file(script);
        file << "expect answer 20000\n"; // the link stands again
        for (int i = 0; i < 30000; ++i)
            file << "send 90 00 00\n";
        file << "quit\n";
    }
    studio.console.reset();
    studio.startConsole({ script.string() });
    static_cast<void>(studio.console->waitForLineWith("end of output", 120s));
    EXPECT_EQ(studio.console->wait(5000ms), 0);
    studio.startConsole();
    EXPECT_TRUE(studio.isAnswered());
    studio.waitUntilInFront("Pro Tools");
    expectKeyPasses();
}

// A console whose ports change between the press of a key and its release.
class ChangingConsole : public MIDITrouble {
protected:
    void pressKey()
    {
        studio.startWorkstation();
        other = std::make_unique<JackPeer>("ZENTA");
        other->addPairs(5);
        studio.startKestrel();
        ASSERT_TRUE(waitUntil([this] { return listeners() == 1; }));
        other->send("midi_5", { { 0xB0, 0x0F, 0x40 }, { 0xB0, 0x2F, 0x40 } });
        EXPECT_THAT(studio.arrivingKeys(*studio.workstation), ElementsAre("down A"));
    }

    void expectRelease()
    {
        EXPECT_THAT(studio.arrivingKeys(*studio.workstation), ElementsAre("up A"));
        EXPECT_THAT(stage::keysDown(studio.studio.displayName()), IsEmpty());
    }
};

TEST_F(ChangingConsole, the_keys_are_let_go_when_its_port_is_removed)
{
    pressKey();
    other->remove("midi_5");
    expectRelease();
    other->addOutput("midi_5");
    EXPECT_TRUE(waitUntil([this] { return listeners() == 1; }));
}

TEST_F(ChangingConsole, the_keys_are_let_go_when_its_port_is_renamed)
{
    pressKey();
    other->rename("midi_5", "midi_6");
    expectRelease();
    EXPECT_TRUE(waitUntil([this] { return other->connections("ZENTA:midi_6").size() == 1; }));
}

TEST_F(ChangingConsole, the_keys_are_let_go_when_another_of_its_ports_is_removed)
{
    pressKey();
    other->remove("midi_1");
    expectRelease();
}

// A server that does not wait for clients that are late, as people run it.
class LateProgram : public MIDITrouble {
protected:
    LateProgram()
        : MIDITrouble({ .cycles = stage::PrivateJackServer::Cycles::Independent })
    {
    }

    // A busy machine can make the program late for a press too, so a lost one is made again. The
    // workstation tells which key has arrived, also when a loss lets go of it at once.
    [[nodiscard]] bool pressArrives()
    {
        for (int attempt = 0; attempt < 20; ++attempt) {
            const auto keys = studio.strayKeysAfter("press 1");
            if (std::find(keys.begin(), keys.end(), "down A") != keys.end())
                return true;
            static_cast<void>(studio.strayKeysAfter("release 1"));
        }
        return false;
    }
};

TEST_F(LateProgram, lets_go_of_a_key_whose_release_it_has_missed)
{
    goOnline();
    for (int i = 0; i < 10; ++i) {
        ASSERT_TRUE(pressArrives()) << "round " << i;
        studio.kestrel->stop();
        studio.console->writeLine("release 1");
        std::this_thread::sleep_for(30ms);
        studio.kestrel->resume();
        ASSERT_TRUE(studio.allKeysComeUp()) << "round " << i;
        static_cast<void>(studio.strayKeys(*studio.workstation));
    }
}

} // namespace
} // namespace kestrel::test
