#include "tests/tools/kestrelctl/doctor/SoundFacts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace kestrel::test {
namespace {

using ctl::DoctorFacts;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using Library = SystemFacts::Library;
using Outcome = ctl::RunningKestrel::Outcome;
using Session = SystemFacts::Session;

using Lines = std::vector<std::pair<std::string, std::string>>; // names and texts

Lines lines(const DoctorFacts& facts, bool wrong)
{
    Lines found;
    for (const ctl::NamedCheck& check : ctl::checks()) {
        const auto finding = check.check(facts);
        if (finding && finding->isWrong == wrong)
            found.emplace_back(check.name, finding->text);
    }
    return found;
}

Lines wrongs(const DoctorFacts& facts)
{
    return lines(facts, true);
}

// What the check of this name says. Empty when it does not apply.
std::string said(const DoctorFacts& facts, std::string_view name)
{
    for (const ctl::NamedCheck& check : ctl::checks()) {
        if (name == check.name) {
            const auto finding = check.check(facts);
            return finding ? (finding->isWrong ? "WRONG " : "ok ") + finding->text : "";
        }
    }
    return "there is no such check";
}

TEST(DoctorChecks, find_nothing_wrong_in_a_sound_studio)
{
    EXPECT_THAT(wrongs(soundFacts()), IsEmpty());
    EXPECT_THAT(lines(soundFacts(), false),
        ElementsAre(Pair("kestrel", "Kestrel 1.2.3 runs and answers."),
            Pair("start", "The folder of the session can be used."),
            Pair("display", "The X11 display \":0\" answers."),
            Pair("session", "This is an X11 session."),
            Pair("tray", "There is a place for the icon."), Pair("MIDI", "JACK answers."),
            Pair("library", "Programs use the library of JACK."),
            Pair("console", "\"ZENTA\" has 5 pairs of ports."),
            Pair("link", "The console is online."), Pair("workstation", "Pro Tools runs."),
            Pair("window", "A window has the class \"Pro Tools\"."),
            Pair("front", "Pro Tools is in front."), Pair("permission", "Kestrel may post keys."),
            Pair("held keys", "No run has left a key down."),
            Pair("defaults", "The assignments can be read."),
            Pair("copies", "No damaged copy was kept aside."),
            Pair("login", "Kestrel does not start at login."),
            Pair("file type", "A double click opens sets in Kestrel.")));
}

TEST(DoctorChecks, need_no_running_program)
{
    DoctorFacts facts = soundFacts();
    facts.kestrel = Outcome::NotRunning;
    facts.status.reset();
    facts.system.midi.libraryOfKestrel.reset();
    EXPECT_THAT(wrongs(facts), IsEmpty());
    EXPECT_EQ(said(facts, "kestrel"), "ok Kestrel is not running.");
    for (const char* name : { "link", "permission" })
        EXPECT_EQ(said(facts, name), "");
}

TEST(DoctorChecks, ask_nothing_of_a_mac_that_only_linux_has)
{
    EXPECT_THAT(wrongs(soundMac()), IsEmpty());
    for (const char* name : { "display", "session", "tray", "library", "PipeWire", "window",
             "held keys", "login", "file type" })
        EXPECT_EQ(said(soundMac(), name), "") << name;
    EXPECT_EQ(said(soundMac(), "driver"), "ok The console's driver is installed.");
    EXPECT_EQ(said(soundMac(), "MIDI"), "ok CoreMIDI answers.");
}

TEST(DoctorChecks, find_a_kestrel_that_does_not_answer)
{
    DoctorFacts facts = soundFacts();
    facts.status.reset();
    facts.kestrel = Outcome::NoAnswer;
    facts.kestrelProblem = "It is silent.";
    EXPECT_EQ(said(facts, "kestrel"), "WRONG It is silent. To end it: pkill -KILL -o -x kestrel");
    facts.system.display.session = Session::MacOS;
    EXPECT_EQ(said(facts, "kestrel"),
        "WRONG It is silent. To end it, choose Force Quit in the Apple menu.");
    facts.kestrel = Outcome::Refused;
    facts.kestrelProblem = "No.";
    EXPECT_EQ(said(facts, "kestrel"),
        "WRONG No. If kestrel and kestrelctl are of different versions, start Kestrel anew.");
    facts.kestrel = Outcome::Answered;
    EXPECT_EQ(said(facts, "kestrel"),
        "WRONG Kestrel has answered something else than its status. Start Kestrel anew.");
}

TEST(DoctorChecks, find_a_place_that_a_start_cannot_claim)
{
    DoctorFacts facts = soundFacts();
    facts.system.files.sessionProblem = "/run/user/1/kestrel is no folder.";
    EXPECT_THAT(wrongs(facts),
        ElementsAre(Pair("start",
            "/run/user/1/kestrel is no folder. Kestrel cannot start. Remove or rename what is "
            "there.")));
}

TEST(DoctorChecks, find_a_display_that_is_missing_silent_or_not_used)
{
    DoctorFacts facts = soundFacts();
    facts.system.display.qtPlugin = "wayland-egl";
    EXPECT_EQ(said(facts, "display"),
        "WRONG QT_QPA_PLATFORM is \"wayland-egl\". Start Kestrel with QT_QPA_PLATFORM=xcb kestrel");
    facts.system.display.answers = false;
    EXPECT_EQ(said(facts, "display"),
        "WRONG The X11 display \":0\" does not answer. On Wayland, install and enable Xwayland.");
    facts.system.display.name.clear();
    EXPECT_EQ(said(facts, "display"),
        "WRONG Kestrel needs an X11 display, and DISPLAY is not set. On Wayland, install and "
        "enable Xwayland.");
    for (const char* name : { "session", "held keys" })
        EXPECT_EQ(said(facts, name), "") << "nobody can know";
}

TEST(DoctorChecks, find_a_wayland_session_whose_workstation_is_no_X11_program)
{
    DoctorFacts facts = soundFacts();
    facts.system.display.session = Session::Wayland;
    EXPECT_EQ(said(facts, "session"),
        "ok This is a Wayland session, and Pro Tools is an X11 program: keys reach it.");
    facts.system.display.workstationWindows.reset();
    EXPECT_THAT(wrongs(facts),
        ElementsAre(Pair("session",
            "This is a Wayland session. Keys reach X11 programs only; a native Wayland program "
            "needs an X11 session.")));
}

TEST(DoctorChecks, find_a_desktop_without_a_tray)
{
    DoctorFacts facts = soundFacts();
    facts.system.display.hasTray = false;
    EXPECT_THAT(wrongs(facts),
        ElementsAre(Pair("tray",
            "The desktop has no tray, so the icon is not shown. GNOME needs the extension "
            "AppIndicator. Starting kestrel a second time opens the setup window.")));
}

TEST(DoctorChecks, find_a_MIDI_service_that_is_silent)
{
    DoctorFacts facts = soundFacts();
    facts.system.midi.state = SystemFacts::MIDI::Silent;
    facts.system.midi.devices.clear();
    EXPECT_EQ(said(facts, "MIDI"), "WRONG jackd runs and does not answer. Start it again.");
    facts.system.midi.serverRuns = false;
    EXPECT_THAT(wrongs(facts),
        ElementsAre(Pair("MIDI",
            "No JACK server answers. Start jackd as this user, or install pipewire-jack and start "
            "Kestrel with pw-jack kestrel")));
    facts.system.midi.library = Library::PipeWire;
    EXPECT_EQ(said(facts, "MIDI"),
        "WRONG PipeWire does not answer. Start it: systemctl --user start pipewire");
    facts.system.midi.library = Library::CoreMIDI;
    EXPECT_EQ(said(facts, "MIDI"), "WRONG CoreMIDI does not answer. Log out and in again.");
}

TEST(DoctorChecks, find_libraries_that_do_not_fit_together)
{
    DoctorFacts facts = soundFacts();
    facts.system.midi.libraryOfKestrel = Library::PipeWire;
    EXPECT_THAT(wrongs(facts),
        ElementsAre(Pair("library",
            "jackd runs, but Kestrel uses PipeWire's library. Start Kestrel and the console both "
            "with pw-jack, or neither.")));
    facts.system.midi.serverRuns = false;
    EXPECT_EQ(said(facts, "library"),
        "WRONG Kestrel uses the library of PipeWire, and kestrelctl that of JACK. Start both with "
        "pw-jack, or neither.");
    facts.system.midi.library = Library::PipeWire;
    EXPECT_EQ(said(facts, "library"), "ok Programs use the library of PipeWire.");
}

TEST(DoctorChecks, find_a_PipeWire_that_changes_the_heartbeat)
{
    DoctorFacts facts = soundFacts();
    facts.system.midi.serverRuns = false;
    facts.system.midi.library = Library::PipeWire;
    facts.system.midi.libraryOfKestrel = Library::PipeWire;
    EXPECT_EQ(said(facts, "PipeWire"), "ok PipeWire passes the heartbeat unchanged.");
    facts.system.midi.pipeWireProperties = "{ node.latency = 64/48000 }";
    EXPECT_THAT(wrongs(facts),
        ElementsAre(Pair("PipeWire",
            "PIPEWIRE_PROPS is set without jack.fix-midi-events = false, so the heartbeat does "
            "not arrive. Add it, or unset the variable.")));
    facts.system.midi.pipeWireProperties = "{ jack.fix-midi-events=false }";
    EXPECT_THAT(wrongs(facts), IsEmpty());
}

TEST(DoctorChecks, find_a_driver_that_is_missing)
{
    DoctorFacts facts = soundMac();
    facts.system.midi.hasDriver = false;
    EXPECT_THAT(wrongs(facts),
        ElementsAre(Pair("driver",
            "The console's driver is not installed. Install it and restart the computer.")));
}

TEST(DoctorChecks, find_a_console_that_is_missing_or_lacks_ports)
{
    DoctorFacts facts = soundFacts();
    facts.system.midi.devices = { device("ZENTA", 5, 4) };
    EXPECT_THAT(wrongs(facts),
        ElementsAre(Pair("console",
            "\"ZENTA\" has 5 sources and 4 destinations, and Kestrel needs 5 pairs. The fifth "
            "pair carries the traffic.")));
    facts.system.midi.devices = { device("ZENTA-01", 5, 5) };
    EXPECT_THAT(wrongs(facts),
        ElementsAre(Pair("console",
            "There is no MIDI device \"ZENTA\". Check the console's cable, its power and its "
            "driver.")));
}

TEST(DoctorChecks, find_a_console_that_has_fallen_silent)
{
    DoctorFacts facts = soundFacts();
    facts.status->link = StatusReport::Silent;
    EXPECT_THAT(wrongs(facts),
        ElementsAre(Pair("link",
            "The console has sent no heartbeat for five seconds. Check its cable and its "
            "power.")));
    facts.status->link = StatusReport::Waiting;
    EXPECT_EQ(said(facts, "link"),
        "ok The console is not online yet. The link needs up to a quarter of a minute once Pro "
        "Tools and the console are there.");
}

TEST(DoctorChecks, find_a_workstation_that_does_not_run_or_has_another_window)
{
    DoctorFacts facts = soundFacts();
    facts.system.display.workstationWindows = { "pt.exe" };
    EXPECT_THAT(wrongs(facts),
        ElementsAre(Pair("window",
            "The window of Pro Tools has the class \"pt.exe\", so no keys reach it. It must be "
            "\"Pro Tools\".")));
    facts.system.display.workstationWindows->clear();
    EXPECT_EQ(said(facts, "window"),
        "WRONG Pro Tools shows no window with the class \"Pro Tools\", so no keys reach it. xprop "
        "WM_CLASS shows the class of a window.");
    facts.system.display.workstationWindows->push_back("splash");
    facts.system.display.workstationWindows->push_back("Pro Tools");
    EXPECT_THAT(wrongs(facts), IsEmpty());
    facts.system.workstationRuns = false;
    EXPECT_THAT(wrongs(facts),
        ElementsAre(Pair("workstation",
            "No process has exactly the name \"Pro Tools\". Start it; the link opens only while "
            "it runs.")));
}

TEST(DoctorChecks, name_what_is_in_front)
{
    DoctorFacts facts = soundFacts();
    facts.system.display.front = "XTerm";
    EXPECT_EQ(
        said(facts, "front"), "ok \"XTerm\" is in front. Keys are typed only while Pro Tools is.");
    facts.system.display.front.reset();
    EXPECT_EQ(said(facts, "front"), "");
}

TEST(DoctorChecks, find_a_permission_that_is_missing)
{
    DoctorFacts facts = soundMac();
    facts.status->mayPostKeys = false;
    EXPECT_THAT(wrongs(facts),
        ElementsAre(Pair("permission",
            "The permission to post keys is missing. Give it in the system's settings under "
            "Privacy & Security, Accessibility.")));
}

TEST(DoctorChecks, find_keys_that_a_killed_run_has_left_down)
{
    DoctorFacts facts = soundFacts();
    facts.system.files.leftoverKeys = 1;
    EXPECT_THAT(wrongs(facts),
        ElementsAre(Pair("held keys",
            "1 key may still be down since a run was killed. Start Kestrel: it releases what was "
            "held.")));
    facts.system.files.leftoverKeys = 2;
    EXPECT_EQ(said(facts, "held keys").substr(0, 19), "WRONG 2 keys may st");
}

TEST(DoctorChecks, find_assignments_that_cannot_be_read_and_copies_of_such)
{
    DoctorFacts facts = soundFacts();
    facts.defaults.problem = "The file of the defaults cannot be read";
    facts.defaults.damaged = { "PT_UserAssign.damaged", "/home/me/x.damaged" };
    EXPECT_THAT(wrongs(facts),
        ElementsAre(
            Pair("defaults",
                "The assignments in /home/me/.config/com.holvik.kestrel.plist cannot be read: The "
                "file of the defaults cannot be read. Kestrel starts without them; load a saved "
                "set."),
            Pair("copies",
                "Kestrel could not read its assignments once and has kept a copy: "
                "PT_UserAssign.damaged, /home/me/x.damaged. Load a saved set, and remove the "
                "copy.")));
}

TEST(DoctorChecks, tell_that_a_killed_run_has_left_its_assignments)
{
    DoctorFacts facts = soundFacts();
    facts.defaults.recoveryWaits = true;
    EXPECT_EQ(said(facts, "defaults"), "ok The assignments can be read.");
    facts.status.reset();
    EXPECT_EQ(said(facts, "defaults"),
        "ok The last run was killed. The next start takes its assignments.");
}

TEST(DoctorChecks, find_a_login_that_starts_a_program_that_is_not_there)
{
    DoctorFacts facts = soundFacts();
    facts.system.autostart->isEnabled = true;
    EXPECT_EQ(said(facts, "login"), "ok Kestrel starts at login.");
    facts.system.autostart->missingProgram = "/opt/kestrel";
    EXPECT_THAT(wrongs(facts),
        ElementsAre(Pair("login",
            "The login is to start /opt/kestrel, which is not there. Switch Launch at Login off "
            "and on in Kestrel's menu.")));
}

TEST(DoctorChecks, find_another_program_that_opens_sets)
{
    DoctorFacts facts = soundFacts();
    facts.system.files.openedBy = "editor.desktop";
    EXPECT_THAT(wrongs(facts),
        ElementsAre(Pair("file type",
            "A double click opens sets with editor.desktop: xdg-mime default "
            "com.holvik.kestrel.desktop application/x-zenta-kestrel-assignments")));
    facts.system.files.openedBy.reset();
    EXPECT_EQ(said(facts, "file type"), "");
}

} // namespace
} // namespace kestrel::test
