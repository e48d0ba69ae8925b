#include "platform/linux/midi/PortChanges.h"
#include "tests/platform/linux/midi/JackFixture.h"

#include <gmock/gmock.h>

#include <atomic>
#include <thread>

namespace kestrel::test {
namespace {

// A patchbay that cuts connections of the link. Each cycle that comes too late is a loss as well.
class JackConnections : public JackFixture {
public:
    JackConnections()
    {
        zenta.addPairs(5);
        receiver.addPairs(5);
        link = connect("receiver");
    }

    JackPeer zenta { "ZENTA" };
    JackPeer receiver { "receiver" };
    Link link;
};

using Texts = std::vector<std::string>;
using std::chrono::milliseconds;
using testing::AllOf;
using testing::Ge;
using testing::Le;

TEST_F(JackConnections, a_cut_connection_from_a_source_is_a_loss_and_the_removal_of_the_source)
{
    const Texts ours = zenta.connections("ZENTA:midi_5");
    ASSERT_EQ(ours.size(), 1u);
    ASSERT_TRUE(receiver.disconnect("ZENTA:midi_5", ours[0]));
    ASSERT_TRUE(waitForNotifications(1));
    EXPECT_EQ(notifications, (Texts { "removed source" }));
    EXPECT_THAT(losses, AllOf(Ge(1), Le(1 + zenta.lateCycles())));
    services.disposeClient(link.client);
    connect("receiver");
    zenta.send("midi_5", { { 0x90, 0x00, 0x00 } });
    EXPECT_TRUE(waitForPackets(1));
}

TEST_F(JackConnections, a_cut_connection_to_the_destination_is_made_again_for_the_next_packet)
{
    ASSERT_TRUE(send(link, { 0x90, 0x00, 0x01 }));
    ASSERT_EQ(receiver.received("midi_5_in", 1, milliseconds(Long)).size(), 1u);
    for (std::uint8_t i = 0; i < 5; ++i) {
        const Texts ours = receiver.connections("receiver:midi_5_in");
        ASSERT_EQ(ours.size(), 1u);
        ASSERT_TRUE(zenta.disconnect(ours[0], "receiver:midi_5_in"));
        ASSERT_TRUE(loop.runUntil(
            [this] { return receiver.connections("receiver:midi_5_in").empty(); }, Long));
        // The services learn of it on a thread of JACK, so the first packet may come too early.
        const std::size_t before = receiver.received("midi_5_in", 0, milliseconds(0)).size();
        ASSERT_TRUE(loop.runUntil(
            [&] {
                EXPECT_TRUE(send(link, { 0x90, 0x00, i }));
                return receiver.received("midi_5_in", before + 1, 100ms).size() > before;
            },
            Long));
    }
    EXPECT_EQ(notifications, Texts {});
    EXPECT_LE(losses, zenta.lateCycles());
}

TEST_F(JackConnections, a_connection_that_somebody_else_made_is_not_ours_to_miss)
{
    const Texts ours = zenta.connections("ZENTA:midi_5");
    ASSERT_EQ(ours.size(), 1u);
    ASSERT_TRUE(receiver.connect("ZENTA:midi_1", ours[0]));
    ASSERT_TRUE(receiver.disconnect("ZENTA:midi_1", ours[0]));
    zenta.send("midi_5", { { 0x90, 0x00, 0x00 } });
    ASSERT_TRUE(waitForPackets(1));
    loop.runFor(2 * PortChanges::Settling);
    EXPECT_EQ(notifications, Texts {});
    EXPECT_LE(losses, zenta.lateCycles());
}

// The cut is told among the news of other changes of the graph, in any order with them.
TEST_F(JackConnections, a_cut_is_noticed_while_other_connections_come_and_go)
{
    std::atomic<bool> isOver = false;
    std::thread others([&] {
        while (!isOver) {
            EXPECT_TRUE(receiver.connect("ZENTA:midi_1", "receiver:midi_1_in"));
            EXPECT_TRUE(receiver.disconnect("ZENTA:midi_1", "receiver:midi_1_in"));
        }
    });
    for (int round = 0; round < 5; ++round) {
        notifications.clear();
        const Texts ours = zenta.connections("ZENTA:midi_5");
        EXPECT_EQ(ours.size(), 1u);
        EXPECT_TRUE(zenta.disconnect("ZENTA:midi_5", ours.empty() ? "" : ours[0]));
        EXPECT_TRUE(loop.runUntil([this] { return !notifications.empty(); }, Long)) << round;
        services.disposeClient(link.client);
        link = connect("receiver");
    }
    isOver = true;
    others.join();
}

// A patchbay that knows only the connections of its own plan does so.
TEST_F(JackConnections, a_connection_that_is_cut_as_soon_as_it_stands_is_missed)
{
    services.disposeClient(link.client);
    for (int round = 0; round < 5; ++round) {
        notifications.clear();
        std::thread patchbay([this] {
            Texts found;
            while (found.empty())
                found = zenta.connections("ZENTA:midi_5");
            EXPECT_TRUE(zenta.disconnect("ZENTA:midi_5", found[0]));
        });
        MIDIClient client = 0;
        MIDIPort input = 0;
        EXPECT_TRUE(create(client));
        EXPECT_TRUE(take(services.createInputPort(client, "in", read, this), input));
        const auto found = device("ZENTA");
        const bool stood
            = services.connectSource(input, found->entities.at(4).sources.at(0).endpoint, &idArray);
        EXPECT_TRUE(!stood || waitForNotifications(1)) << round;
        patchbay.join();
        services.disposeClient(client);
    }
}

TEST_F(JackConnections, those_of_a_disposed_port_are_not_missed)
{
    services.disposePort(link.input);
    loop.runFor(2 * PortChanges::Settling);
    EXPECT_TRUE(zenta.connections("ZENTA:midi_5").empty());
    EXPECT_EQ(notifications, Texts {});
    EXPECT_LE(losses, zenta.lateCycles());
}

} // namespace
} // namespace kestrel::test
