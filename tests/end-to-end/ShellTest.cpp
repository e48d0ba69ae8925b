#include "tests/end-to-end/RunningStudio.h"
#include "tests/end-to-end/SetFile.h"
#include "tools/stage/KeysDown.h"
#include "tools/stage/Patience.h"
#include "tools/stage/Screen.h"
#include "tools/stage/StatusIcon.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <fstream>

namespace kestrel::test {
namespace {

using stage::milliseconds;
using Face = stage::StatusIcon::Face;
using testing::AnyOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr milliseconds DialogTimeout { 10000 };

bool becomesTrue(const std::function<bool()>& holds, milliseconds timeout = DialogTimeout)
{
    return stage::comesTrue(holds, timeout);
}

class Shell : public testing::Test {
protected:
    void startOnDesktop(bool tray)
    {
        studio = std::make_unique<RunningStudio>(stage::Studio::Options { .tray = tray });
    }

    // Runs a shell command on the desktop and returns its exit code.
    [[nodiscard]] std::optional<int> run(const std::string& command) const
    {
        return stage::ChildProcess({ "sh", "-c", command }, studio->studio.environment())
            .wait(DialogTimeout);
    }

    [[nodiscard]] bool isShown(const std::string& title) const
    {
        return run("xdotool search --onlyvisible --name '" + title + "'") == 0;
    }

    [[nodiscard]] Face face() const
    {
        return stage::StatusIcon(studio->studio.displayName(), studio->studio.environment()).face();
    }

    // Starts the program with one key assigned and no file on disk, and opens its setup window.
    void startWithSetupWindow()
    {
        startOnDesktop(true);
        studio->studio.assign({ "1", "A" });
        studio->startKestrel();
        ASSERT_TRUE(becomesTrue([this] { return face() != Face::None; })) << "no status item";
        std::filesystem::remove(defaultsFile()); // the program has read it
        ASSERT_EQ(studio->studio.start("kestrel")->wait(DialogTimeout), 0);
        ASSERT_TRUE(becomesTrue([this] { return isShown("User Assignable Setup"); }));
    }
    // Clicks at a place in the setup window, in pixels from its upper left corner, until `shows` is
    // true: the window manager may still be moving the window.
    void clickInSetupWindow(int x, int y, int clicks, const std::function<bool()>& shows) const
    {
        EXPECT_TRUE(becomesTrue([&] {
            clickOnce(x, y, clicks);
            return becomesTrue(shows, milliseconds(1000));
        }));
    }
    void clickOnce(int x, int y, int clicks) const
    {
        EXPECT_EQ(run("xdotool search --onlyvisible --name 'User Assignable Setup'"
                      " mousemove --window %1 "
                      + std::to_string(x) + " " + std::to_string(y) + " click --repeat "
                      + std::to_string(clicks) + " --delay 50 1"),
            0);
    }
    void expectOrderlyEnd()
    {
        EXPECT_EQ(studio->terminateKestrel(), 0);
        EXPECT_TRUE(std::filesystem::exists(defaultsFile()));
    }
    [[nodiscard]] std::filesystem::path defaultsFile() const
    {
        return studio->studio.configFolder() / "com.holvik.kestrel.plist";
    }

    // Counts the pixels with the colour of the rename box.
    [[nodiscard]] int paperPixels() const
    {
        const stage::Area whole { 0, 0, 1280, 800 };
        return stage::Screen(studio->studio.displayName()).count(whole, [](stage::Colour colour) {
            return colour.red == 0xF6 && colour.green == 0xF3 && colour.blue == 0xEC;
        });
    }

    [[nodiscard]] std::string writeSet(const std::string& name) const
    {
        return writeSetThatTypesB(studio->studio.home() / name);
    }

