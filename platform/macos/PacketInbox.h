#pragma once

#include "platform/MIDIServices.h"
#include "platform/macos/ArrivalQueue.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace kestrel {

class MainLoop;

// Takes the packets of one input port from CoreMIDI's receive thread to the port's read callback on
// the main thread: one later call a packet, in order of arrival. A burst costs one wake-up.
class PacketInbox final : public std::enable_shared_from_this<PacketInbox> {
public:
    // `mainLoop` outlives the inbox.
    PacketInbox(MainLoop& mainLoop, MIDIServices::ReadProc read, void* readProcRefCon);

    // Receive thread, as long as somebody owns the inbox; never waits.
    void put(MIDIPacketList& packets, void* srcConnRefCon);

    // Main thread: the read callback is not called again.
    void close() { m_read = nullptr; }

private:
    struct Packet {
        Packet(const MIDIPacket& packet, void* connection)
            : timeStamp(packet.timeStamp)
            , data(packet.data.begin(), packet.data.end())
            , srcConnRefCon(connection)
        {
        }

        std::uint64_t timeStamp;
        std::vector<std::uint8_t> data;
        void* srcConnRefCon;
    };

    void deliver();

    MainLoop& m_mainLoop;
    MIDIServices::ReadProc m_read; // null once closed
    void* const m_readProcRefCon;
    ArrivalQueue<Packet> m_packets;
};

} // namespace kestrel
