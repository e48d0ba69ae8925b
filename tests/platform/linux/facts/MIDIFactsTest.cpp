#include "platform/linux/facts/MIDIFacts.h"

#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

using Library = SystemFacts::Library;

TEST(MIDIFacts, tell_the_library_of_JACK_from_that_of_PipeWire)
{
    const std::string before = "7f0000-7f1000 r--p 00000000 08:01 1  /usr/lib/libc.so.6\n"
                               "7f2000-7f3000 r--p 00000000 08:01 2  ";
    EXPECT_EQ(libraryIn(before + "/usr/lib/x86_64-linux-gnu/libjack.so.0.1.0\n"), Library::JACK);
    EXPECT_EQ(libraryIn(before + "/usr/lib/x86_64-linux-gnu/pipewire-0.3/jack/libjack.so.0.3.0\n"),
        Library::PipeWire);
    EXPECT_EQ(libraryIn(before + "/usr/lib/libjackserver.so.0\n"), std::nullopt);
    EXPECT_EQ(libraryIn(""), std::nullopt);
}

} // namespace
} // namespace kestrel::test
