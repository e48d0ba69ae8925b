#include "tools/stage/ChildProcess.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace kestrel::test {
namespace {

using stage::milliseconds;
using testing::Contains;
using testing::HasSubstr;

// The libraries that a program asks the dynamic linker for, up to the first dot of their names.
std::vector<std::string> librariesOf(const std::string& program)
{
    stage::ChildProcess objdump({ "objdump", "--private-headers", KESTREL_PROGRAMS "/" + program });
    std::vector<std::string> libraries;
    while (const auto line = objdump.waitForLineWith(" NEEDED ", milliseconds(10000))) {
        const std::string file = line->substr(line->rfind(' ') + 1);
        libraries.push_back(file.substr(0, file.find('.')));
    }
    return libraries;
}

class LinkedLibraries : public testing::TestWithParam<const char*> { };

TEST_P(LinkedLibraries, are_listed_with_their_licences)
{
    std::ifstream file(KESTREL_SOURCE "/THIRD-PARTY.md");
    const std::string listed((std::istreambuf_iterator(file)), {});
    const auto libraries = librariesOf(GetParam());
    EXPECT_THAT(libraries, Contains("libc"));
    for (const auto& library : libraries)
        EXPECT_THAT(listed, HasSubstr("`" + library + "`"));
}

INSTANTIATE_TEST_SUITE_P(
    Program, LinkedLibraries, testing::Values("kestrel", "kestrelctl", "zenta-console"));

} // namespace
} // namespace kestrel::test
