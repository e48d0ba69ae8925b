#include "tests/platform/macos/CoreMIDIFixture.h"

namespace kestrel::test {

CoreMIDIFixture::CoreMIDIFixture()
{
    console = server.addDevice(CFSTR("ZENTA"), 5, 1, 1);
    const auto& fifth = server.setup.device(console)->entities[4];
    source = fifth.sources[0].ref;
    destination = fifth.destinations[0];
}

CoreMIDIFixture::~CoreMIDIFixture()
{
    calls() = {};
    server.receiveThread.finish();
    services.reset();
    server.removeDevice(console);
    server.runNotifications();
    server.sent.clear();
    EXPECT_EQ(server.ports.size(), m_portsBefore);
    EXPECT_LE(server.clients.size(), 1U) << "the services keep no more than one client";
}

void CoreMIDIFixture::read(MIDIPacketList& packets, void* received, void* mark)
{
    while (const auto packet = packets.next()) {
        auto& entry = static_cast<Packets*>(received)->emplace_back();
        entry.push_back(*static_cast<std::uint8_t*>(mark));
        entry.insert(entry.end(), packet->data.begin(), packet->data.end());
    }
}

MIDIClient CoreMIDIFixture::createClient()
{
    return services->createClient("client", nullptr, nullptr).value_or(0);
}

MIDIPort CoreMIDIFixture::createConnectedPort(MIDIClient client, Packets& received)
{
    const auto port = services->createInputPort(client, "in", read, &received).value_or(0);
    EXPECT_TRUE(services->connectSource(port, source, &mark));
    return port;
}

void CoreMIDIFixture::play(std::vector<std::uint8_t> data) const
{
    ::MIDIPacketList list;
    EXPECT_NE(MIDIPacketListAdd(
                  &list, sizeof list, MIDIPacketListInit(&list), 0, data.size(), data.data()),
        nullptr);
    EXPECT_EQ(MIDIReceived(source, &list), noErr);
}

void CoreMIDIFixture::receiveAll()
{
    server.receiveThread.finish();
    mainLoop.turn();
}

} // namespace kestrel::test
