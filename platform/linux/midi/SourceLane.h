#pragma once

#include "platform/MIDIServices.h"
#include "platform/linux/midi/PacketRing.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
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

    // Process callback. Stores the packets of this cycle. True when the main thread has something
    // to deliver.
    [[nodiscard]] bool receive(_jack_client* client, std::uint32_t frames);
    // Any thread. Packets that would have come now may have been lost.
    void markLoss() { m_ring.countLoss(); }

    // Main thread. Passes the packets that have arrived so far to `read`, and calls `lost` in their
    // midst where some may be missing. All of them are gone when the function returns.
    void deliver(
        MIDIServices::ReadProc read, void* readProcRefCon, const std::function<void()>& lost);

    // Nothing is delivered from then on, not even the rest of a list that is being read.
    void close() { m_isClosed = true; }
    [[nodiscard]] bool isClosed() const { return m_isClosed; }

private:
    class ArrivedPackets;

    [[nodiscard]] bool isUntold(std::uint32_t losses) const;
    [[nodiscard]] bool tellLoss(
        PacketRing::Position end, std::uint32_t losses, const std::function<void()>& lost);

    const std::string m_sourceName;
    void* const m_srcConnRefCon;
    _jack_port* m_port = nullptr;
    PacketRing m_ring { RingBytes };
    std::atomic<bool> m_isClosed { false };
    // The read callback has taken the packets up to here and been told of so many losses.
    PacketRing::Position m_taken = 0;
    std::uint32_t m_toldLosses = 0;
};

} // namespace kestrel
