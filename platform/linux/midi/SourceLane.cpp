#include "platform/linux/midi/SourceLane.h"

#include <jack/jack.h>
#include <jack/midiport.h>

#include <algorithm>
#include <utility>

namespace kestrel {

namespace {
// The packets that have arrived by the time this object is made. It uses the lane's own read
// position: when the read callback runs the main loop, a nested delivery begins with the packets
// that this one has not delivered yet.
class ArrivedPackets final : public MIDIPacketList {
public:
    ArrivedPackets(PacketRing& ring, PacketRing::Position& at, const std::atomic<bool>& isClosed)
        : m_ring(ring)
        , m_at(at)
        , m_isClosed(isClosed)
        , m_end(ring.end())
    {
    }
    ~ArrivedPackets()
    {
        m_at = std::max(m_at, m_end);
        m_ring.release(m_at);
    }
    ArrivedPackets(const ArrivedPackets&) = delete;
    ArrivedPackets& operator=(const ArrivedPackets&) = delete;

    [[nodiscard]] bool isEmpty() const { return m_isClosed || m_at >= m_end; }
    std::optional<MIDIPacket> next() override
    {
        return isEmpty() ? std::nullopt : m_ring.read(m_at, m_end);
    }

private:
    PacketRing& m_ring;
    PacketRing::Position& m_at;
    const std::atomic<bool>& m_isClosed;
    const PacketRing::Position m_end;
};
} // namespace

SourceLane::SourceLane(std::string sourceName, void* srcConnRefCon)
    : m_sourceName(std::move(sourceName))
    , m_srcConnRefCon(srcConnRefCon)
{
}

SourceLane::Received SourceLane::receive(_jack_client* client, std::uint32_t frames)
{
    void* const buffer = jack_port_get_buffer(m_port, frames);
    if (!buffer)
        return {};
    const bool lostEvents = jack_midi_get_lost_event_count(buffer) > 0;
    const std::uint32_t count = jack_midi_get_event_count(buffer);
    if (count == 0)
        return { false, lostEvents };
    const jack_nframes_t cycleStart = jack_last_frame_time(client);
    for (std::uint32_t i = 0; i < count; ++i) {
        jack_midi_event_t event;
        if (jack_midi_event_get(&event, buffer, i) != 0)
            continue;
        // The time stamp is in microseconds of JACK's clock.
        m_ring.write(
            jack_frames_to_time(client, cycleStart + event.time), { event.buffer, event.size });
    }
    return { true, lostEvents };
}

bool SourceLane::takeLoss()
{
    const std::uint64_t losses = m_ring.lost();
    return std::exchange(m_knownLosses, losses) != losses;
}

void SourceLane::deliver(MIDIServices::ReadProc read, void* readProcRefCon)
{
    ArrivedPackets packets(m_ring, m_taken, m_isClosed);
    if (!packets.isEmpty())
        read(packets, readProcRefCon, m_srcConnRefCon);
}

} // namespace kestrel
