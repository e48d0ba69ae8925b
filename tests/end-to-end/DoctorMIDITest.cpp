// What kestrelctl doctor says about the MIDI service and its libraries.

#include "tests/end-to-end/KestrelctlBench.h"
#include "tools/stage/Patience.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace kestrel::test {
namespace {

using testing::Contains;

// kestrelctl and Kestrel with the library of JACK, which is loaded from where pw-jack has that of
// PipeWire.
class DoctorOfMIDI : public KestrelctlBench {
protected:
    [[nodiscard]] stage::ChildProcess::Environment withPipeWire() const
    {
        const auto folder = studio.studio.home() / "pipewire-0.3" / "jack";
        std::filesystem::create_directories(folder);
        std::filesystem::copy_file(KESTREL_LIBJACK, folder / "libjack.so.0",
            std::filesystem::copy_options::overwrite_existing);
        return { { "LD_LIBRARY_PATH", folder.string() } };
    }
    // The studio's own process table lacks the server.
    void letTheDoctorSeeJackd()
    {
        const auto table = studio.studio.home() / "processes";
        std::filesystem::create_directory(table);
        const std::string self = std::to_string(::getpid());
        std::ifstream children("/proc/self/task/" + self + "/children");
        for (std::string child; children >> child;)
            std::filesystem::create_directory_symlink("/proc/" + child, table / child);
        added["KESTREL_STAGE_PROCESSES"] = table.string();
    }
    void startKestrel(const stage::ChildProcess::Environment& environment)
    {
        studio.kestrel = studio.studio.start("kestrel", {}, environment);
        ASSERT_TRUE(stage::comesTrue([&] { return run({ "status" }).code == 0; }, Timeout));
    }
};

TEST_F(DoctorOfMIDI, finds_that_Kestrel_uses_the_library_of_PipeWire_while_jackd_runs)
{
    startKestrel(withPipeWire());
    letTheDoctorSeeJackd();
    const std::string problem
        = "WRONG  library     jackd runs, but Kestrel uses PipeWire's library. Start Kestrel and "
          "the console both with pw-jack, or neither.";
    EXPECT_THAT(run({ "doctor" }).lines, Contains(problem));
    studio.studio.jack().kill();
    EXPECT_THAT(run({ "doctor" }).lines,
        Contains("WRONG  library     Kestrel uses the library of PipeWire, and kestrelctl that of "
                 "JACK. Start both with pw-jack, or neither."));
    added.merge(withPipeWire());
    EXPECT_THAT(run({ "doctor" }).lines,
        testing::IsSupersetOf({ "ok     library     Programs use the library of PipeWire.",
            "WRONG  MIDI        PipeWire does not answer. Start it: systemctl --user start "
            "pipewire" }));
}

TEST_F(DoctorOfMIDI, finds_that_PipeWire_changes_the_heartbeat)
{
    auto environment = withPipeWire();
    startKestrel(environment);
    const std::string fine = "ok     PipeWire    PipeWire passes the heartbeat unchanged.";
    EXPECT_THAT(run({ "doctor" }).lines, Contains(fine));
    ASSERT_EQ(studio.terminateKestrel(), 0);
    environment["PIPEWIRE_PROPS"] = "{ node.latency = 64/48000 }";
    startKestrel(environment);
    EXPECT_THAT(run({ "doctor" }).lines,
        Contains("WRONG  PipeWire    PIPEWIRE_PROPS is set without jack.fix-midi-events = false, "
                 "so the heartbeat does not arrive. Add it, or unset the variable."));
    ASSERT_EQ(studio.terminateKestrel(), 0);
    environment["PIPEWIRE_PROPS"] = "{ jack.fix-midi-events = false }";
    startKestrel(environment);
    EXPECT_THAT(run({ "doctor" }).lines, Contains(fine));
}

TEST_F(DoctorOfMIDI, finds_a_JACK_server_that_stands_still)
{
    letTheDoctorSeeJackd();
    studio.studio.jack().stop();
    EXPECT_THAT(run({ "doctor" }).lines,
        Contains("WRONG  MIDI        jackd runs and does not answer. Start it again."));
    studio.studio.jack().resume();
}

TEST_F(DoctorOfMIDI, finds_a_console_that_has_fallen_silent)
{
    studio.startEverything();
    ASSERT_TRUE(studio.isAnswered());
    EXPECT_THAT(run({ "doctor" }).lines, Contains("ok     link        The console is online."));
    studio.console->writeLine("heartbeat off");
    EXPECT_TRUE(stage::comesTrue(
        [&] {
            const auto lines = run({ "doctor" }).lines;
            return std::find(lines.begin(), lines.end(),
                       "WRONG  link        The console has sent no heartbeat for five seconds. "
                       "Check its cable and its power.")
                != lines.end();
        },
        Timeout));
}

} // namespace
} // namespace kestrel::test
