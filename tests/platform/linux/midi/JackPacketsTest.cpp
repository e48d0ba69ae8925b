#include "platform/linux/midi/SourceLane.h"
#include "tests/platform/linux/midi/JackFixture.h"

#include <filesystem>
#include <fstream>
#include <map>

namespace kestrel::test {
namespace {

class JackPackets : public JackFixture {
public:
    JackPackets()
    {
        zenta.addPairs(5);
        receiver.addPairs(5);
    }

    std::vector<Bytes> arrivals(std::size_t count)
    {
        return receiver.received("midi_5_in", count, std::chrono::milliseconds(Long));
    }

    JackPeer zenta { "ZENTA" };
    JackPeer receiver { "receiver" };
};

using Packets = std::vector<Bytes>;

// Counts the threads of this program by name.
std::map<std::string, int> threadNames()
{
    std::map<std::string, int> names;
    for (const auto& task : std::filesystem::directory_iterator("/proc/self/task")) {
        std::string name;
        std::getline(std::ifstream(task.path() / "comm"), name);
        ++names[name];
    }
    return names;
}

Bytes numbered(int number)
{
    return { 0xB0, static_cast<std::uint8_t>(number >> 7 & 0x7F),
        static_cast<std::uint8_t>(number & 0x7F) };
}

Bytes systemExclusive(std::size_t size)
{
    Bytes packet(size);
    for (std::size_t i = 0; i < size; ++i)
        packet[i] = static_cast<std::uint8_t>(i * 7 & 0x7F);
    packet.front() = 0xF0;
    packet.back() = 0xF7;
    return packet;
}

TEST_F(JackPackets, three_packets_of_one_cycle_come_in_one_list_in_order)
{
    connect();
    const Packets sent { { 0x90, 0x00, 0x00 }, { 0xB0, 0x0F, 0x40 }, { 0xB0, 0x2F, 0x45 } };
    zenta.send("midi_5", sent);
    ASSERT_TRUE(waitForPackets(3));
    EXPECT_EQ(packets, sent);
    EXPECT_EQ(lists, 1);
}

TEST_F(JackPackets, each_thread_is_named_for_what_it_does)
{
    connect();
    const auto names = threadNames();
    const auto count = [&names](const char* name) {
        const auto found = names.find(name);
        return found == names.end() ? 0 : found->second;
    };
    EXPECT_EQ(count("midi-control"), 1);
    EXPECT_EQ(count("jack-process"), 1);
    EXPECT_GE(count("jack-notify"), 1);
}

TEST_F(JackPackets, a_controller_pair_in_running_status_stays_one_packet)
{
    connect();
    zenta.send("midi_5", { { 0xB0, 0x0C, 0x1C, 0x2C, 0x41 } });
    ASSERT_TRUE(waitForPackets(1));
    EXPECT_EQ(packets, (Packets { { 0xB0, 0x0C, 0x1C, 0x2C, 0x41 } }));
}

TEST_F(JackPackets, a_packet_without_bytes_arrives)
{
    connect();
    zenta.send("midi_5", { {}, { 0x90, 0x00, 0x00 } });
    ASSERT_TRUE(waitForPackets(2));
    EXPECT_EQ(packets, (Packets { {}, { 0x90, 0x00, 0x00 } }));
}

TEST_F(JackPackets, the_largest_packet_arrives_whole_both_ways)
{
    const Link link = connect("receiver");
    const Bytes large = systemExclusive(32720);
    zenta.send("midi_5", { large, { 0x90, 0x00, 0x00 } });
    ASSERT_TRUE(waitForPackets(2));
    EXPECT_EQ(packets, (Packets { large, { 0x90, 0x00, 0x00 } }));
    ASSERT_TRUE(send(link, large));
    ASSERT_TRUE(send(link, { 0x90, 0x00, 0x7F }));
    EXPECT_EQ(arrivals(2), (Packets { large, { 0x90, 0x00, 0x7F } }));
}

TEST_F(JackPackets, a_packet_that_is_too_large_is_refused_and_stops_nothing)
{
    const Link link = connect("receiver");
    EXPECT_FALSE(send(link, systemExclusive(32721)));
    EXPECT_TRUE(send(link, { 0x90, 0x00, 0x7F }));
    EXPECT_EQ(arrivals(1), (Packets { { 0x90, 0x00, 0x7F } }));
}

TEST_F(JackPackets, of_a_burst_of_ten_thousand_none_is_lost_or_out_of_order)
{
    connect();
    Packets sent;
    for (int i = 0; i < 10000; ++i)
        sent.push_back(numbered(i));
    zenta.send("midi_5", sent);
    ASSERT_TRUE(waitForPackets(sent.size()));
    EXPECT_TRUE(packets == sent);
}

TEST_F(JackPackets, those_that_found_no_room_are_told_after_those_that_found_some)
{
    constexpr std::size_t Room = SourceLane::RingBytes / 32;
    connect();
    std::size_t deliveredBefore = 0;
    services.setPacketsLost([&] { deliveredBefore = packets.size(); });
    zenta.send("midi_5", Packets(Room + 100, Bytes { 0xB0, 0x2F, 0x41 }));
    ASSERT_TRUE(zenta.hasSentAll("midi_5", Long)); // the main loop does not run meanwhile
    ASSERT_TRUE(loop.runUntil([&] { return deliveredBefore > 0; }, Long));
    EXPECT_EQ(deliveredBefore, Room);
}

TEST_F(JackPackets, packets_wait_while_the_main_thread_is_busy)
{
    const Link link = connect("receiver");
    Packets sent;
    for (int i = 0; i < 3000; ++i)
        sent.push_back(numbered(i));
    zenta.send("midi_5", sent);
    // The main loop does not run while the receiver waits for the packets.
    for (int i = 0; i < 50; ++i) {
        ASSERT_TRUE(send(link, numbered(i)));
        ASSERT_EQ(arrivals(static_cast<std::size_t>(i) + 1).size(), std::size_t(i) + 1);
    }
    EXPECT_TRUE(packets.empty());
    ASSERT_TRUE(waitForPackets(sent.size()));
    EXPECT_TRUE(packets == sent);
}

TEST_F(JackPackets, the_first_packet_sent_on_a_new_link_arrives_every_time)
{
    for (int i = 0; i < 20; ++i) {
        const Link link = connect("receiver");
        ASSERT_TRUE(send(link, numbered(i)));
        const Packets arrived = arrivals(static_cast<std::size_t>(i) + 1);
        ASSERT_EQ(arrived.size(), static_cast<std::size_t>(i) + 1);
        EXPECT_EQ(arrived.back(), numbered(i));
        services.disposeClient(link.client);
    }
}

TEST_F(JackPackets, what_is_sent_before_the_connection_stands_arrives_in_order)
{
    const Link link = connect("receiver");
    Packets sent;
    for (int i = 0; i < 500; ++i) {
        sent.push_back(numbered(i));
        ASSERT_TRUE(send(link, sent.back()));
    }
    EXPECT_EQ(arrivals(500), sent);
}

TEST_F(JackPackets, each_destination_gets_only_what_is_sent_to_it)
{
    const Link link = connect("receiver");
    const auto found = device("receiver");
    ASSERT_TRUE(found);
    const MIDIEndpoint second = found->entities[1].destinations[0];
    const Bytes toSecond { 0x90, 0x01, 0x01 };
    const Bytes toFifth { 0x90, 0x05, 0x05 };
    ASSERT_TRUE(send(link, toFifth));
    ASSERT_TRUE(services.send(link.output, second, { 0, toSecond }));
    ASSERT_TRUE(send(link, toFifth));
    EXPECT_EQ(arrivals(2), (Packets { toFifth, toFifth }));
    EXPECT_EQ(
        receiver.received("midi_2_in", 1, std::chrono::milliseconds(Long)), (Packets { toSecond }));
    EXPECT_EQ(arrivals(2).size(), 2u);
}

TEST_F(JackPackets, each_source_comes_with_the_value_given_for_it)
{
    using Seen = std::vector<std::pair<void*, Bytes>>;
    Seen seen;
    const auto remember = [](MIDIPacketList& list, void* refCon, void* source) {
        while (const auto packet = list.next())
            static_cast<Seen*>(refCon)->emplace_back(
                source, Bytes(packet->data.begin(), packet->data.end()));
    };
    MIDIClient client = 0;
    MIDIPort input = 0;
    ASSERT_TRUE(create(client));
    ASSERT_TRUE(take(services.createInputPort(client, "in", remember, &seen), input));
    const auto found = device("ZENTA");
    ASSERT_TRUE(found);
    int first = 0;
    int second = 0;
    const auto& entities = found->entities;
    ASSERT_TRUE(services.connectSource(input, entities[0].sources[0].endpoint, &first));
    ASSERT_TRUE(services.connectSource(input, entities[1].sources[0].endpoint, &second));
    zenta.send("midi_1", { { 0x90, 0x01, 0x01 } });
    ASSERT_TRUE(loop.runUntil([&] { return seen.size() == 1; }, Long));
    zenta.send("midi_2", { { 0x90, 0x02, 0x02 } });
    ASSERT_TRUE(loop.runUntil([&] { return seen.size() == 2; }, Long));
    EXPECT_EQ(seen[0], std::pair(static_cast<void*>(&first), Bytes { 0x90, 0x01, 0x01 }));
    EXPECT_EQ(seen[1], std::pair(static_cast<void*>(&second), Bytes { 0x90, 0x02, 0x02 }));
}

TEST_F(JackPackets, a_destination_that_vanished_and_returned_is_reached_again)
{
    const Link link = connect("receiver");
    ASSERT_TRUE(send(link, numbered(1)));
    ASSERT_EQ(arrivals(1).size(), 1u);
    receiver.remove("midi_5_in");
    ASSERT_TRUE(waitForNotifications(1));
    EXPECT_TRUE(send(link, numbered(2))); // goes nowhere
    ASSERT_FALSE(services.devices().empty()); // the packet is gone before this is answered
    receiver.addInput("midi_5_in");
    ASSERT_TRUE(waitForNotifications(2));
    ASSERT_TRUE(send(link, numbered(3)));
    const Packets arrived = arrivals(1);
    ASSERT_FALSE(arrived.empty());
    EXPECT_EQ(arrived.back(), numbered(3));
}

TEST_F(JackPackets, a_disposed_port_is_not_read_again_though_its_packets_have_arrived)
{
    const Link link = connect("receiver");
    MIDIPort other = 0;
    std::vector<Bytes> fromOther;
    const auto remember = [](MIDIPacketList& list, void* refCon, void*) {
        while (const auto packet = list.next())
            static_cast<std::vector<Bytes>*>(refCon)->emplace_back(
                packet->data.begin(), packet->data.end());
    };
    ASSERT_TRUE(take(services.createInputPort(link.client, "other", remember, &fromOther), other));
    const auto found = device("ZENTA");
    ASSERT_TRUE(found);
    ASSERT_TRUE(services.connectSource(other, found->entities[0].sources[0].endpoint, nullptr));
    zenta.send("midi_5", { { 0x90, 0x00, 0x00 } });
    zenta.send("midi_1", { { 0x90, 0x01, 0x01 } });
    ASSERT_TRUE(send(link, numbered(1))); // when this packet arrives, the earlier ones have too
    ASSERT_EQ(arrivals(1).size(), 1u);
    services.disposePort(link.input);
    ASSERT_TRUE(loop.runUntil([&] { return !fromOther.empty(); }, Long));
    EXPECT_TRUE(packets.empty());
    EXPECT_EQ(fromOther, (Packets { { 0x90, 0x01, 0x01 } }));
}

// A dialog that opens because of a packet runs such a loop.
TEST_F(JackPackets, a_loop_inside_the_read_callback_gets_what_is_left_and_what_comes_in_order)
{
    struct Dialog {
        JackPackets* test;
        std::vector<Bytes> received;
    } dialog { this, {} };
    const auto open = [](MIDIPacketList& list, void* refCon, void*) {
        auto* self = static_cast<Dialog*>(refCon);
        while (const auto packet = list.next()) {
            self->received.emplace_back(packet->data.begin(), packet->data.end());
            if (self->received.size() != 1)
                continue;
            self->test->zenta.send("midi_1", { numbered(4) });
            EXPECT_TRUE(
                self->test->loop.runUntil([self] { return self->received.size() == 4; }, Long));
        }
    };
    MIDIClient client = 0;
    MIDIPort input = 0;
    ASSERT_TRUE(create(client));
    ASSERT_TRUE(take(services.createInputPort(client, "in", open, &dialog), input));
    const auto found = device("ZENTA");
    ASSERT_TRUE(found);
    ASSERT_TRUE(services.connectSource(input, found->entities[0].sources[0].endpoint, nullptr));
    zenta.send("midi_1", { numbered(1), numbered(2), numbered(3) });
    ASSERT_TRUE(loop.runUntil([&] { return !dialog.received.empty(); }, Long));
    EXPECT_EQ(dialog.received, (Packets { numbered(1), numbered(2), numbered(3), numbered(4) }));
    zenta.send("midi_1", { numbered(5) });
    ASSERT_TRUE(loop.runUntil([&] { return dialog.received.size() == 5; }, Long));
    EXPECT_EQ(dialog.received.back(), numbered(5));
}

TEST_F(JackPackets, a_read_callback_may_dispose_of_the_client)
{
    struct Closing {
        JackPackets* test;
        MIDIClient client;
        int calls;
    } closing { this, 0, 0 };
    const auto close = [](MIDIPacketList& list, void* refCon, void*) {
        auto* self = static_cast<Closing*>(refCon);
        ++self->calls;
        EXPECT_TRUE(list.next());
        self->test->services.disposeClient(self->client);
        EXPECT_FALSE(list.next()) << "the second packet came to a port that is gone";
    };
    MIDIPort input = 0;
    ASSERT_TRUE(create(closing.client));
    ASSERT_TRUE(take(services.createInputPort(closing.client, "in", close, &closing), input));
    const auto found = device("ZENTA");
    ASSERT_TRUE(found);
    for (const MIDIEntity& entity : found->entities)
        ASSERT_TRUE(services.connectSource(input, entity.sources[0].endpoint, nullptr));
    zenta.send("midi_1", { { 0x90, 0x00, 0x00 }, { 0x90, 0x00, 0x00 } });
    zenta.send("midi_2", { { 0x90, 0x00, 0x00 } });
    ASSERT_TRUE(loop.runUntil([&] { return closing.calls > 0; }, Long));
    connect(); // everything works as at the first start
    zenta.send("midi_5", { { 0x90, 0x00, 0x00 } });
    ASSERT_TRUE(waitForPackets(1));
    EXPECT_EQ(closing.calls, 1);
}

} // namespace
} // namespace kestrel::test
