#include "tests/platform/linux/midi/JackFixture.h"

#include <cstdlib>

namespace kestrel::test {

JackFixture::JackFixture(Cycles cycles)
    : server(cycles)
{
    ::setenv("JACK_DEFAULT_SERVER", server.name().c_str(), 1);
    services.setPacketsLost([this] { ++losses; });
}

void JackFixture::notified(const MIDINotification& notification, void* refCon)
{
    std::string text = notification.messageID == MIDINotification::ObjectAdded ? "added "
        : notification.messageID == MIDINotification::ObjectRemoved            ? "removed "
                                                                               : "? ";
    text += notification.childType == MIDINotification::Source    ? "source"
        : notification.childType == MIDINotification::Destination ? "destination"
                                                                  : "?";
    static_cast<JackFixture*>(refCon)->notifications.push_back(text);
}

void JackFixture::read(MIDIPacketList& list, void* readProcRefCon, void* srcConnRefCon)
{
    auto* self = static_cast<JackFixture*>(readProcRefCon);
    EXPECT_EQ(srcConnRefCon, &self->idArray);
    ++self->lists;
    while (const auto packet = list.next()) {
        self->packets.emplace_back(packet->data.begin(), packet->data.end());
        self->arrivals.push_back(PollMainLoop::Clock::now());
    }
}

bool JackFixture::take(std::optional<std::uint32_t> created, std::uint32_t& reference)
{
    reference = created.value_or(reference);
    return created.has_value();
}

bool JackFixture::create(MIDIClient& client)
{
    return take(services.createClient("inputMIDIReceiver Client", notified, this), client);
}

std::optional<MIDIDevice> JackFixture::device(const std::string& model)
{
    for (const MIDIDevice& device : services.devices()) {
        if (device.model == model)
            return device;
    }
    return {};
}

JackFixture::Link JackFixture::connect(const std::string& receiver)
{
    Link link;
    EXPECT_TRUE(create(link.client));
    EXPECT_TRUE(take(services.createOutputPort(link.client, "Output Port"), link.output));
    EXPECT_TRUE(take(services.createInputPort(link.client, "Input Port", read, this), link.input));
    const auto to = device(receiver);
    EXPECT_TRUE(to);
    if (to)
        link.destination = to->entities.back().destinations.at(0);
    const auto zenta = device("ZENTA");
    EXPECT_TRUE(zenta);
    if (zenta) {
        EXPECT_TRUE(services.connectSource(
            link.input, zenta->entities.back().sources.at(0).endpoint, &idArray));
    }
    return link;
}

bool JackFixture::waitForPackets(std::size_t count)
{
    return loop.runUntil([&] { return packets.size() >= count; }, Long);
}

bool JackFixture::waitForNotifications(std::size_t count)
{
    return loop.runUntil([&] { return notifications.size() >= count; }, Long);
}

bool JackFixture::send(const Link& link, const Bytes& packet)
{
    return services.send(link.output, link.destination, { 0, packet });
}

} // namespace kestrel::test
