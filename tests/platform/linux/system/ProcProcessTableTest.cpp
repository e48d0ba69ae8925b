#include "platform/linux/system/ProcProcessTable.h"

#include "tools/stage/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <fstream>

namespace kestrel::test {

namespace {
class ProcFolder : public stage::TemporaryFolder {
public:
    void addProcess(const std::string& number, const std::string& comm)
    {
        std::filesystem::create_directory(path() / number);
        std::ofstream(path() / number / "comm") << comm;
    }
};
} // namespace

TEST(ProcProcessTable, a_process_runs_under_exactly_its_command_name)
{
    ProcFolder proc;
    proc.addProcess("17", "Pro Tools\n");
    ProcProcessTable processes(proc.path());
    EXPECT_TRUE(processes.isRunning("Pro Tools"));
    EXPECT_FALSE(processes.isRunning("Pro Tool"));
    EXPECT_FALSE(processes.isRunning("Pro Tools HD"));
    EXPECT_FALSE(processes.isRunning("pro tools"));
    EXPECT_FALSE(processes.isRunning("Pro Tools\n"));
}

TEST(ProcProcessTable, every_process_is_looked_at)
{
    ProcFolder proc;
    proc.addProcess("1", "init\n");
    proc.addProcess("17", "Pro Tools\n");
    proc.addProcess("4194304", "other\n");
    for (const char* name : { "init", "Pro Tools", "other" })
        EXPECT_TRUE(ProcProcessTable(proc.path()).isRunning(name)) << name;
}

TEST(ProcProcessTable, only_numbered_folders_with_a_name_are_processes)
{
    ProcFolder proc;
    proc.addProcess("self", "Pro Tools\n");
    proc.addProcess("17x", "Pro Tools\n");
    proc.addProcess("18", "other\n");
    std::filesystem::create_directory(proc.path() / "19"); // ended between two looks
    ProcProcessTable processes(proc.path());
    EXPECT_FALSE(processes.isRunning("Pro Tools"));
    EXPECT_FALSE(processes.isRunning(""));
    EXPECT_TRUE(processes.isRunning("other"));
}

TEST(ProcProcessTable, the_longest_name_fits_and_a_line_break_within_is_kept)
{
    ProcFolder proc;
    proc.addProcess("1", "fifteen\nletters\n");
    ProcProcessTable processes(proc.path());
    EXPECT_TRUE(processes.isRunning("fifteen\nletters"));
    EXPECT_FALSE(processes.isRunning("fifteen"));
    EXPECT_FALSE(processes.isRunning("fifteen\nletters "));
}

TEST(ProcProcessTable, nothing_runs_where_there_is_no_process_or_no_folder)
{
    ProcFolder proc;
    EXPECT_FALSE(ProcProcessTable(proc.path()).isRunning("Pro Tools"));
    EXPECT_FALSE(ProcProcessTable(proc.path() / "missing").isRunning("Pro Tools"));
}

TEST(ProcProcessTable, the_real_table_has_this_process)
{
    ASSERT_EQ(::prctl(PR_SET_NAME, "kestrel table!"), 0);
    EXPECT_TRUE(ProcProcessTable().isRunning("kestrel table!"));
    EXPECT_FALSE(ProcProcessTable().isRunning("kestrel table"));
    EXPECT_EQ(
        ProcProcessTable::commandNameOf(static_cast<std::uint32_t>(::getpid())), "kestrel table!");
    EXPECT_EQ(ProcProcessTable::commandNameOf(0), "");
}

} // namespace kestrel::test
