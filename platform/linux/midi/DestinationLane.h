#pragma once

#include "platform/MIDIServices.h"
#include "platform/linux/midi/PacketRing.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

struct _jack_port;

namespace kestrel {

// Carries packets from the main thread to one destination. Packets that are sent before the
// connection stands wait here.
class DestinationLane {
public:
    static constexpr std::size_t RingBytes = std::size_t(1) << 18;
    static constexpr std::size_t MaxPacketBytes = 32720; // the largest MIDI event that JACK carries

    // `destinationName` is the full name of the other client's port.
    DestinationLane(MIDIEndpoint destination, std::string destinationName);

    // Main thread. False when the packet is too large or the lane is full.
    [[nodiscard]] bool push(std::span<const std::uint8_t> data);
    // Main thread. True when the lane is unconnected: the caller must then have the connection
    // made, and the lane counts as connecting.
    [[nodiscard]] bool wantsConnecting();

    // These functions are called on the control thread; transmit() reads the port as well.
    void bind(_jack_port* port) { m_port.store(port); }
    [[nodiscard]] _jack_port* port() const { return m_port.load(); }
    void connected(); // has no effect if the destination has gone meanwhile

    // Any thread. Tells the lane that the destination cannot be reached or has gone. The waiting
    // packets are dropped, and the next packet asks for a connection again.
    void disconnected() { m_state.store(State::Unconnected); }

    // Called by the process callback. Moves the waiting packets to the port.
    void transmit(std::uint32_t frames);

    [[nodiscard]] bool isConnected() const { return m_state.load() == State::Connected; }
    [[nodiscard]] MIDIEndpoint destination() const { return m_destination; }
    [[nodiscard]] const std::string& destinationName() const { return m_destinationName; }

private:
    enum class State { Unconnected, Connecting, Connected };

    void writeInto(void* buffer);

    const MIDIEndpoint m_destination;
    const std::string m_destinationName;
    std::atomic<_jack_port*> m_port { nullptr };
    std::atomic<State> m_state { State::Unconnected };
    bool m_open = false; // used by the process callback only
    PacketRing m_ring { RingBytes };
};

} // namespace kestrel
