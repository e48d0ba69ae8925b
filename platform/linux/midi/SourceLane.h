#pragma once

#include "platform/MIDIServices.h"
#include "platform/linux/midi/PacketRing.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>

struct _jack_client;
struct _jack_port;

namespace kestrel {

// Carries packets from one source to the main thread. JACK mixes all sources that are connected to
// one port, so each source gets an input port of its own.
class SourceLane {
public:
    static constexpr std::size_t RingBytes = std::size_t(1) << 20; // room for 32,768 short packets

    // `sourceName` is the full name of the other client's port.
    SourceLane(std::string sourceName, void* srcConnRefCon);

    [[nodiscard]] const std::string& sourceName() const { return m_sourceName; }
    // Called before the process callback gets the lane.
    void bind(_jack_port* port) { m_port = port; }
    [[nodiscard]] _jack_port* port() const { return m_port; }

    struct Received {
        bool packets = false;
        bool lostEvents = false; // the source's own buffer was full
    };
    // Process callback. Stores the packets of this cycle.
    [[nodiscard]] Received receive(_jack_client* client, std::uint32_t frames);

    // Main thread. Passes the packets that have arrived so far to `read`. All of them are gone when
    // the function returns.
    void deliver(MIDIServices::ReadProc read, void* readProcRefCon);

    // Main thread. True when packets were lost since the last call because the lane was full.
    [[nodiscard]] bool takeLoss();

    // Main thread: nothing is delivered from then on, not even the rest of a list that is being
    // read.
    void close() { m_isClosed = true; }
    [[nodiscard]] bool isClosed() const { return m_isClosed; } // any thread

private:
    const std::string m_sourceName;
    void* const m_srcConnRefCon;
    _jack_port* m_port = nullptr;
    PacketRing m_ring { RingBytes };
    std::atomic<bool> m_isClosed { false };
    std::uint64_t m_knownLosses = 0;
    PacketRing::Position m_taken = 0; // the read callback has taken the packets up to here
};

} // namespace kestrel
