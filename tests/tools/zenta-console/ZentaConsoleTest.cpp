#include "tests/platform/linux/midi/JackFixture.h"
#include "tools/stage/ChildProcess.h"
#include "tools/zenta-console/EditingScene.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace kestrel::test {
namespace {

using stage::ChildProcess;
using std::chrono::milliseconds;

constexpr milliseconds Soon { 20000 }; // a test that waits for it has failed

class ZentaConsole : public JackFixture {
public:
    // With standard error among the lines.
    static ChildProcess start(const std::string& arguments = "")
    {
        return ChildProcess({ "bash", "-c",
            std::string("exec \"" ZENTA_CONSOLE_PATH "\" ").append(arguments).append(" 2>&1") });
    }

    // The program is up, and all its ports are there.
    static void waitUntilReady(ChildProcess& console)
    {
        ASSERT_TRUE(console.waitForLineWith("ready", Soon));
    }

    static std::optional<std::string> lineAfter(ChildProcess& console, const std::string& command)
    {
        console.writeLine(command);
        return console.waitForLineWith("", Soon);
    }
};

// A file of commands that goes with the test.
class ScriptFile {
public:
    explicit ScriptFile(const std::string& commands) { std::ofstream(m_path) << commands; }
    ~ScriptFile() { std::filesystem::remove(m_path); }
    ScriptFile(const ScriptFile&) = delete;
    ScriptFile& operator=(const ScriptFile&) = delete;

