#include "platform/linux/system/ProcProcessTable.h"
#include "tests/platform/linux/x11/X11Bench.h"

#include <fstream>
#include <regex>

namespace kestrel::test {

namespace {
using stage::ChildProcess;
using stage::milliseconds;

class StandIn : public X11Bench {
protected:
    std::unique_ptr<ChildProcess> run(std::vector<std::string> options)
    {
        options.insert(options.begin(), KESTREL_STAND_IN);
        return std::make_unique<ChildProcess>(options, server->environment());
    }
    // The key lines up to `last`, without their times.
    static std::vector<std::string> linesUpTo(ChildProcess& program, const std::string& last)
    {
        static const std::regex time(" t=[0-9]+$");
        std::vector<std::string> lines;
        while (lines.empty() || lines.back() != last) {
            const auto line
                = program.waitForLine([](std::string_view) { return true; }, milliseconds(5000));
            if (!line)
                break;
            lines.push_back(std::regex_replace(*line, time, ""));
        }
        return lines;
    }
};
} // namespace

TEST_F(StandIn, prints_every_key_event_as_it_arrives)
{
    const auto program = run({});
    ASSERT_TRUE(program->waitForLineWith("ready", milliseconds(10000)));
    pressShortcut(KeyS, Modifier::Command);
    pressShortcut(48, Modifier::Shift); // Tab
    releaseShortcut(KeyS, Modifier::Command);
    pressShortcut(53, 0); // Escape
    const std::vector<std::string> expected { "down Super_L none repeat=no",
        "down S Command repeat=no", "up Super_L Command repeat=no", "down Shift_L none repeat=no",
        "down Tab Shift repeat=no", "up Shift_L Shift repeat=no", "up S none repeat=no",
        "down Escape none repeat=no" };
    EXPECT_EQ(linesUpTo(*program, expected.back()), expected);
}

TEST_F(StandIn, tells_a_repeat_from_a_press)
{
    const auto program = run({});
    ASSERT_TRUE(program->waitForLineWith("ready", milliseconds(10000)));
    user->press(38);
    EXPECT_TRUE(program->waitForLineWith("down A none repeat=no", milliseconds(5000)));
    EXPECT_TRUE(program->waitForLineWith("down A none repeat=yes", milliseconds(5000)));
    user->release(38);
}

TEST_F(StandIn, is_the_front_application_named_Pro_Tools)
{
    KeyReceiver other(server->display(), "Other");
    bringToFront(other);
    const auto program = run({});
    ASSERT_TRUE(program->waitForLineWith("ready", milliseconds(10000)));
    EXPECT_TRUE(loop.runUntil([this] { return session->front.name() == "Pro Tools"; }));
    other.activate();
    EXPECT_TRUE(program->waitForLineWith("focus out", milliseconds(5000)));
    EXPECT_TRUE(loop.runUntil([this] { return session->front.name() == "Other"; }));
}

TEST_F(StandIn, plays_another_application_on_demand)
{
    const auto program = run({ "--class", "Editor", "--title", "Untitled" });
    ASSERT_TRUE(program->waitForLineWith("ready", milliseconds(10000)));
    EXPECT_TRUE(loop.runUntil([this] { return session->front.name() == "Editor"; }));
}

TEST_F(StandIn, obeys_commands_and_tells_that_X11_has_no_secure_input)
{
    const auto program = run({});
    ASSERT_TRUE(program->waitForLineWith("ready", milliseconds(10000)));
    program->writeLine("secure on\nbeep");
    EXPECT_TRUE(program->waitForLineWith("secure unavailable", milliseconds(5000)));
    EXPECT_TRUE(program->waitForLineWith("unknown command beep", milliseconds(5000)));
    program->closeInput();
    pressShortcut(KeyS, 0);
    EXPECT_TRUE(program->waitForLineWith("down S", milliseconds(5000))) << "it goes on";
}

TEST_F(StandIn, without_a_window_is_a_process_of_its_name)
{
    const auto program = run({ "--no-window" });
    ASSERT_TRUE(program->waitForLineWith("ready", milliseconds(10000)));
    std::string comm;
    std::getline(std::ifstream("/proc/" + std::to_string(program->pid()) + "/comm"), comm);
    EXPECT_EQ(comm, "Pro Tools");
    EXPECT_TRUE(ProcProcessTable().isRunning("Pro Tools"));
    EXPECT_EQ(user->words(user->root(), "_NET_CLIENT_LIST"),
        std::vector<std::uint32_t> { workstation->window() });
}

} // namespace kestrel::test
