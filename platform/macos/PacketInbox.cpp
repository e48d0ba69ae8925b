#include "platform/macos/PacketInbox.h"

#include "platform/MainLoop.h"

#include <optional>
#include <utility>

namespace kestrel {

namespace {
class OnePacket final : public MIDIPacketList {
public:
    explicit OnePacket(const MIDIPacket& packet)
        : m_packet(packet)
    {
    }
    std::optional<MIDIPacket> next() override { return std::exchange(m_packet, std::nullopt); }

private:
    std::optional<MIDIPacket> m_packet;
};
} // namespace

PacketInbox::PacketInbox(MainLoop& mainLoop, MIDIServices::ReadProc read, void* readProcRefCon)
    : m_mainLoop(mainLoop)
    , m_read(read)
    , m_readProcRefCon(readProcRefCon)
{
}

void PacketInbox::put(MIDIPacketList& packets, void* srcConnRefCon)
{
    while (const auto packet = packets.next()) {
        auto arrival = std::make_unique<ArrivalQueue<Packet>::Arrival>(*packet, srcConnRefCon);
        if (!m_packets.push(std::move(arrival)))
            continue;
        m_mainLoop.perform([inbox = weak_from_this()] {
            if (const auto self = inbox.lock())
                self->deliver();
        });
    }
}

void PacketInbox::deliver()
{
    m_packets.drain([this](const Packet& packet) {
        OnePacket list({ packet.timeStamp, packet.data });
        if (m_read)
            m_read(list, m_readProcRefCon, packet.srcConnRefCon);
    });
}

} // namespace kestrel
