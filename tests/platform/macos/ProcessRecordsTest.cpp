#include "platform/macos/ProcessRecords.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace kestrel::test {
namespace {

TEST(ProcessRecords, the_name_is_compared_whole_at_byte_243_of_each_whole_record)
{
    std::vector<std::byte> table(2UL * 648);
    const auto write = [&table](std::size_t at, std::string_view text) {
        std::transform(text.begin(), text.end(), table.begin() + static_cast<long>(at),
            [](char c) { return static_cast<std::byte>(c); });
    };
    write(648 + 243, "Pro Tools");
    EXPECT_TRUE(ProcessRecords::contains(table, "Pro Tools"));
    EXPECT_FALSE(ProcessRecords::contains(table, "Pro Tool"));
    EXPECT_FALSE(ProcessRecords::contains(table, "Pro Tools HD"));
    EXPECT_FALSE(ProcessRecords::contains(std::span(table).first(2 * 648 - 1), "Pro Tools"));
    EXPECT_FALSE(ProcessRecords::contains({}, "Pro Tools"));
}

TEST(ProcessRecords, a_name_of_sixteen_characters_needs_no_terminator)
{
    std::vector<std::byte> table(648, std::byte { 'x' });
    EXPECT_TRUE(ProcessRecords::contains(table, "xxxxxxxxxxxxxxxx"));
    EXPECT_FALSE(ProcessRecords::contains(table, "xxxxxxxxxxxxxxxxx"));
}

} // namespace
} // namespace kestrel::test