    std::unique_ptr<RunningStudio> studio;
};

TEST_F(Shell, the_status_item_shows_whether_the_console_is_alive)
{
    startOnDesktop(true);
    studio->startWorkstation();
    studio->startKestrel();
    ASSERT_TRUE(becomesTrue([this] { return face() != Face::None; })) << "no status item";
    EXPECT_EQ(face(), Face::Offline);
    studio->startConsole();
    EXPECT_TRUE(becomesTrue([this] { return face() == Face::Online; }, RunningStudio::LinkTimeout));
    studio->console->writeLine("heartbeat off");
    EXPECT_TRUE(becomesTrue([this] { return face() == Face::Offline; }, milliseconds(20000)));
    studio->console->writeLine("heartbeat on");
    EXPECT_TRUE(becomesTrue([this] { return face() == Face::Online; }, milliseconds(4000)));
    // The next heartbeat would show it online again, perhaps before the test has looked.
    studio->console->writeLine("heartbeat off");
    studio->workstation.reset();
    EXPECT_TRUE(becomesTrue([this] { return face() == Face::Offline; }, milliseconds(20000)));
}

TEST_F(Shell, a_tray_that_comes_later_gets_the_item)
{
    startOnDesktop(false);
    studio->startKestrel();
    EXPECT_FALSE(studio->kestrel->wait(milliseconds(2000))) << "it must work without a tray";
    studio->studio.display().startTray();
    EXPECT_TRUE(becomesTrue([this] { return face() != Face::None; }));
}

TEST_F(Shell, a_second_start_brings_up_the_setup_window)
{
    startOnDesktop(false);
    studio->startKestrel();
    const auto second = studio->studio.start("kestrel");
    EXPECT_EQ(second->wait(DialogTimeout), 0);
    EXPECT_TRUE(becomesTrue([this] { return isShown("User Assignable Setup"); }));
    EXPECT_FALSE(studio->kestrel->wait(milliseconds(0)));
}

TEST_F(Shell, closing_the_setup_window_leaves_the_status_item_in_its_place)
{
    startOnDesktop(true);
    studio->startKestrel();
    ASSERT_TRUE(becomesTrue([this] { return face() != Face::None; }));
    ASSERT_EQ(studio->studio.start("kestrel")->wait(DialogTimeout), 0);
    ASSERT_TRUE(becomesTrue([this] { return isShown("User Assignable Setup"); }));
    ASSERT_EQ(run("wmctrl -c 'User Assignable Setup'"), 0);
    ASSERT_TRUE(becomesTrue([this] { return !isShown("User Assignable Setup"); }));
    EXPECT_NE(face(), Face::None);
}

TEST_F(Shell, the_first_of_several_files_becomes_live_in_the_running_program)
{
    startOnDesktop(false);
    studio->studio.assign({ "1", "A" });
    const std::string first = writeSet("first.ZKCF");
    const auto other = studio->studio.home() / "other.ZKCF";
    std::ofstream(other) << "no set at all";
    studio->startEverything();
    ASSERT_TRUE(studio->isAnswered());
    EXPECT_THAT(studio->keysAfter("press 1"), ElementsAre("down A"));
    EXPECT_THAT(studio->keysAfter("release 1"), ElementsAre("up A"));

    EXPECT_EQ(studio->studio.start("kestrel", { other.string(), first })->wait(DialogTimeout), 0);
    EXPECT_THAT(studio->keysAfter("press 1"), ElementsAre("down A")) << "only the first counts";
    EXPECT_THAT(studio->keysAfter("release 1"), ElementsAre("up A"));

    EXPECT_EQ(studio->studio.start("kestrel", { first, other.string() })->wait(DialogTimeout), 0);
    EXPECT_THAT(studio->keysAfter("press 1"), ElementsAre("down B"));
    EXPECT_THAT(studio->keysAfter("release 1"), ElementsAre("up B"));

    EXPECT_EQ(studio->terminateKestrel(), 0);
    studio->startKestrel();
    ASSERT_TRUE(studio->isAnswered());
    EXPECT_THAT(studio->keysAfter("press 1"), ElementsAre("down B")) << "kept in the defaults";
    EXPECT_THAT(studio->keysAfter("release 1"), ElementsAre("up B"));
}

TEST_F(Shell, a_file_opened_while_a_key_is_held_leaves_no_key_down)
{
    startOnDesktop(false);
    studio->studio.assign({ "1", "A" });
    studio->startEverything();
    ASSERT_TRUE(studio->isAnswered());
    EXPECT_THAT(studio->keysAfter("press 1"), ElementsAre("down A"));
    EXPECT_EQ(studio->studio.start("kestrel", { writeSet("first.ZKCF") })->wait(DialogTimeout), 0);
    EXPECT_THAT(studio->strayKeysAfter("release 1"), AnyOf(IsEmpty(), ElementsAre("up A")));
    EXPECT_TRUE(studio->allKeysComeUp());
}

TEST_F(Shell, a_file_opens_the_program_when_it_does_not_run)
{
    startOnDesktop(false);
    const std::string file = writeSet("set.ZKCF");
    studio->startWorkstation();
    studio->startConsole();
    studio->startKestrel({ file });
    ASSERT_TRUE(studio->isAnswered());
    EXPECT_THAT(studio->keysAfter("press 1"), ElementsAre("down B"));
    EXPECT_THAT(studio->keysAfter("release 1"), ElementsAre("up B"));
}

TEST_F(Shell, a_killed_program_is_no_obstacle_to_the_next_start)
{
    startOnDesktop(false);
    studio->startKestrel();
    ASSERT_EQ(studio->studio.start("kestrel")->wait(DialogTimeout), 0);
    studio->kestrel->signal(SIGKILL);
    ASSERT_EQ(studio->kestrel->wait(DialogTimeout), 128 + SIGKILL);
    studio->startKestrel();
    EXPECT_EQ(studio->studio.start("kestrel")->wait(DialogTimeout), 0);
    EXPECT_FALSE(studio->kestrel->wait(milliseconds(0))) << "the new one is the first now";
}

TEST_F(Shell, without_a_display_it_says_so_and_ends)
{
    startOnDesktop(false);
    auto environment = studio->studio.environment();
    environment["DISPLAY"] = ":2147";
    stage::ChildProcess kestrel(
        { "sh", "-c", "exec \"$0\" 2>&1", std::string(KESTREL_PROGRAMS) + "/kestrel" },
        environment);
    EXPECT_TRUE(kestrel.waitForLineWith(
        "kestrel: Kestrel needs an X11 display, and \":2147\" does not answer.", DialogTimeout));
    EXPECT_EQ(kestrel.wait(DialogTimeout), 1);
}

TEST_F(Shell, a_signal_ends_it_in_order_while_the_about_box_is_open)
{
    startOnDesktop(true);
    studio->startKestrel();
    ASSERT_TRUE(becomesTrue([this] { return face() != Face::None; })) << "no status item";
    ASSERT_EQ(run("xdotool mousemove 1268 12 click 1"), 0);
    ASSERT_TRUE(
        becomesTrue([this] { return run("xdotool key a") == 0 && isShown("^ZENTA Kestrel$"); }));
    expectOrderlyEnd();
}

TEST_F(Shell, a_signal_ends_it_in_order_while_a_file_dialog_is_open)
{
    startWithSetupWindow();
    clickInSetupWindow(31, 18, 1, [this] { return isShown("Open Kestrel Console File"); }); // Load
    expectOrderlyEnd();
}

TEST_F(Shell, a_signal_ends_it_in_order_while_both_windows_are_open)
{
    startWithSetupWindow();
    ASSERT_EQ(run("xdotool mousemove 1268 12 click 1"), 0);
    ASSERT_TRUE(becomesTrue([this] { return run("xdotool key p") == 0 && isShown("Plug-in"); }));
    expectOrderlyEnd();
}

TEST_F(Shell, a_signal_ends_it_in_order_while_a_name_is_edited)
{
    startWithSetupWindow();
    clickInSetupWindow(75, 142, 2, [this] { return paperPixels() > 500; }); // the first key
    expectOrderlyEnd();
}

TEST_F(Shell, idle_it_takes_less_than_40_MiB_of_memory_of_its_own)
{
    startOnDesktop(true);
    studio->startKestrel();
    ASSERT_TRUE(becomesTrue([this] { return face() != Face::None; })) << "no status item";
    std::ifstream rollup("/proc/" + std::to_string(studio->kestrel->pid()) + "/smaps_rollup");
    long privateKibibytes = 0;
    for (std::string line; std::getline(rollup, line);) {
        if (line.starts_with("Private_Clean:") || line.starts_with("Private_Dirty:"))
            privateKibibytes += std::stol(line.substr(line.find(':') + 1));
    }
    EXPECT_GT(privateKibibytes, 1024);
    EXPECT_LT(privateKibibytes, 40 * 1024);
}

TEST_F(Shell, a_display_that_dies_ends_it_with_the_assignments_stored)
{
    startOnDesktop(false);
    const std::string file = writeSet("set.ZKCF");
    studio->startKestrel({ file });
    ASSERT_EQ(studio->studio.start("kestrel")->wait(DialogTimeout), 0);
    std::filesystem::remove(defaultsFile());
    studio->studio.display().kill();
    EXPECT_EQ(studio->kestrel->wait(DialogTimeout), 1) << "an error, but no crash";
    EXPECT_TRUE(std::filesystem::exists(defaultsFile()));
}

TEST_F(Shell, losing_only_the_toolkits_connection_lets_every_key_go)
{
    startOnDesktop(false);
    studio->studio.assign({ "1", "A" });
    studio->startEverything();
    ASSERT_TRUE(studio->isAnswered());
    // Opens a window behind the workstation. Killing its client closes the connection.
    ASSERT_EQ(studio->studio.start("kestrel")->wait(DialogTimeout), 0);
    ASSERT_TRUE(becomesTrue([this] { return isShown("User Assignable Setup"); }));
    ASSERT_TRUE(studio->workstation->waitForLineWith("focus out", DialogTimeout));
    EXPECT_EQ(run("wmctrl -a 'Pro Tools'"), 0);
    studio->waitUntilInFront("Pro Tools");
    EXPECT_THAT(studio->keysAfter("press 1"), ElementsAre("down A"));
    EXPECT_EQ(run("xkill -id $(xdotool search --name 'User Assignable Setup')"), 0);
    EXPECT_EQ(studio->kestrel->wait(DialogTimeout), 1);
    EXPECT_TRUE(studio->allKeysComeUp());
}

} // namespace
} // namespace kestrel::test
