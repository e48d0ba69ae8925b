#include "platform/macos/SysctlProcessTable.h"

#include "platform/macos/ProcessRecords.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace kestrel::test {
namespace {

TEST(SysctlProcessTable, has_this_very_process_by_its_command_name)
{
    SysctlProcessTable processes;
    const auto name = std::string_view(getprogname()).substr(0, ProcessRecords::MaxNameLength);
    EXPECT_TRUE(processes.isRunning(name));
    EXPECT_TRUE(processes.isRunning("launchd"));
    EXPECT_FALSE(processes.isRunning("launch"));
    EXPECT_FALSE(processes.isRunning("no such process"));
}

} // namespace
} // namespace kestrel::test
