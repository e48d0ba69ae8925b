#include "platform/macos/CoreMIDIPackets.h"

#include <cstddef>
#include <cstring>

namespace kestrel {

namespace {
// Copies a member out of a packet, because packets are not aligned for their members on x86-64.
template <typename T> T read(const ::MIDIPacket* packet, std::size_t offset)
{
    T value;
    std::memcpy(&value, reinterpret_cast<const std::byte*>(packet) + offset, sizeof value);
    return value;
}
} // namespace

CoreMIDIPackets::CoreMIDIPackets(const ::MIDIPacketList& packets)
    : m_packet(&packets.packet[0])
    , m_left(packets.numPackets)
{
}

std::optional<MIDIPacket> CoreMIDIPackets::next()
{
    if (m_left == 0)
        return std::nullopt;
    --m_left;
    if (m_begun)
        m_packet = MIDIPacketNext(m_packet);
    m_begun = true;

    const auto* bytes = reinterpret_cast<const std::uint8_t*>(m_packet);
    return MIDIPacket {
        .timeStamp = read<MIDITimeStamp>(m_packet, offsetof(::MIDIPacket, timeStamp)),
        .data = { bytes + offsetof(::MIDIPacket, data),
            read<UInt16>(m_packet, offsetof(::MIDIPacket, length)) },
    };
}

} // namespace kestrel
