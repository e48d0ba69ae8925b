#include "tests/platform/macos/stand-ins/PacketLists.h"

#include <cstddef>
#include <cstring>

namespace kestrel::test::PacketLists {

namespace {
constexpr std::size_t DataOffset = offsetof(MIDIPacket, data);

unsigned char* bytesOf(MIDIPacket* packet)
{
    return reinterpret_cast<unsigned char*>(packet);
}

// Packets are not aligned for their members on x86-64.
UInt16 lengthOf(const MIDIPacket* packet)
{
    UInt16 length = 0;
    std::memcpy(&length,
        reinterpret_cast<const unsigned char*>(packet) + offsetof(MIDIPacket, length),
        sizeof length);
    return length;
}
} // namespace

std::vector<unsigned char> bytes(const MIDIPacketList* list)
{
    const auto* const first = reinterpret_cast<const unsigned char*>(list);
    const auto* end = first + offsetof(MIDIPacketList, packet);
    const MIDIPacket* packet = list->packet;
    for (UInt32 i = 0; i < list->numPackets; ++i, packet = MIDIPacketNext(packet))
        end = reinterpret_cast<const unsigned char*>(packet) + DataOffset + lengthOf(packet);
    return { first, end };
}

std::vector<unsigned char> data(const MIDIPacketList* list)
{
    std::vector<unsigned char> data;
    const MIDIPacket* packet = list->packet;
    for (UInt32 i = 0; i < list->numPackets; ++i, packet = MIDIPacketNext(packet)) {
        const auto* const first = reinterpret_cast<const unsigned char*>(packet) + DataOffset;
        data.insert(data.end(), first, first + lengthOf(packet));
    }
    return data;
}

} // namespace kestrel::test::PacketLists

using namespace kestrel::test::PacketLists;

MIDIPacket* MIDIPacketListInit(MIDIPacketList* list)
{
    list->numPackets = 0;
    return list->packet;
}

// Never joins two packets of the same time, which CoreMIDI may do.
MIDIPacket* MIDIPacketListAdd(MIDIPacketList* list, ByteCount listSize, MIDIPacket* current,
    MIDITimeStamp time, ByteCount dataSize, const UInt8* data)
{
    MIDIPacket* const packet = list->numPackets == 0 ? list->packet : MIDIPacketNext(current);
    const auto length = static_cast<UInt16>(dataSize);
    const auto* const end = reinterpret_cast<unsigned char*>(list) + listSize;
    const auto room = end - bytesOf(packet) - static_cast<std::ptrdiff_t>(DataOffset);
    constexpr ByteCount Alignment = TARGET_CPU_ARM64 ? 4 : 1;
    const ByteCount wanted
        = (DataOffset + dataSize + Alignment - 1) / Alignment * Alignment - DataOffset;
    if (length != dataSize || room < static_cast<std::ptrdiff_t>(wanted))
        return nullptr;
    std::memcpy(bytesOf(packet) + offsetof(MIDIPacket, timeStamp), &time, sizeof time);
    std::memcpy(bytesOf(packet) + offsetof(MIDIPacket, length), &length, sizeof length);
    std::memcpy(bytesOf(packet) + DataOffset, data, dataSize);
    ++list->numPackets;
    return packet;
}
