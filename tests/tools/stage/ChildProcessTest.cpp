#include "tools/stage/ChildProcess.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fstream>
#include <sstream>

namespace kestrel::test {
namespace {

using stage::ChildProcess;

// The kernel's letter: T for a process that stands still. One that runs has R, or D while it waits
// for a page of its program.
char stateOf(const ChildProcess& process)
{
    std::ifstream file("/proc/" + std::to_string(process.pid()) + "/stat");
    std::stringstream text;
    text << file.rdbuf();
    return text.str().at(text.str().rfind(')') + 2);
}

TEST(ChildProcess, stands_still_when_stop_returns_and_runs_again_later)
{
    ChildProcess busy({ "sh", "-c", "while :; do :; done" });
    for (int i = 0; i < 50; ++i) {
        busy.stop();
        ASSERT_EQ(stateOf(busy), 'T') << "at stop " << i;
        busy.resume();
        ASSERT_NE(stateOf(busy), 'T');
    }
}

TEST(ChildProcess, that_has_ended_can_be_stopped_and_keeps_its_exit_code)
{
    ChildProcess ended({ "sh", "-c", "exit 7" });
    ended.stop();
    ended.resume();
    EXPECT_EQ(ended.wait(stage::milliseconds(10000)), 7);
    ended.stop();
    EXPECT_EQ(ended.wait(stage::milliseconds(0)), 7);
}

} // namespace
} // namespace kestrel::test
