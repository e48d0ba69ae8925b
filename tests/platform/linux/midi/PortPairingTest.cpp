#include "platform/linux/midi/PortPairing.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kestrel::test {
namespace {

constexpr auto Output = PortDirection::Output;
constexpr auto Input = PortDirection::Input;

// "ZENTA: out|in, out|-"
std::string text(const PortOwner& owner)
{
    std::string result = owner.client + ":";
    for (const PortPair& pair : owner.pairs) {
        result.append(" ").append(pair.output.value_or("-"));
        result.append("|").append(pair.input.value_or("-"));
    }
    return result;
}

std::vector<std::string> paired(const std::vector<PortListing>& ports)
{
    std::vector<std::string> owners;
    for (const PortOwner& owner : pairPorts(ports))
        owners.push_back(text(owner));
    return owners;
}

using Owners = std::vector<std::string>;

TEST(PortPairing, the_kth_output_goes_with_the_kth_input_in_natural_order)
{
    EXPECT_EQ(paired({ { "Z:midi_10", Output }, { "Z:midi_10_in", Input }, { "Z:midi_2", Output },
                  { "Z:midi_1_in", Input }, { "Z:midi_1", Output }, { "Z:midi_2_in", Input } }),
        (Owners { "Z: Z:midi_1|Z:midi_1_in Z:midi_2|Z:midi_2_in Z:midi_10|Z:midi_10_in" }));
}

TEST(PortPairing, outputs_and_inputs_are_counted_apart)
{
    EXPECT_EQ(paired({ { "Z:a", Output }, { "Z:z", Output }, { "Z:m", Input } }),
        (Owners { "Z: Z:a|Z:m Z:z|-" }));
    EXPECT_EQ(paired({ { "Z:a", Input }, { "Z:z", Input }, { "Z:m", Output } }),
        (Owners { "Z: Z:m|Z:a -|Z:z" }));
}

TEST(PortPairing, each_client_stands_once_where_its_first_port_stands)
{
    EXPECT_EQ(paired({ { "B:1", Output }, { "A:1", Output }, { "B:2", Input } }),
        (Owners { "B: B:1|B:2", "A: A:1|-" }));
}

TEST(PortPairing, a_client_whose_name_begins_like_another_is_not_that_other)
{
    EXPECT_EQ(paired({ { "ZENTA:1", Output }, { "ZENTA-01:1", Output } }),
        (Owners { "ZENTA: ZENTA:1|-", "ZENTA-01: ZENTA-01:1|-" }));
}

TEST(PortPairing, only_the_first_colon_ends_the_name_of_the_client)
{
    EXPECT_EQ(
        paired({ { "a2j:Synth [14]: port", Output } }), (Owners { "a2j: a2j:Synth [14]: port|-" }));
}

TEST(PortPairing, no_ports_make_no_clients)
{
    EXPECT_EQ(paired({}), Owners {});
}

TEST(PortPairing, the_names_that_jack_makes_of_a_taken_name_are_names_for_it)
{
    EXPECT_TRUE(isNameFor("client", "client"));
    EXPECT_TRUE(isNameFor("client", "client-01"));
    EXPECT_TRUE(isNameFor("client", "client-7"));
    for (const char* other :
        { "", "clien", "clients", "client-", "client-1a", "client 01", "my client" })
        EXPECT_FALSE(isNameFor("client", other)) << other;
}

TEST(PortPairing, the_identifier_of_a_name_never_changes)
{
    EXPECT_EQ(stableIdentifier(""), static_cast<std::int32_t>(0x811C9DC5));
    EXPECT_EQ(stableIdentifier("a"), static_cast<std::int32_t>(0xE40C292C));
    EXPECT_NE(stableIdentifier("ZENTA:midi_5"), stableIdentifier("ZENTA:midi_4"));
}

} // namespace
} // namespace kestrel::test
