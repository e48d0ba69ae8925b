#include "platform/macos/CoreMIDIServices.h"

#include "platform/macos/CFHolder.h"
#include "tests/support/ManualMainLoop.h"

#include <CoreMIDI/CoreMIDI.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace kestrel::test {
namespace {

using testing::ElementsAre;
using Bytes = std::vector<std::uint8_t>;

// Collects the packets that arrive.
class Inbox {
public:
    void put(Bytes packet)
    {
        const std::scoped_lock lock(m_mutex);
        m_packets.push_back(std::move(packet));
        m_changed.notify_all();
    }

    // Waits for `count` packets and returns them, fewer after the timeout.
    std::vector<Bytes> packets(std::size_t count)
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait_for(
            lock, std::chrono::seconds(10), [&] { return m_packets.size() >= count; });
        return m_packets;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<Bytes> m_packets;
};

const std::thread::id mainThread = std::this_thread::get_id();

void readIntoInbox(MIDIPacketList& packets, void* refCon, void* srcConnRefCon)
{
    EXPECT_EQ(std::this_thread::get_id(), mainThread);
    while (const auto packet = packets.next()) {
        Bytes entry(packet->data.begin(), packet->data.end());
        entry.insert(entry.begin(), *static_cast<std::uint8_t*>(srcConnRefCon));
        static_cast<Inbox*>(refCon)->put(std::move(entry));
    }
}

// Another program on the same MIDI services, with one virtual source and one virtual destination.
class Peer {
public:
    Peer()
    {
        EXPECT_EQ(MIDIClientCreate(CFSTR("Kestrel tests"), nullptr, nullptr, &m_client), noErr);
        EXPECT_EQ(MIDISourceCreate(m_client, CFSTR("Kestrel test source"), &source), noErr);
        EXPECT_EQ(MIDIDestinationCreate(m_client, CFSTR("Kestrel test destination"), &Peer::receive,
                      this, &destination),
            noErr);
    }
    ~Peer()
    {
        MIDIEndpointDispose(source);
        MIDIEndpointDispose(destination);
        MIDIClientDispose(m_client);
    }
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    void play(const Bytes& data)
    {
        ::MIDIPacketList list;
        ASSERT_NE(MIDIPacketListAdd(
                      &list, sizeof list, MIDIPacketListInit(&list), 0, data.size(), data.data()),
            nullptr);
        ASSERT_EQ(MIDIReceived(source, &list), noErr);
    }

    MIDIEndpointRef source = 0;
    MIDIEndpointRef destination = 0;
    Inbox received;

private:
    static void receive(const ::MIDIPacketList* list, void* refCon, void*)
    {
        const ::MIDIPacket* packet = &list->packet[0];
        for (UInt32 i = 0; i < list->numPackets; ++i, packet = MIDIPacketNext(packet)) {
            static_cast<Peer*>(refCon)->received.put(
                Bytes(packet->data, packet->data + packet->length));
        }
    }

    MIDIClientRef m_client = 0;
};

class CoreMIDIServicesTest : public testing::Test {
protected:
    void SetUp() override
    {
        createClientWithInput();
        outputPort = services.createOutputPort(client, "out").value_or(0);
        ASSERT_NE(outputPort, 0U);
        ASSERT_TRUE(services.connectSource(inputPort, peer.source, &mark));
    }

    void createClientWithInput()
    {
        client = services.createClient("Kestrel test client", nullptr, nullptr).value_or(0);
        ASSERT_NE(client, 0U);
        inputPort = services.createInputPort(client, "in", readIntoInbox, &inbox).value_or(0);
        ASSERT_NE(inputPort, 0U);
    }

    // Waits until the port has read `count` packets and returns them, fewer after the timeout.
    std::vector<Bytes> readBy(Inbox& port, std::size_t count)
    {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (port.packets(0).size() < count && std::chrono::steady_clock::now() < deadline) {
            mainLoop.turn();
            std::this_thread::yield();
        }
        return port.packets(0);
    }

