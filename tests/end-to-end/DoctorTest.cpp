#include "tests/end-to-end/KestrelctlBench.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

namespace kestrel::test {
namespace {

namespace fs = std::filesystem;

// The files below the folder, with their content.
std::map<fs::path, std::string> contentOf(const fs::path& folder)
{
    std::map<fs::path, std::string> content;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file()) {
            std::ifstream file(entry.path());
            content[entry.path()] = { std::istreambuf_iterator(file), {} };
        }
    }
    return content;
}

class Doctor : public KestrelctlBench {
protected:
    [[nodiscard]] fs::path settings() const
    {
        return studio.studio.configFolder() / "com.holvik.kestrel.plist";
    }
    // The journal of the studio's display, ":7" for example.
    [[nodiscard]] fs::path journal() const
    {
        return studio.studio.home() / "runtime"
            / ("kestrel-held-keys-_3a" + studio.studio.displayName().substr(1));
    }
};

TEST_F(Doctor, finds_nothing_wrong_with_a_running_program_and_changes_nothing)
{
    studio.startEverything();
    ASSERT_TRUE(studio.isAnswered());
    expectWrong({});
    EXPECT_TRUE(studio.isAnswered()) << "the link goes on";
}

TEST_F(Doctor, finds_nothing_wrong_without_a_running_program_and_changes_nothing)
{
    studio.startWorkstation();
    studio.startConsole();
    ASSERT_TRUE(studio.console->waitForLineWith("ready", Timeout));
    const auto before = contentOf(studio.studio.home());
    expectWrong({});
    EXPECT_EQ(contentOf(studio.studio.home()), before);
}

TEST_F(Doctor, finds_a_JACK_server_that_is_missing)
{
    studio.startWorkstation();
    studio.studio.jack().kill();
    expectWrong({ "WRONG  MIDI        No JACK server answers. Start jackd as this user, or install "
                  "pipewire-jack and start Kestrel with pw-jack kestrel" });
}

TEST_F(Doctor, finds_a_console_with_four_pairs_of_ports)
{
    studio.startWorkstation();
    studio.startConsole({ "--pairs", "4" });
    ASSERT_TRUE(studio.console->waitForLineWith("ready", Timeout));
    expectWrong(
        { "WRONG  console     \"ZENTA\" has 4 sources and 4 destinations, and Kestrel needs "
          "5 pairs. The fifth pair carries the traffic." });
}

TEST_F(Doctor, finds_a_workstation_and_a_console_that_are_not_there)
{
    expectWrong({ "WRONG  console     There is no MIDI device \"ZENTA\". Check the console's "
                  "cable, its power "
                  "and its driver.",
        "WRONG  workstation No process has exactly the name \"Pro Tools\". Start it; the link "
        "opens only while it runs." });
}

TEST_F(Doctor, finds_a_window_of_another_class)
{
    studio.startConsole();
    ASSERT_TRUE(studio.console->waitForLineWith("ready", Timeout));
    studio.workstation = studio.studio.start("Pro Tools", { "--class", "pt.exe" });
    studio.waitUntilInFront("pt.exe");
    expectWrong({ "WRONG  window      The window of Pro Tools has the class \"pt.exe\", so no keys "
                  "reach it. It must be \"Pro Tools\"." });
}

TEST_F(Doctor, finds_damaged_defaults_and_the_copy_that_was_kept)
{
    studio.startWorkstation();
    studio.startConsole();
    ASSERT_TRUE(studio.console->waitForLineWith("ready", Timeout));
    std::ofstream(settings()) << "no property list";
    const auto before = wrongs();
    EXPECT_EQ(before.code, 1);
    ASSERT_EQ(before.lines.size(), 1u);
    EXPECT_TRUE(before.lines[0].starts_with(
        "WRONG  defaults    The assignments in " + settings().string() + " cannot be read: "));
    studio.studio.assign({ "1", "A" }); // writes the settings anew
    expectWrong({ "WRONG  copies      Kestrel could not read its assignments once and has kept a "
                  "copy: "
        + settings().string() + ".damaged. Load a saved set, and remove the copy." });
}

