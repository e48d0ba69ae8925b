#pragma once

#include "platform/MIDIServices.h"

#include <CoreMIDI/CoreMIDI.h>

namespace kestrel {

// Walks a CoreMIDI packet list. The gap between packets differs by processor, so only
// MIDIPacketNext() knows where the next packet begins.
class CoreMIDIPackets final : public MIDIPacketList {
public:
    explicit CoreMIDIPackets(const ::MIDIPacketList& packets);

    std::optional<MIDIPacket> next() override;

private:
    const ::MIDIPacket* m_packet;
    UInt32 m_left;
    bool m_begun = false;
};

} // namespace kestrel
