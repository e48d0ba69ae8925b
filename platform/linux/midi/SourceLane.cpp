#include "platform/linux/midi/SourceLane.h"

#include <jack/jack.h>
#include <jack/midiport.h>

#include <algorithm>
#include <utility>

namespace kestrel {

// The packets up to the next loss, of those that had arrived when this object was made. It uses the
// lane's own read position: when the read callback runs the main loop, a nested delivery begins
// with the packets that this one has not delivered yet.
class SourceLane::ArrivedPackets final : public MIDIPacketList {
public:
    ArrivedPackets(SourceLane& lane, PacketRing::Position end)
        : m_lane(lane)
        , m_end(end)
    {
    }
    ~ArrivedPackets()
    {
        while (next())
            ;
        m_lane.m_ring.release(m_lane.m_taken);
    }
    ArrivedPackets(const ArrivedPackets&) = delete;
    ArrivedPackets& operator=(const ArrivedPackets&) = delete;

    [[nodiscard]] bool isEmpty() const
    {
        return m_lane.m_isClosed || m_lane.m_taken >= m_end
            || m_lane.isUntold(m_lane.m_ring.lossesBefore(m_lane.m_taken));
    }
    std::optional<MIDIPacket> next() override
    {
        return isEmpty() ? std::nullopt : m_lane.m_ring.read(m_lane.m_taken, m_end);
    }

private:
    SourceLane& m_lane;
    const PacketRing::Position m_end;
};

SourceLane::SourceLane(std::string sourceName, void* srcConnRefCon)
    : m_sourceName(std::move(sourceName))
    , m_srcConnRefCon(srcConnRefCon)
{
}

bool SourceLane::receive(_jack_client* client, std::uint32_t frames)
{
    void* const buffer = jack_port_get_buffer(m_port, frames);
    if (!buffer)
        return false;
    const std::uint32_t count = jack_midi_get_event_count(buffer);
    const jack_nframes_t cycleStart = count > 0 ? jack_last_frame_time(client) : 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        jack_midi_event_t event;
        if (jack_midi_event_get(&event, buffer, i) != 0)
            continue;
        // The time stamp is in microseconds of JACK's clock.
        m_ring.write(
            jack_frames_to_time(client, cycleStart + event.time), { event.buffer, event.size });
    }
    const bool lostEvents = jack_midi_get_lost_event_count(buffer) > 0; // the buffer was full
    if (lostEvents)
        markLoss();
    return count > 0 || lostEvents;
}

void SourceLane::deliver(
    MIDIServices::ReadProc read, void* readProcRefCon, const std::function<void()>& lost)
{
    const std::uint32_t losses = m_ring.losses(); // before the end, or it could overtake packets
    const PacketRing::Position end = m_ring.end();
    do {
        ArrivedPackets packets(*this, end);
        if (!packets.isEmpty())
            read(packets, readProcRefCon, m_srcConnRefCon);
    } while (tellLoss(end, losses, lost));
}

// True for losses that have not been told yet. A nested delivery may have told of later ones, and a
// loss may have been told before a packet that counts it too late. The count may wrap around.
bool SourceLane::isUntold(std::uint32_t losses) const
{
    return static_cast<std::int32_t>(losses - m_toldLosses) > 0;
}

// True when packets remain after the loss.
bool SourceLane::tellLoss(
    PacketRing::Position end, std::uint32_t losses, const std::function<void()>& lost)
{
    if (m_isClosed)
        return false;
    const bool packetsRemain = m_taken < end;
    const std::uint32_t next = packetsRemain ? m_ring.lossesBefore(m_taken) : losses;
    if (!isUntold(next))
        return false;
    m_toldLosses = next;
    lost();
    return packetsRemain;
}

} // namespace kestrel