TEST_F(Doctor, finds_a_display_that_is_missing)
{
    const auto before = studio.studio.environment();
    stage::ChildProcess::Environment environment = before;
    environment["DISPLAY"] = ":9999";
    stage::ChildProcess doctor(
        { std::string(KESTREL_PROGRAMS) + "/kestrelctl", "doctor" }, environment);
    EXPECT_TRUE(doctor.waitForLineWith(
        "WRONG  display     The X11 display \":9999\" does not answer.", Timeout));
    EXPECT_EQ(doctor.wait(Timeout), 1);
}

TEST_F(Doctor, finds_that_there_is_no_display_and_says_nothing_about_its_session)
{
    stage::ChildProcess doctor(
        { "env", "-u", "DISPLAY", std::string(KESTREL_PROGRAMS) + "/kestrelctl", "doctor" },
        studio.studio.environment());
    EXPECT_EQ(doctor.wait(Timeout), 1);
    const auto lines = doctor.linesUntilQuiet(milliseconds(200));
    EXPECT_THAT(lines,
        testing::Contains("WRONG  display     Kestrel needs an X11 display, and DISPLAY is not "
                          "set. On Wayland, install and enable Xwayland."));
    EXPECT_THAT(lines, testing::Not(testing::Contains(testing::StartsWith("ok     session"))));
}

TEST_F(Doctor, finds_a_folder_that_the_start_cannot_use)
{
    studio.startWorkstation();
    studio.startConsole();
    ASSERT_TRUE(studio.console->waitForLineWith("ready", Timeout));
    const fs::path folder = studio.studio.home() / "runtime" / "kestrel";
    std::ofstream(folder).close();
    expectWrong({ "WRONG  kestrel     " + folder.string()
            + "/kestrel.socket: Not a directory. If kestrel and kestrelctl are of different "
              "versions, start Kestrel anew.",
        "WRONG  start       " + folder.string()
            + " is no folder. Kestrel cannot start. Remove or rename what is there." });
}

TEST_F(Doctor, finds_a_login_that_starts_a_program_that_is_not_there)
{
    studio.startWorkstation();
    studio.startConsole();
    ASSERT_TRUE(studio.console->waitForLineWith("ready", Timeout));
    fs::create_directories(studio.studio.configFolder() / "autostart");
    std::ofstream(studio.studio.configFolder() / "autostart/kestrel.desktop")
        << "[Desktop Entry]\nTryExec=/opt/gone/kestrel\n";
    expectWrong({ "WRONG  login       The login is to start /opt/gone/kestrel, which is not there. "
                  "Switch Launch at Login off and on in Kestrel's menu." });
}

// The JACK server stands still for a while when one of its clients is killed or stopped, so it may
// be missed too.
TEST_F(Doctor, finds_a_key_that_a_killed_run_has_left_down)
{
    studio.studio.assign({ "1", "A" });
    studio.startEverything();
    ASSERT_TRUE(studio.isAnswered());
    EXPECT_THAT(studio.keysAfter("press 1"), testing::ElementsAre("down A"));
    expectWrong({}); // the running program holds the key
    studio.kestrel->signal(SIGKILL);
    ASSERT_TRUE(studio.kestrel->wait(Timeout));
    ASSERT_TRUE(fs::exists(journal()));
    EXPECT_THAT(wrongs().lines,
        testing::Contains("WRONG  held keys   1 key may still be down since a run was killed. "
                          "Start Kestrel: it releases what was held."));
    stage::ChildProcess user({ "xdotool", "keyup", "a" }, studio.studio.environment());
    ASSERT_EQ(user.wait(Timeout), 0);
    ASSERT_TRUE(fs::exists(journal()));
    EXPECT_THAT(
        wrongs().lines, testing::Not(testing::Contains(testing::StartsWith("WRONG  held keys"))))
        << "the key has come up";
}

TEST_F(Doctor, finds_a_program_that_does_not_answer)
{
    studio.startEverything();
    ASSERT_TRUE(studio.isAnswered());
    studio.kestrel->stop();
    EXPECT_THAT(wrongs().lines,
        testing::Contains("WRONG  kestrel     Kestrel runs, but it has not answered within 5 "
                          "seconds. To end it: pkill -KILL -o -x kestrel"));
    studio.kestrel->resume();
    EXPECT_THAT(
        wrongs().lines, testing::Not(testing::Contains(testing::StartsWith("WRONG  kestrel"))));
}

} // namespace
} // namespace kestrel::test
