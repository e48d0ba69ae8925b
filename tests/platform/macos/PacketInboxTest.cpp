#include "platform/macos/PacketInbox.h"

#include "tests/support/ManualMainLoop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <thread>

namespace kestrel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Bytes = std::vector<std::uint8_t>;

class Packets final : public MIDIPacketList {
public:
    explicit Packets(std::vector<Bytes> packets)
        : m_packets(std::move(packets))
    {
    }
    std::optional<MIDIPacket> next() override
    {
        if (m_next == m_packets.size())
            return {};
        const Bytes& packet = m_packets[m_next++];
        return MIDIPacket { m_next, packet };
    }

private:
    std::vector<Bytes> m_packets;
    std::size_t m_next = 0;
};

// A port on a main loop that runs only when the test runs it.
struct Port {
    static void read(MIDIPacketList& packets, void* refCon, void* srcConnRefCon)
    {
        auto* port = static_cast<Port*>(refCon);
        ++port->calls;
        while (const auto packet = packets.next()) {
            port->received.emplace_back(packet->data.begin(), packet->data.end());
            port->timeStamps.push_back(packet->timeStamp);
        }
        port->connection = srcConnRefCon;
        if (port->onRead)
            port->onRead();
    }

    void put(std::vector<Bytes> list, void* srcConnRefCon = nullptr) const
    {
        Packets packets(std::move(list));
        inbox->put(packets, srcConnRefCon);
    }

    int calls = 0;
    std::vector<Bytes> received;
    std::vector<std::uint64_t> timeStamps;
    void* connection = nullptr;
    std::function<void()> onRead;
    ManualMainLoop mainLoop;
    std::shared_ptr<PacketInbox> inbox = std::make_shared<PacketInbox>(mainLoop, read, this);
};

TEST(PacketInbox, a_packet_reaches_the_read_callback_in_a_later_call)
{
    Port port;
    int mark = 0;
    port.put({ { 0x90, 0x00, 0x00 } }, &mark);
    EXPECT_EQ(port.calls, 0);
    port.mainLoop.turn();
    EXPECT_THAT(port.received, ElementsAre(Bytes { 0x90, 0x00, 0x00 }));
    EXPECT_THAT(port.timeStamps, ElementsAre(1u));
    EXPECT_EQ(port.connection, &mark);
}

TEST(PacketInbox, a_burst_costs_one_wake_up_and_is_one_call_a_packet_in_order)
{
    Port port;
    port.put({ { 1 }, {}, { 2, 2 } });
    port.put({ Bytes(65536, 0x55) });
    EXPECT_EQ(port.mainLoop.turn(), 1);
    EXPECT_EQ(port.calls, 4);
    EXPECT_THAT(
        port.received, ElementsAre(Bytes { 1 }, IsEmpty(), Bytes { 2, 2 }, Bytes(65536, 0x55)));
    port.put({ { 3 } });
    EXPECT_EQ(port.mainLoop.turn(), 1);
    EXPECT_EQ(port.calls, 5);
}

TEST(PacketInbox, a_closed_one_drops_what_has_arrived_and_what_comes_later)
{
    Port port;
    port.put({ { 1 } });
    port.inbox->close();
    port.put({ { 2 } });
    port.mainLoop.turn();
    EXPECT_EQ(port.calls, 0);
}

TEST(PacketInbox, a_read_callback_may_close_it)
{
    Port port;
    port.onRead = [&port] {
        port.inbox->close();
        port.inbox.reset();
    };
    port.put({ { 1 }, { 2 } });
    port.mainLoop.turn();
    EXPECT_THAT(port.received, ElementsAre(Bytes { 1 }));
}

TEST(PacketInbox, one_that_is_gone_is_not_woken)
{
    Port port;
    port.put({ { 1 } });
    port.inbox.reset();
    port.mainLoop.turn();
    EXPECT_EQ(port.calls, 0);
}

TEST(PacketInbox, a_loop_inside_the_read_callback_gets_what_is_left_and_what_comes_in_order)
{
    Port port;
    port.onRead = [&port] {
        port.onRead = {};
        port.put({ { 3 } });
        port.mainLoop.turn();
        EXPECT_EQ(port.calls, 3) << "a dialog does not hold up packets";
    };
    port.put({ { 1 }, { 2 } });
    port.mainLoop.turn();
    EXPECT_THAT(port.received, ElementsAre(Bytes { 1 }, Bytes { 2 }, Bytes { 3 }));
}

TEST(PacketInbox, packets_from_another_thread_keep_their_order)
{
    Port port;
    std::thread service([&port] {
        for (int i = 0; i < 1000; ++i)
            port.put({ { static_cast<std::uint8_t>(i >> 8), static_cast<std::uint8_t>(i) } });
    });
    while (port.received.size() < 1000)
        port.mainLoop.turn();
    service.join();
    EXPECT_EQ(port.received.front(), (Bytes { 0, 0 }));
    EXPECT_TRUE(std::is_sorted(port.received.begin(), port.received.end()));
    EXPECT_EQ(port.received.back(), (Bytes { 0x03, 0xE7 }));
}

} // namespace
} // namespace kestrel::test
