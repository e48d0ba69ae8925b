#include "platform/linux/midi/DestinationLane.h"

#include <jack/jack.h>
#include <jack/midiport.h>

#include <algorithm>
#include <utility>

namespace kestrel {

DestinationLane::DestinationLane(MIDIEndpoint destination, std::string destinationName)
    : m_destination(destination)
    , m_destinationName(std::move(destinationName))
{
}

bool DestinationLane::push(std::span<const std::uint8_t> data)
{
    return data.size() <= MaxPacketBytes && m_ring.write(0, data);
}

bool DestinationLane::wantsConnecting()
{
    State expected = State::Unconnected;
    return m_state.compare_exchange_strong(expected, State::Connecting);
}

void DestinationLane::connected()
{
    State expected = State::Connecting;
    m_state.compare_exchange_strong(expected, State::Connected);
}

void DestinationLane::transmit(std::uint32_t frames)
{
    void* const buffer = jack_port_get_buffer(port(), frames);
    if (!buffer)
        return;
    jack_midi_clear_buffer(buffer);
    // The end is read before the state: a packet that comes with the first wish for a connection
    // is not among those that are dropped.
    const PacketRing::Position end = m_ring.end();
    const State state = m_state.load(std::memory_order_acquire);
    if (state == State::Unconnected)
        m_ring.release(end);
    // Packets go to a new connection from the next cycle on, because this cycle may have begun
    // before the connection was made.
    else if (state == State::Connected && m_open)
        writeInto(buffer);
    m_open = state == State::Connected;
}

void DestinationLane::writeInto(void* buffer)
{
    const PacketRing::Position end = m_ring.end();
    PacketRing::Position at = m_ring.begin();
    bool isEmpty = true;
    while (const auto packet = m_ring.read(at, end)) {
        const std::span<const std::uint8_t> data = packet->data;
        const bool fits = data.size() <= jack_midi_max_event_size(buffer);
        jack_midi_data_t* const event
            = fits ? jack_midi_event_reserve(buffer, 0, data.size()) : nullptr;
        if (event)
            std::copy(data.begin(), data.end(), event);
        // The remaining packets go with the next cycle. A packet that does not even fit into an
        // empty buffer is dropped.
        else if (!isEmpty)
            return;
        isEmpty = false;
        m_ring.release(at);
    }
}

} // namespace kestrel