    Peer peer;
    Inbox inbox;
    ManualMainLoop mainLoop;
    CoreMIDIServices services { mainLoop };
    MIDIClient client = 0;
    MIDIPort inputPort = 0;
    MIDIPort outputPort = 0;
    std::uint8_t mark = 0x55; // the connection's reference value
};

TEST_F(CoreMIDIServicesTest, what_a_source_plays_is_read_with_its_connection_reference)
{
    peer.play({ 0x90, 0x00, 0x00 });
    EXPECT_THAT(readBy(inbox, 1), ElementsAre(Bytes { 0x55, 0x90, 0x00, 0x00 }));
}

TEST_F(CoreMIDIServicesTest, packets_are_read_in_the_order_in_which_they_were_played)
{
    for (std::uint8_t value = 0; value < 100; ++value)
        peer.play({ 0xB0, 0x0F, value });
    const auto packets = readBy(inbox, 100);
    ASSERT_EQ(packets.size(), 100U);
    for (std::uint8_t value = 0; value < 100; ++value)
        EXPECT_EQ(packets[value], (Bytes { 0x55, 0xB0, 0x0F, value }));
}

TEST_F(CoreMIDIServicesTest, a_packet_is_sent_to_its_destination)
{
    const Bytes answer { 0x90, 0x00, 0x7F };
    ASSERT_TRUE(services.send(outputPort, peer.destination, { .timeStamp = 0, .data = answer }));
    EXPECT_THAT(peer.received.packets(1), ElementsAre(answer));
}

TEST_F(CoreMIDIServicesTest, a_system_exclusive_message_beyond_the_usual_size_arrives_complete)
{
    Bytes sysex(3000, 0x20);
    sysex.front() = 0xF0;
    sysex.back() = 0xF7;
    ASSERT_TRUE(services.send(outputPort, peer.destination, { .timeStamp = 0, .data = sysex }));

    Bytes arrived;
    for (std::size_t count = 1; arrived.size() < sysex.size(); ++count) {
        const auto packets = peer.received.packets(count);
        ASSERT_GE(packets.size(), count);
        arrived.insert(arrived.end(), packets[count - 1].begin(), packets[count - 1].end());
    }
    EXPECT_EQ(arrived, sysex);
}

TEST_F(CoreMIDIServicesTest, what_no_packet_list_can_hold_is_refused)
{
    const Bytes tooLarge(65536 - 14 + 1, 0x20);
    EXPECT_FALSE(services.send(outputPort, peer.destination, { .timeStamp = 0, .data = tooLarge }));
    EXPECT_FALSE(services.send(outputPort, peer.destination, {}));
}

TEST_F(CoreMIDIServicesTest, a_disposed_port_reads_nothing_more_while_its_successor_does)
{
    services.disposePort(inputPort);
    Inbox second;
    const auto port = services.createInputPort(client, "in again", readIntoInbox, &second);
    ASSERT_TRUE(port);
    ASSERT_TRUE(services.connectSource(*port, peer.source, &mark));

    peer.play({ 0x90, 0x00, 0x00 });
    EXPECT_EQ(readBy(second, 1).size(), 1U);
    EXPECT_TRUE(inbox.packets(0).empty());
}

TEST_F(CoreMIDIServicesTest, a_client_can_be_rebuilt_again_and_again)
{
    for (int i = 0; i < 100; ++i) {
        services.disposeClient(client);
        createClientWithInput();
    }
    ASSERT_TRUE(services.connectSource(inputPort, peer.source, &mark));
    peer.play({ 0x90, 0x00, 0x00 });
    EXPECT_EQ(readBy(inbox, 1).size(), 1U);
}

TEST_F(CoreMIDIServicesTest, an_unknown_client_gets_no_port)
{
    EXPECT_FALSE(services.createInputPort(0xFFFFFFF0, "in", readIntoInbox, &inbox));
    EXPECT_FALSE(services.createOutputPort(0xFFFFFFF0, "out"));
}

TEST_F(CoreMIDIServicesTest, virtual_endpoints_belong_to_no_device)
{
    for (const auto& device : services.devices()) {
        for (const auto& entity : device.entities) {
            for (const auto& source : entity.sources)
                EXPECT_NE(source.endpoint, peer.source);
        }
    }
}

} // namespace
} // namespace kestrel::test
