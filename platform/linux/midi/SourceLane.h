#pragma once

#include "platform/MIDIServices.h"
#include "platform/linux/midi/PacketRing.h"

#include <cstddef>
#include <cstdint>

struct _jack_client;
struct _jack_port;

namespace kestrel {

// The way of the packets from one source to the main thread. JACK mixes all that is connected to
// one port, so each source has a port of ours to itself.
class SourceLane {
public:
    static constexpr std::size_t RingBytes = std::size_t(1) << 20; // 32,768 short packets

    explicit SourceLane(void* srcConnRefCon);

    // Before the lane is handed to the process callback.
    void bind(_jack_port* port) { m_port = port; }
    [[nodiscard]] _jack_port* port() const { return m_port; }

    // Process callback: takes what this cycle brought; true when that is anything.
    bool receive(_jack_client* client, std::uint32_t frames);

    // Main thread: what has arrived until now, which is gone when the function returns.
    void deliver(MIDIServices::ReadProc read, void* readProcRefCon);

    // Main thread: nothing is delivered from then on, not even the rest of a list that is being
    // read.
    void close() { m_isClosed = true; }

private:
    void* const m_srcConnRefCon;
    _jack_port* m_port = nullptr;
    PacketRing m_ring { RingBytes };
    bool m_isClosed = false;
    PacketRing::Position m_taken = 0; // up to here the read callback has taken the packets
};

} // namespace kestrel
