#include "platform/macos/SysctlProcessTable.h"

#include "platform/ProcessRecords.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace kestrel::test {
namespace {

TEST(SysctlProcessTable, has_this_very_process_by_its_command_name)
{
    SysctlProcessTable processes;
    const auto table = processes.read();
    ASSERT_TRUE(table);
    const auto name = std::string_view(getprogname()).substr(0, ProcessRecords::MaxNameLength);
    EXPECT_TRUE(ProcessRecords::contains(*table, name));
    EXPECT_TRUE(ProcessRecords::contains(*table, "launchd"));
    EXPECT_FALSE(ProcessRecords::contains(*table, "no such process"));
}

TEST(SysctlProcessTable, is_made_of_whole_records)
{
    SysctlProcessTable processes;
    const auto table = processes.read();
    ASSERT_TRUE(table);
    EXPECT_GE(table->size(), 2 * ProcessRecords::RecordSize);
    EXPECT_EQ(table->size() % ProcessRecords::RecordSize, 0U);
}

} // namespace
} // namespace kestrel::test