    // For a command line.
    [[nodiscard]] std::string quoted() const { return "\"" + m_path.string() + "\""; }
    [[nodiscard]] std::string path() const { return m_path.string(); }

private:
    const std::filesystem::path m_path = std::filesystem::temp_directory_path()
        / ("zenta-console-script-" + std::to_string(::getpid()));
};

// A terminal whose other side has gone. Reading it fails.
class Terminal {
public:
    Terminal()
        : m_descriptor(::posix_openpt(O_RDWR | O_NOCTTY))
    {
        ::unlockpt(m_descriptor);
        ::close(::open(::ptsname(m_descriptor), O_RDWR | O_NOCTTY));
    }
    ~Terminal() { ::close(m_descriptor); }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    [[nodiscard]] int descriptor() const { return m_descriptor; }

private:
    const int m_descriptor;
};

using Packets = std::vector<Bytes>;

TEST_F(ZentaConsole, is_a_device_of_five_pairs_and_the_fifth_carries_both_ways)
{
    ChildProcess console = start();
    waitUntilReady(console);
    console.writeLine("heartbeat off");
    console.writeLine("send 01"); // once it is echoed there are no more beats
    ASSERT_TRUE(console.waitForLineWith("sent 01", Soon));
    const Link link = connect();
    ASSERT_EQ(device("ZENTA")->entities.size(), 5u);
    EXPECT_EQ(lineAfter(console, "press 7"), "sent B0 0F 40");
    EXPECT_EQ(lineAfter(console, "send B0 0C 1C 2C 41"), "sent B0 2F 46");
    ASSERT_TRUE(waitForPackets(3));
    EXPECT_EQ(packets,
        (Packets { { 0xB0, 0x0F, 0x40 }, { 0xB0, 0x2F, 0x46 }, { 0xB0, 0x0C, 0x1C, 0x2C, 0x41 } }));
    ASSERT_TRUE(send(link, { 0x90, 0x00, 0x7F }));
    EXPECT_TRUE(console.waitForLineWith("answer 90 00 7F at ", Soon));
}

TEST_F(ZentaConsole, beats_every_second_and_is_content_with_an_answer)
{
    ChildProcess console = start();
    waitUntilReady(console);
    const auto start = PollMainLoop::Clock::now();
    const Link link = connect();
    console.writeLine("expect answer 20000");
    console.writeLine("quit");
    ASSERT_TRUE(waitForPackets(4));
    EXPECT_EQ(packets, Packets(4, Bytes { 0x90, 0x00, 0x00 }));
    EXPECT_GT(PollMainLoop::Clock::now() - start, 2700ms);
    ASSERT_TRUE(send(link, { 0x90, 0x00, 0x7F }));
    EXPECT_TRUE(console.waitForLineWith("answer 90 00 7F at ", Soon));
    EXPECT_EQ(console.wait(Soon), 0);
}

TEST_F(ZentaConsole, says_why_an_expectation_failed_and_ends)
{
    ChildProcess console = start();
    waitUntilReady(console);
    console.writeLine("# nobody is connected");
    console.writeLine("expect answer 50");
    EXPECT_EQ(console.waitForLineWith("", Soon),
        "zenta-console: line 2: expect answer 50: no answer 90 00 7F came in time");
    EXPECT_EQ(console.wait(Soon), 1);
}

TEST_F(ZentaConsole, another_packet_than_the_answer_does_not_meet_the_expectation)
{
    ChildProcess console = start();
    waitUntilReady(console);
    const Link link = connect();
    console.writeLine("expect answer 4000");
    ASSERT_TRUE(send(link, { 0x90, 0x00, 0x7E }));
    EXPECT_TRUE(console.waitForLineWith("answer 90 00 7E at ", Soon));
    EXPECT_EQ(console.wait(Soon), 1);
}

TEST_F(ZentaConsole, names_the_line_of_a_malformed_command_and_sends_nothing_after_it)
{
    ChildProcess console = start();
    waitUntilReady(console);
    console.writeLine("knob 1 5");
    console.writeLine("knob 9 5");
    console.writeLine("knob 2 5");
    EXPECT_EQ(console.waitForLineWith("", Soon), "sent B0 18 05");
    EXPECT_EQ(console.waitForLineWith("", Soon),
        "zenta-console: line 2, column 6: knob 9 5: expected a knob, 1..4, and a value, 0..127");
    EXPECT_EQ(console.wait(Soon), 2);
    EXPECT_FALSE(console.waitForLineWith("B0 19", Soon));
}

TEST_F(ZentaConsole, follows_a_script_from_a_file_and_sends_all_before_it_quits)
{
    const ScriptFile script("expect answer 20000\nheartbeat off\nlamp 3 on\ndisplay 2 Gain\nquit");
    ChildProcess console = start(script.quoted());
    waitUntilReady(console);
    ASSERT_TRUE(send(connect(), { 0x90, 0x00, 0x7F })); // now it may go on
    EXPECT_EQ(console.wait(Soon), 0);
    const Bytes display { 0xF0, 0x00, 0x00, 0x66, 0x05, 0x00, 0x12, 2, 'G', 'a', 'i', 'n', ' ', ' ',
        ' ', ' ', ' ', ' ', 0xF7 };
    ASSERT_TRUE(loop.runUntil([&] { return !packets.empty() && packets.back() == display; }, Soon));
    std::erase(packets, Bytes { 0x90, 0x00, 0x00 });
    EXPECT_EQ(packets, (Packets { { 0xB0, 0x0C, 0x1C }, { 0xB0, 0x2C, 0x43 }, display }));
}

// The n-th packet comes n times the step after the first one. A busy machine delays a few of them.
std::string evenScript(int packets, int stepMs)
{
    std::string script = "heartbeat off\nexpect listener 20000\n";
    for (int n = 0; n < packets; ++n) {
        const int time = 500 + n * stepMs;
        script += "at " + std::to_string(time / 1000) + "."
            + std::to_string(1000 + time % 1000).substr(1) + " send B0 18 " + (n % 2 ? "01" : "02")
            + "\n";
    }
    return script;
}

milliseconds medianDistance(
    const std::vector<PollMainLoop::Clock::time_point>& arrivals, std::chrono::microseconds step)
{
    std::vector<PollMainLoop::Clock::duration> distances;
    for (std::size_t n = 0; n < arrivals.size(); ++n)
        distances.push_back(arrivals[n] - arrivals[0] - step * n);
    std::sort(distances.begin(), distances.end());
    const auto median = distances[distances.size() / 2];
    for (auto& distance : distances)
        distance = std::chrono::abs(distance - median);
    std::sort(distances.begin(), distances.end());
    return std::chrono::ceil<milliseconds>(distances[distances.size() / 2]);
}

TEST_F(ZentaConsole, sends_a_recording_at_its_times)
{
    const ScriptFile script(evenScript(60, 30));
    ChildProcess console = start(script.quoted());
    waitUntilReady(console);
    connect();
    ASSERT_TRUE(waitForPackets(60));
    EXPECT_LE(medianDistance(arrivals, 30ms), 10ms);
}

TEST_F(ZentaConsole, plays_faster_on_demand)
{
    const ScriptFile script(evenScript(60, 60));
    ChildProcess console = start("--speed 4 " + script.quoted());
    waitUntilReady(console);
    connect();
    ASSERT_TRUE(waitForPackets(60));
    EXPECT_LE(medianDistance(arrivals, 15ms), 10ms);
}

TEST_F(ZentaConsole, begins_again_when_told_to_loop)
{
    const ScriptFile script("heartbeat off\nexpect listener 20000\nsend 01\nat 0.3 send 02\n");
    ChildProcess console = start("--loop " + script.quoted());
    waitUntilReady(console);
    const auto start = PollMainLoop::Clock::now();
    connect();
    ASSERT_TRUE(waitForPackets(6));
    EXPECT_GE(PollMainLoop::Clock::now() - start, 900ms);
    packets.resize(6);
    EXPECT_EQ(packets, (Packets { { 1 }, { 2 }, { 1 }, { 2 }, { 1 }, { 2 } }));
}

TEST_F(ZentaConsole, without_a_listener_the_expectation_fails)
{
    const ScriptFile script("expect listener 50\nquit\n");
    ChildProcess console = start(script.quoted());
    waitUntilReady(console);
    EXPECT_EQ(console.waitForLineWith("", Soon),
        "zenta-console: line 1: expect listener 50: no client was connected in time");
    EXPECT_EQ(console.wait(Soon), 1);
}

TEST_F(ZentaConsole, a_file_with_a_mistake_anywhere_sends_nothing_and_says_where_it_is)
{
    const ScriptFile script("send 01\n\nat 1 knob 9 5\n");
    ChildProcess console = start(script.quoted());
    EXPECT_EQ(console.waitForLineWith("", Soon),
        "zenta-console: " + script.path()
            + ": line 3, column 11: at 1 knob 9 5: expected a knob, 1..4, and a value, 0..127");
    EXPECT_EQ(console.wait(Soon), 2);
    ChildProcess piped = start("--loop");
    EXPECT_EQ(piped.waitForLineWith("", Soon), "zenta-console: --loop needs a script in a file");
    EXPECT_EQ(piped.wait(Soon), 2);
}

TEST_F(ZentaConsole, plays_the_editing_scene_and_goes_on_with_its_script)
{
    ChildProcess console = start();
    waitUntilReady(console);
    console.writeLine("heartbeat off");
    console.writeLine("send 01"); // once it is echoed there are no more beats
    ASSERT_TRUE(console.waitForLineWith("sent 01", Soon));
    connect();
    console.writeLine("show");
    console.writeLine("lamp 0 on");
    EXPECT_TRUE(console.waitForLineWith("shown", Soon));
    EXPECT_EQ(console.waitForLineWith("", Soon), "sent B0 0C 1C");
    ASSERT_TRUE(
        loop.runUntil([&] { return !packets.empty() && packets.back().back() == 0x40; }, Soon));
    Packets scene;
    for (const auto& command : console::editingScene()) {
        if (const auto* send = std::get_if<console::Send>(&command))
            scene.insert(scene.end(), send->packets.begin(), send->packets.end());
    }
    scene.insert(scene.end(), { { 0xB0, 0x0C, 0x1C }, { 0xB0, 0x2C, 0x40 } });
    EXPECT_EQ(packets, scene);
}

TEST_F(ZentaConsole, goes_on_beating_after_the_last_command_until_it_is_told_to_stop)
{
    ChildProcess console = start();
    waitUntilReady(console);
    connect();
    console.closeInput();
    ASSERT_TRUE(waitForPackets(2));
    console.signal(SIGTERM);
    EXPECT_EQ(console.wait(Soon), 0);
}

TEST_F(ZentaConsole, has_as_many_pairs_and_the_name_it_is_given)
{
    ChildProcess console = start("--name Other --pairs 4");
    EXPECT_TRUE(console.waitForLineWith("ready Other: 4 pairs, traffic on midi_4", Soon));
    MIDIClient client = 0;
    ASSERT_TRUE(create(client));
    ASSERT_TRUE(device("Other"));
    EXPECT_EQ(device("Other")->entities.size(), 4u);
    EXPECT_FALSE(device("ZENTA"));
}

TEST_F(ZentaConsole, pairs_the_ports_of_one_number_also_beyond_nine)
{
    ChildProcess console = start("--pairs 12");
    waitUntilReady(console);
    MIDIClient client = 0;
    MIDIPort output = 0;
    ASSERT_TRUE(create(client));
    ASSERT_TRUE(take(services.createOutputPort(client, "out"), output));
    const auto found = device("ZENTA");
    ASSERT_TRUE(found);
    ASSERT_EQ(found->entities.size(), 12u);
    const Bytes packet { 0x90, 0x00, 0x7F };
    ASSERT_TRUE(services.send(output, found->entities[9].destinations[0], { 0, packet }));
    EXPECT_TRUE(console.waitForLineWith("stray midi_10 90 00 7F at ", Soon));
    ASSERT_TRUE(services.send(output, found->entities[4].destinations[0], { 0, packet }));
    EXPECT_TRUE(console.waitForLineWith("answer 90 00 7F at ", Soon));
}

TEST_F(ZentaConsole, says_that_the_server_has_gone)
{
    ChildProcess console = start();
    waitUntilReady(console);
    server.kill();
    EXPECT_EQ(console.waitForLineWith("", Soon), "zenta-console: the JACK server has gone");
    EXPECT_EQ(console.wait(Soon), 3);
}

TEST_F(ZentaConsole, says_that_there_is_no_server_or_its_name_is_taken)
{
    ChildProcess first = start();
    waitUntilReady(first);
    ChildProcess second = start();
    EXPECT_EQ(second.waitForLineWith("", Soon),
        "zenta-console: another JACK client is already called \"ZENTA\"");
    EXPECT_EQ(second.wait(Soon), 3);
    ::setenv("JACK_DEFAULT_SERVER", "kestrel-no-such-server", 1);
    ChildProcess third = start();
    EXPECT_EQ(third.waitForLineWith("", Soon), "zenta-console: no JACK server answers");
    EXPECT_EQ(third.wait(Soon), 3);
}

TEST_F(ZentaConsole, refuses_options_and_files_that_do_not_exist)
{
    EXPECT_EQ(start("--no-such-option").wait(Soon), 2);
    EXPECT_EQ(start("--pairs 0").wait(Soon), 2);
    ChildProcess console = start("/no/such/script");
    EXPECT_EQ(console.waitForLineWith("", Soon),
        "zenta-console: /no/such/script: cannot read the script: No such file or directory");
    EXPECT_EQ(console.wait(Soon), 2);
}

TEST_F(ZentaConsole, says_why_a_script_cannot_be_read_and_sends_nothing)
{
    ChildProcess folder = start("/tmp");
    EXPECT_EQ(folder.waitForLineWith("", Soon),
        "zenta-console: /tmp: cannot read the script: Is a directory");
    EXPECT_EQ(folder.wait(Soon), 2);
    ChildProcess input = start("</tmp");
    EXPECT_EQ(
        input.waitForLineWith("", Soon), "zenta-console: cannot read the script: Is a directory");
    EXPECT_EQ(input.wait(Soon), 2);
    ChildProcess unmapped = start("/proc/self/mem"); // a file whose first byte cannot be read
    EXPECT_EQ(unmapped.waitForLineWith("", Soon),
        "zenta-console: /proc/self/mem: cannot read the script: Input/output error");
    EXPECT_EQ(unmapped.wait(Soon), 2);
}

TEST_F(ZentaConsole, says_that_its_terminal_has_gone)
{
    const Terminal terminal;
    ChildProcess console = start("<&" + std::to_string(terminal.descriptor()));
    EXPECT_EQ(console.waitForLineWith("cannot", Soon),
        "zenta-console: cannot read the script: Input/output error");
    EXPECT_EQ(console.wait(Soon), 2);
}

} // namespace
} // namespace kestrel::test
