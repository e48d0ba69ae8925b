#pragma once

#include <CoreMIDI/CoreMIDI.h>

#include <vector>

namespace kestrel::test::PacketLists {

// The bytes of the list up to the end of its last packet.
[[nodiscard]] std::vector<unsigned char> bytes(const MIDIPacketList* list);

// The data of all packets.
[[nodiscard]] std::vector<unsigned char> data(const MIDIPacketList* list);

} // namespace kestrel::test::PacketLists
