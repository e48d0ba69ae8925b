#pragma once

#include "platform/MIDIServices.h"
#include "platform/macos/ArrivalQueue.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace kestrel {

class MainLoop;

// Carries the packets of one input port from CoreMIDI's receive thread to the port's read callback
// on the main thread. The callback gets one packet a call, in order of arrival. A burst of packets
// wakes the main loop once.
class PacketInbox final : public std::enable_shared_from_this<PacketInbox> {
public:
    // `mainLoop` outlives the inbox.
    PacketInbox(MainLoop& mainLoop, MIDIServices::ReadProc read, void* readProcRefCon);

    // Receive thread. Never waits. A shared_ptr must own the inbox during the call.
    void put(MIDIPacketList& packets, void* srcConnRefCon);

    // Main thread. After this the read callback is not called again.
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
