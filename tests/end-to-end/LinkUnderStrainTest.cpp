#include "tests/end-to-end/RunningStudio.h"
#include "tests/platform/linux/midi/JackPeer.h"
#include "tools/stage/StatusIcon.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>

namespace kestrel::test {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;
using testing::ElementsAre;
using testing::IsEmpty;
using Face = stage::StatusIcon::Face;

// The real programs with a link that is put under strain.
class LinkUnderStrain : public testing::Test {
protected:
    LinkUnderStrain()
    {
        ::setenv("JACK_DEFAULT_SERVER", studio.studio.jack().name().c_str(), 1);
        studio.studio.assign({ "1", "A" });
    }

    [[nodiscard]] stage::StatusIcon icon() const
    {
        return { studio.studio.displayName(), studio.studio.environment() };
    }

    [[nodiscard]] bool comesTo(Face face) const
    {
        for (int look = 0; look < 1000; ++look) {
            if (icon().face() == face)
                return true;
            std::this_thread::sleep_for(20ms);
        }
        return false;
    }

    RunningStudio studio;
};

// The processor time that a process has taken so far.
std::chrono::milliseconds processorTime(pid_t process)
{
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    const std::string text(std::istreambuf_iterator<char>(file), {});
    std::istringstream fields(text.substr(text.rfind(')') + 1));
    std::string skipped;
    for (int i = 0; i < 11; ++i)
        fields >> skipped;
    long user = 0;
    long system = 0;
    fields >> user >> system;
    return std::chrono::milliseconds((user + system) * 1000 / ::sysconf(_SC_CLK_TCK));
}

TEST_F(LinkUnderStrain, ten_thousand_heartbeats_a_second_are_all_answered_with_the_panel_open)
{
    constexpr std::size_t Together = 100;
    constexpr std::size_t Sent = 300 * Together; // in three seconds
    studio.startWorkstation();
    JackPeer console("ZENTA");
    console.addPairs(5);
    studio.startKestrel();
    const std::vector<Bytes> heartbeats(Together, Bytes { 0x90, 0x00, 0x00 });
    while (console.connections("ZENTA:midi_5").empty())
        std::this_thread::sleep_for(20ms);
    icon().choosePanel();
    console.send("midi_5", { { 0x90, 0x00, 0x00 } });
    ASSERT_EQ(console.received("midi_5_in", 1, 5s).size(), 1u);

    const auto start = steady_clock::now();
    const auto before = processorTime(studio.kestrel->pid());
    for (std::size_t sent = 0; sent < Sent; sent += Together) {
        console.send("midi_5", heartbeats);
        std::this_thread::sleep_until(start + (sent / Together + 1) * 10ms);
    }
    const std::size_t intime = console.received("midi_5_in", 0, 0ms).size() - 1;
    EXPECT_EQ(console.received("midi_5_in", Sent + 1, 20s).size() - 1, Sent);
    const auto took = std::chrono::duration<double>(steady_clock::now() - start);
    const auto processor = processorTime(studio.kestrel->pid()) - before;
    RecordProperty("answered_before_the_last_was_sent", std::to_string(intime));
    RecordProperty("answers_a_second", std::to_string(static_cast<double>(Sent) / took.count()));
    RecordProperty("processor_milliseconds", std::to_string(processor.count()));
}

TEST_F(LinkUnderStrain, of_two_consoles_of_the_same_name_the_first_has_the_link)
{
    studio.startEverything();
    ASSERT_TRUE(studio.isAnswered());
    JackPeer second("ZENTA"); // JACK gives it another name
    second.addPairs(5);
    EXPECT_TRUE(studio.isAnswered());
    EXPECT_THAT(second.connections("ZENTA-01:midi_5"), IsEmpty());
    second.send("midi_5", { { 0xB0, 0x0F, 0x40, 0x2F, 0x40 } });
    EXPECT_THAT(studio.strayKeys(*studio.workstation), IsEmpty());
    EXPECT_THAT(studio.keysAfter("press 1"), ElementsAre("down A"));
    EXPECT_THAT(studio.keysAfter("release 1"), ElementsAre("up A"));
}

// Only monotonic clocks may drive the link.
TEST_F(LinkUnderStrain, a_wall_clock_that_is_set_back_or_forward_changes_nothing)
{
    const auto clock = (studio.studio.home() / "clock").string();
    const auto setClock = [&clock](long seconds) { std::ofstream(clock) << seconds; };
    auto environment = studio.studio.environment();
    environment["LD_PRELOAD"] += ":" KESTREL_WALL_CLOCK;
    environment["KESTREL_STAGE_CLOCK"] = clock;
    setClock(-400000000);
    stage::ChildProcess date({ "date", "+%Y" }, environment);
    const auto year = date.waitForLine([](std::string_view) { return true; }, 5s);
    ASSERT_TRUE(year);
    ASSERT_LT(std::stoi(*year), 2020) << "the clock of a program under test cannot be set";

    setClock(0);
    studio.startWorkstation();
    studio.startConsole();
    const stage::ChildProcess kestrel({ std::string(KESTREL_PROGRAMS) + "/kestrel" }, environment);
    ASSERT_TRUE(studio.isAnswered());
    for (const long seconds : { -86400L, 86400L }) {
        setClock(seconds);
        EXPECT_THAT(studio.keysAfter("press 1"), ElementsAre("down A"));
        EXPECT_THAT(studio.keysAfter("release 1"), ElementsAre("up A"));
        EXPECT_EQ(icon().face(), Face::Online);
        studio.console.reset();
        EXPECT_TRUE(comesTo(Face::Offline));
        studio.startConsole();
        EXPECT_TRUE(studio.isAnswered(5s)) << "ports settle for a quarter of a second";
        EXPECT_TRUE(comesTo(Face::Online));
    }
}

} // namespace
} // namespace kestrel::test
