#include "tools/kestrelctl/CompletionPlace.h"
#include "tools/kestrelctl/Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace kestrel::test {
namespace {

using testing::HasSubstr;

std::string manualPage()
{
    std::ifstream page(KESTREL_SOURCE "/packaging/linux/man/kestrelctl.1");
    return { std::istreambuf_iterator(page), {} };
}

TEST(ManualPage, names_every_command_and_option)
{
    const std::string page = manualPage();
    const ctl::Program program;
    for (const auto& place : ctl::CompletionPlace::allOf(*program.options)) {
        if (!place.path.empty()) {
            EXPECT_THAT(page, HasSubstr(".Cm" + place.path)) << place.path;
        }
        for (const auto& option : place.options)
            EXPECT_THAT(page, HasSubstr("Fl -" + option.text.substr(2))) << option.text;
    }
}

TEST(Help, names_every_command_with_its_summary)
{
    const ctl::Program program;
    const std::string help = program.options->help();
    for (const ctl::Command& command : ctl::commandTable()) {
        EXPECT_THAT(help, HasSubstr(command.name));
        EXPECT_THAT(help, HasSubstr(command.summary));
    }
}

} // namespace
} // namespace kestrel::test
