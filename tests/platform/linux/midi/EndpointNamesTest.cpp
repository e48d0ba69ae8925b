#include "platform/linux/midi/EndpointNames.h"

#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

TEST(EndpointNames, a_name_keeps_its_reference)
{
    EndpointNames names;
    const MIDIEndpoint first = names.endpointNamed("ZENTA:midi_1");
    const MIDIEndpoint second = names.endpointNamed("ZENTA:midi_2");
    EXPECT_NE(first, second);
    EXPECT_EQ(names.endpointNamed("ZENTA:midi_1"), first);
    EXPECT_EQ(names.endpointNamed("ZENTA:midi_2"), second);
}

TEST(EndpointNames, a_reference_leads_back_to_its_name)
{
    EndpointNames names;
    const MIDIEndpoint first = names.endpointNamed("ZENTA:midi_1");
    static_cast<void>(names.endpointNamed("ZENTA:midi_2"));
    ASSERT_NE(names.nameOf(first), nullptr);
    EXPECT_EQ(*names.nameOf(first), "ZENTA:midi_1");
}

TEST(EndpointNames, zero_and_references_never_given_out_name_nothing)
{
    EndpointNames names;
    const MIDIEndpoint only = names.endpointNamed("ZENTA:midi_1");
    EXPECT_NE(only, 0u);
    EXPECT_EQ(names.nameOf(0), nullptr);
    EXPECT_EQ(names.nameOf(only + 1), nullptr);
}

} // namespace
} // namespace kestrel::test
