#include "platform/macos/SysctlProcessTable.h"
#include "tests/platform/macos/stand-ins/Calls.h"
#include "tests/platform/macos/stand-ins/ProcessList.h"

#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

class SysctlFailuresTest : public testing::Test {
protected:
    SysctlFailuresTest()
    {
        processList() = {};
        processList().add("launchd");
        processList().add("Pro Tools");
    }
    ~SysctlFailuresTest() override { calls() = {}; }

    SysctlProcessTable processes;
};

TEST_F(SysctlFailuresTest, a_process_is_found_by_its_whole_name)
{
    EXPECT_TRUE(processes.isRunning("Pro Tools"));
    EXPECT_FALSE(processes.isRunning("Pro Tool"));
    EXPECT_FALSE(processes.isRunning("Pro Tools HD"));
}

TEST_F(SysctlFailuresTest, nothing_runs_when_either_question_fails)
{
    for (const char* question : { "sysctl for the size", "sysctl for the table" }) {
        calls().failing = question;
        EXPECT_FALSE(processes.isRunning("Pro Tools")) << question;
    }
}

TEST_F(SysctlFailuresTest, room_that_the_kernel_leaves_free_names_no_process)
{
    processList().room = 10UL * 648;
    EXPECT_TRUE(processes.isRunning("Pro Tools"));
    EXPECT_FALSE(processes.isRunning(""));
}

TEST_F(SysctlFailuresTest, a_table_that_has_outgrown_the_room_fails)
{
    calls().before = [](std::string_view question) {
        if (question == "sysctl for the table")
            processList().add("new");
    };
    EXPECT_FALSE(processes.isRunning("Pro Tools"));
}

TEST_F(SysctlFailuresTest, a_table_that_shrinks_between_the_questions_is_read_as_it_is)
{
    processList().add("gone");
    calls().before = [](std::string_view question) {
        if (question == "sysctl for the table")
            processList().records.resize(2UL * 648);
    };
    EXPECT_FALSE(processes.isRunning("gone"));
    processList().add("gone");
    EXPECT_TRUE(processes.isRunning("Pro Tools"));
}

TEST_F(SysctlFailuresTest, an_empty_table_names_nobody)
{
    processList() = {};
    EXPECT_FALSE(processes.isRunning("Pro Tools"));
}

} // namespace
} // namespace kestrel::test
