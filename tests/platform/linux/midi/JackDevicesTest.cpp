#include "platform/linux/midi/PortPairing.h"
#include "tests/platform/linux/midi/JackFixture.h"

namespace kestrel::test {
namespace {

using JackDevices = JackFixture;

std::vector<std::int32_t> sourceIdentifiers(const MIDIDevice& device)
{
    std::vector<std::int32_t> identifiers;
    for (const MIDIEntity& entity : device.entities) {
        for (const MIDISource& source : entity.sources)
            identifiers.push_back(source.uniqueID.value_or(0));
    }
    return identifiers;
}

TEST_F(JackDevices, another_client_is_a_device_with_its_pairs_in_natural_order)
{
    JackPeer zenta("ZENTA");
    zenta.addOutput("midi_10");
    zenta.addOutput("midi_2");
    zenta.addInput("midi_2_in");
    zenta.addInput("midi_10_in");
    MIDIClient client = 0;
    ASSERT_TRUE(create(client));
    const auto found = device("ZENTA");
    ASSERT_TRUE(found);
    ASSERT_EQ(found->entities.size(), 2u);
    EXPECT_EQ(found->entities[0].destinations.size(), 1u);
    EXPECT_EQ(found->entities[1].destinations.size(), 1u);
    EXPECT_EQ(sourceIdentifiers(*found),
        (std::vector<std::int32_t> {
            stableIdentifier("ZENTA:midi_2"), stableIdentifier("ZENTA:midi_10") }));
}

TEST_F(JackDevices, a_client_with_four_pairs_has_four_entities)
{
    JackPeer zenta("ZENTA");
    zenta.addPairs(4);
    MIDIClient client = 0;
    ASSERT_TRUE(create(client));
    const auto found = device("ZENTA");
    ASSERT_TRUE(found);
    EXPECT_EQ(found->entities.size(), 4u);
}

TEST_F(JackDevices, an_entity_may_have_only_a_source_or_only_a_destination)
{
    JackPeer keyboard("keyboard");
    keyboard.addOutput("out");
    JackPeer sound("sound");
    sound.addInput("in");
    MIDIClient client = 0;
    ASSERT_TRUE(create(client));
    const auto first = device("keyboard");
    const auto second = device("sound");
    ASSERT_TRUE(first && second);
    ASSERT_EQ(first->entities.size(), 1u);
    EXPECT_EQ(first->entities[0].sources.size(), 1u);
    EXPECT_TRUE(first->entities[0].destinations.empty());
    ASSERT_EQ(second->entities.size(), 1u);
    EXPECT_TRUE(second->entities[0].sources.empty());
    EXPECT_EQ(second->entities[0].destinations.size(), 1u);
}

TEST_F(JackDevices, neither_audio_ports_nor_our_own_ports_make_a_device)
{
    JackPeer audio("audio");
    audio.addAudioOutput("left");
    MIDIClient client = 0;
    MIDIPort port = 0;
    ASSERT_TRUE(create(client));
    ASSERT_TRUE(take(services.createInputPort(client, "in", read, this), port));
    ASSERT_TRUE(take(services.createOutputPort(client, "out"), port));
    EXPECT_TRUE(services.devices().empty());
}

TEST_F(JackDevices, references_and_identifiers_outlive_the_device_and_the_client)
{
    const auto snapshot = [this] {
        JackPeer zenta("ZENTA");
        zenta.addPairs(5);
        MIDIClient client = 0;
        EXPECT_TRUE(create(client));
        const auto found = device("ZENTA");
        services.disposeClient(client);
        return found.value_or(MIDIDevice {});
    };
    const MIDIDevice before = snapshot();
    const MIDIDevice after = snapshot();
    ASSERT_EQ(before.entities.size(), 5u);
    ASSERT_EQ(after.entities.size(), 5u);
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(before.entities[i].sources[0].endpoint, after.entities[i].sources[0].endpoint);
        EXPECT_EQ(before.entities[i].sources[0].uniqueID, after.entities[i].sources[0].uniqueID);
        EXPECT_EQ(before.entities[i].destinations, after.entities[i].destinations);
    }
}

TEST_F(JackDevices, there_are_none_without_a_client)
{
    JackPeer zenta("ZENTA");
    zenta.addPairs(5);
    EXPECT_TRUE(services.devices().empty());
    MIDIClient client = 0;
    ASSERT_TRUE(create(client));
    EXPECT_EQ(services.devices().size(), 1u);
    services.disposeClient(client);
    EXPECT_TRUE(services.devices().empty());
}

TEST_F(JackDevices, a_second_client_is_refused_until_the_first_is_disposed_of)
{
    MIDIClient first = 0;
    MIDIClient second = 0;
    ASSERT_TRUE(create(first));
    EXPECT_FALSE(create(second));
    EXPECT_EQ(second, 0u);
    services.disposeClient(first);
    EXPECT_TRUE(create(second));
    EXPECT_NE(second, first);
}

TEST_F(JackDevices, references_that_are_no_longer_valid_are_refused)
{
    JackPeer zenta("ZENTA");
    zenta.addPairs(5);
    const Link link = connect();
    services.disposeClient(link.client);
    MIDIClient client = 0;
    MIDIPort port = 0;
    ASSERT_TRUE(create(client));
    EXPECT_FALSE(take(services.createInputPort(link.client, "in", read, this), port));
    EXPECT_FALSE(take(services.createOutputPort(link.client, "out"), port));
    EXPECT_EQ(port, 0u);
    EXPECT_FALSE(services.connectSource(link.input, 1, nullptr));
    EXPECT_FALSE(send(link, { 0x90, 0x00, 0x7F }));
    services.disposeClient(link.client); // not the one that is open
    EXPECT_EQ(services.devices().size(), 1u);
}

TEST_F(JackDevices, a_source_that_does_not_exist_cannot_be_connected_and_the_next_one_can)
{
    JackPeer zenta("ZENTA");
    zenta.addPairs(2);
    MIDIClient client = 0;
    MIDIPort input = 0;
    ASSERT_TRUE(create(client));
    ASSERT_TRUE(take(services.createInputPort(client, "in", read, this), input));
    const auto found = device("ZENTA");
    ASSERT_TRUE(found);
    zenta.remove("midi_1");
    EXPECT_FALSE(services.connectSource(input, 4711, &idArray));
    EXPECT_FALSE(services.connectSource(input, found->entities[0].sources[0].endpoint, &idArray));
    EXPECT_TRUE(services.connectSource(input, found->entities[1].sources[0].endpoint, &idArray));
    zenta.send("midi_2", { { 0x90, 0x00, 0x00 } });
    ASSERT_TRUE(waitForPackets(1));
    EXPECT_EQ(packets, (std::vector<Bytes> { { 0x90, 0x00, 0x00 } }));
}

} // namespace
} // namespace kestrel::test
