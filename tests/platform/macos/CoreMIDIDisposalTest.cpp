#include "tests/platform/macos/CoreMIDIFixture.h"

#include <gmock/gmock.h>

#include <atomic>
#include <thread>

namespace kestrel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Bytes = std::vector<std::uint8_t>;

using CoreMIDIDisposalTest = CoreMIDIFixture;

TEST_F(CoreMIDIDisposalTest, a_delivery_under_way_does_not_reach_a_disposed_port)
{
    Packets received;
    const MIDIClient client = createClient();
    const MIDIPort port = createConnectedPort(client, received);
    server.receiveThread.hold(true);
    play({ 0x90, 0x00, 0x00 });
    services->disposePort(port);
    server.receiveThread.hold(false);
    receiveAll();
    EXPECT_THAT(received, IsEmpty());
}

TEST_F(CoreMIDIDisposalTest, a_delivery_under_way_does_not_reach_a_port_of_a_disposed_client)
{
    Packets received;
    const MIDIClient client = createClient();
    createConnectedPort(client, received);
    server.receiveThread.hold(true);
    play({ 0x90, 0x00, 0x00 });
    services->disposeClient(client);
    server.receiveThread.hold(false);
    receiveAll();
    EXPECT_THAT(received, IsEmpty());
}

TEST_F(CoreMIDIDisposalTest, a_delivery_under_way_does_not_reach_the_port_that_comes_after)
{
    Packets before;
    Packets after;
    const MIDIClient client = createClient();
    const MIDIPort port = createConnectedPort(client, before);
    server.receiveThread.hold(true);
    play({ 0x90, 0x00, 0x00 });
    services->disposePort(port);
    createConnectedPort(client, after);
    play({ 0xF8 });
    server.receiveThread.hold(false);
    receiveAll();
    EXPECT_THAT(before, IsEmpty());
    EXPECT_THAT(after, ElementsAre(Bytes { 0x55, 0xF8 }));
}

TEST_F(CoreMIDIDisposalTest, what_has_arrived_is_dropped_with_its_port)
{
    Packets received;
    const MIDIPort port = createConnectedPort(createClient(), received);
    play({ 0x90, 0x00, 0x00 });
    server.receiveThread.finish();
    services->disposePort(port);
    receiveAll();
    EXPECT_THAT(received, IsEmpty());
}

TEST_F(CoreMIDIDisposalTest, services_may_end_while_a_delivery_is_under_way)
{
    Packets received;
    createConnectedPort(createClient(), received);
    server.receiveThread.hold(true);
    play({ 0x90, 0x00, 0x00 });
    services.reset();
    server.receiveThread.hold(false);
    receiveAll();
    EXPECT_THAT(received, IsEmpty());
}

TEST_F(CoreMIDIDisposalTest, a_read_callback_may_dispose_of_its_client)
{
    struct Reader {
        CoreMIDIServices& services;
        MIDIClient client;
        int calls;
    } reader { *services, createClient(), 0 };
    const auto port = services->createInputPort(
        reader.client, "in",
        [](MIDIPacketList&, void* refCon, void*) {
            auto* const reader = static_cast<Reader*>(refCon);
            ++reader->calls;
            reader->services.disposeClient(reader->client);
        },
        &reader);
    ASSERT_TRUE(port && services->connectSource(*port, source, nullptr));
    play({ 0x90, 0x00, 0x00 });
    play({ 0x90, 0x00, 0x00 });
    receiveAll();
    EXPECT_EQ(reader.calls, 1);
}

// For the sanitizers: the link is built and released while the console sends all the time.
TEST_F(CoreMIDIDisposalTest, a_link_is_rebuilt_again_and_again_while_packets_come)
{
    std::atomic<bool> ending = false;
    std::thread player([this, &ending] {
        while (!ending) {
            play({ 0xB0, 0x0F, 0x05 });
            server.receiveThread.finish();
        }
    });
    std::size_t arrived = 0;
    for (int i = 0; i < 100 || arrived == 0; ++i) {
        Packets received;
        const MIDIClient client = createClient();
        const MIDIPort port = createConnectedPort(client, received);
        while (i % 2 == 0 && received.empty())
            mainLoop.turn();
        if (i % 3 == 0)
            services->disposePort(port);
        services->disposeClient(client);
        arrived += received.size();
        const auto read = received.size();
        mainLoop.turn();
        ASSERT_EQ(received.size(), read) << "read after the disposal";
    }
    ending = true;
    player.join();
}

} // namespace
} // namespace kestrel::test
