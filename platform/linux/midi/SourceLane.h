#pragma once

#include "platform/MIDIServices.h"
#include "platform/linux/midi/PacketRing.h"

#include <cstddef>
#include <cstdint>

struct _jack_client;
struct _jack_port;

namespace kestrel {

// Carries packets from one source to the main thread. JACK mixes all sources that are connected to
// one port, so each source gets an input port of its own.
class SourceLane {
public:
    static constexpr std::size_t RingBytes = std::size_t(1) << 20; // room for 32,768 short packets

    explicit SourceLane(void* srcConnRefCon);

    // Called before the process callback gets the lane.
    void bind(_jack_port* port) { m_port = port; }
    [[nodiscard]] _jack_port* port() const { return m_port; }

    // Process callback. Stores the packets of this cycle. True when there are any.
    bool receive(_jack_client* client, std::uint32_t frames);

    // Main thread. Passes the packets that have arrived so far to `read`. All of them are gone when
    // the function returns.
    void deliver(MIDIServices::ReadProc read, void* readProcRefCon);

    // Main thread: nothing is delivered from then on, not even the rest of a list that is being
    // read.
    void close() { m_isClosed = true; }

private:
    void* const m_srcConnRefCon;
    _jack_port* m_port = nullptr;
    PacketRing m_ring { RingBytes };
    bool m_isClosed = false;
    PacketRing::Position m_taken = 0; // the read callback has taken the packets up to here
};

} // namespace kestrel
