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

// The way of the packets from the main thread to one destination. What is sent before the
// connection stands waits in it.
class DestinationLane {
public:
    static constexpr std::size_t RingBytes = std::size_t(1) << 18;
    static constexpr std::size_t MaxPacketBytes = 32720; // the largest event JACK carries

    // `destinationName`: the full name of the other client's port.
    DestinationLane(MIDIEndpoint destination, std::string destinationName);

    // Main thread. False when the packet is too large or the lane is full.
    [[nodiscard]] bool push(std::span<const std::uint8_t> data);
    // Main thread. True when the caller has to have the connection made.
    [[nodiscard]] bool wantsConnecting();

    // Control thread.
    void bind(_jack_port* port) { m_port.store(port); }
    [[nodiscard]] _jack_port* port() const { return m_port.load(); }
    void connected(); // unless the destination has gone meanwhile

    // Any thread: the destination cannot be reached, or is gone and its connection with it. What
    // waits is dropped; the next packet asks for a connection again.
    void disconnected() { m_state.store(State::Unconnected); }

    // Process callback.
    void transmit(std::uint32_t frames);

    [[nodiscard]] MIDIEndpoint destination() const { return m_destination; }
    [[nodiscard]] const std::string& destinationName() const { return m_destinationName; }

private:
    enum class State { Unconnected, Connecting, Connected };

    void writeInto(void* buffer);

    const MIDIEndpoint m_destination;
    const std::string m_destinationName;
    std::atomic<_jack_port*> m_port { nullptr };
    std::atomic<State> m_state { State::Unconnected };
    bool m_open = false; // process callback only
    PacketRing m_ring { RingBytes };
};

} // namespace kestrel
