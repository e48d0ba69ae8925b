#include "platform/linux/system/ProcProcessTable.h"

#include "platform/ProcessRecords.h"
#include "tools/stage/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/prctl.h>

#include <algorithm>
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

std::string nameIn(const std::vector<std::byte>& table, std::size_t record)
{
    const auto* first = reinterpret_cast<const char*>(table.data())
        + record * ProcessRecords::RecordSize + ProcessRecords::NameOffset;
    return { first, ProcessRecords::MaxNameLength };
}
} // namespace

TEST(ProcProcessTable, a_process_is_one_record_with_its_name_at_byte_243)
{
    ProcFolder proc;
    proc.addProcess("17", "Pro Tools\n");
    const auto table = ProcProcessTable(proc.path()).read();
    ASSERT_TRUE(table);
    ASSERT_EQ(table->size(), 648u);
    std::vector<std::byte> expected(648);
    std::ranges::transform(std::string("Pro Tools"), expected.begin() + 243,
        [](char character) { return static_cast<std::byte>(character); });
    EXPECT_EQ(*table, expected);
    EXPECT_TRUE(ProcessRecords::contains(*table, "Pro Tools"));
}

TEST(ProcProcessTable, only_numbered_folders_with_a_name_are_processes)
{
    ProcFolder proc;
    proc.addProcess("self", "Pro Tools\n");
    proc.addProcess("17x", "Pro Tools\n");
    proc.addProcess("18", "other\n");
    std::filesystem::create_directory(proc.path() / "19"); // ended between two looks
    const auto table = ProcProcessTable(proc.path()).read();
    ASSERT_TRUE(table);
    ASSERT_EQ(table->size(), 648u);
    EXPECT_EQ(nameIn(*table, 0), std::string("other") + std::string(11, '\0'));
}

TEST(ProcProcessTable, the_longest_name_fits_and_a_line_break_within_is_kept)
{
    ProcFolder proc;
    proc.addProcess("1", "fifteen\nletters\n");
    const auto table = ProcProcessTable(proc.path()).read();
    ASSERT_TRUE(table);
    EXPECT_EQ(nameIn(*table, 0), std::string("fifteen\nletters") + '\0');
}

TEST(ProcProcessTable, no_process_is_an_empty_table_and_no_folder_none)
{
    ProcFolder proc;
    const auto table = ProcProcessTable(proc.path()).read();
    ASSERT_TRUE(table);
    EXPECT_TRUE(table->empty());
    EXPECT_FALSE(ProcProcessTable(proc.path() / "missing").read());
}

TEST(ProcProcessTable, the_real_table_has_this_process)
{
    ASSERT_EQ(::prctl(PR_SET_NAME, "kestrel table!"), 0);
    const auto table = ProcProcessTable().read();
    ASSERT_TRUE(table);
    EXPECT_TRUE(ProcessRecords::contains(*table, "kestrel table!"));
    EXPECT_FALSE(ProcessRecords::contains(*table, "kestrel table"));
}

} // namespace kestrel::test
