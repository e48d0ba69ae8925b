#include "tools/kestrelctl/doctor/Checks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <string>

namespace kestrel::test {
namespace {

using Names = std::set<std::string>;

// The first cells of the table of troubles in a document.
Names checksIn(const char* document)
{
    std::ifstream file(std::string(KESTREL_SOURCE) + "/docs/" + document);
    Names names;
    bool isThere = false;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("## "))
            isThere = line == "## When something does not work";
        if (isThere && line.starts_with("| `"))
            names.insert(line.substr(3, line.find('`', 3) - 3));
    }
    return names;
}

TEST(TroubleTable, names_each_check_of_the_doctor_and_no_other)
{
    Names all;
    for (const ctl::NamedCheck& check : ctl::checks())
        all.insert(check.name);
    const Names onLinux = checksIn("linux.md");
    const Names onMac = checksIn("macos.md");
    EXPECT_THAT(onLinux, testing::IsSubsetOf(all));
    EXPECT_THAT(onMac, testing::IsSubsetOf(all));
    Names both = onLinux;
    both.insert(onMac.begin(), onMac.end());
    EXPECT_EQ(both, all);
}

} // namespace
} // namespace kestrel::test
