#include "tests/end-to-end/RunningStudio.h"
#include "tools/stage/ThrowAwaySettings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

using stage::milliseconds;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

struct Said {
    std::vector<std::string> lines;
    std::optional<int> exitCode;
};

// Runs the program without a display and a JACK server. Returns its output on one of its streams.
Said saidWithout(const std::string& otherOutput, const std::string& arguments)
{
    const stage::ThrowAwaySettings settings;
    auto environment = settings.environment();
    environment["JACK_DEFAULT_SERVER"] = "kestrel-none";
    environment["JACK_NO_START_SERVER"] = "1";
    stage::ChildProcess kestrel(
        { "sh", "-c", "unset DISPLAY WAYLAND_DISPLAY; exec \"$0\" " + arguments + otherOutput,
            std::string(KESTREL_PROGRAMS) + "/kestrel" },
        environment);
    const auto exitCode = kestrel.wait(milliseconds(20000));
    return { kestrel.linesUntilQuiet(milliseconds(0)), exitCode };
}

const std::string OutputOnly = " 2>/dev/null";
const std::string ErrorsOnly = " 2>&1 >/dev/null";

TEST(CommandLine, help_needs_neither_display_nor_jack)
{
    const Said said = saidWithout(OutputOnly, "--help");
    EXPECT_EQ(said.exitCode, 0);
    EXPECT_THAT(said.lines, Contains("Usage: kestrel [--] [file ...]"));
    EXPECT_THAT(saidWithout(ErrorsOnly, "--help").lines, IsEmpty());
}

TEST(CommandLine, the_version_needs_neither_display_nor_jack)
{
    const Said said = saidWithout(OutputOnly, "--version");
    EXPECT_EQ(said.exitCode, 0);
    EXPECT_THAT(said.lines, ElementsAre("kestrel " KESTREL_VERSION));
    EXPECT_THAT(saidWithout(ErrorsOnly, "--version").lines, IsEmpty());
}

TEST(CommandLine, a_wrong_option_is_refused_before_anything_else)
{
    const Said said = saidWithout(ErrorsOnly, "--wrong");
    EXPECT_EQ(said.exitCode, 2);
    EXPECT_THAT(
        said.lines, ElementsAre("kestrel: Unknown option 'wrong'.", "Try \"kestrel --help\"."));
    EXPECT_THAT(saidWithout(OutputOnly, "--wrong").lines, IsEmpty());
}

TEST(CommandLine, a_file_named_like_an_option_starts_the_program)
{
    const Said said = saidWithout(ErrorsOnly, "-- --wrong");
    EXPECT_EQ(said.exitCode, 1);
    EXPECT_THAT(said.lines, ElementsAre(StartsWith("kestrel: Kestrel needs an X11 display")));
}

} // namespace
} // namespace kestrel::test
