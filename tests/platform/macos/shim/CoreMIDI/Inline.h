#pragma once

// The place of the packet after this one. The processors differ in it.
inline MIDIPacket* MIDIPacketNext(const MIDIPacket* packet)
{
    const auto* bytes = reinterpret_cast<const unsigned char*>(packet);
    unsigned short length = 0; // packets are not aligned for it on x86-64
    __builtin_memcpy(&length, bytes + __builtin_offsetof(MIDIPacket, length), sizeof length);
    auto next
        = reinterpret_cast<unsigned long>(bytes + __builtin_offsetof(MIDIPacket, data) + length);
#if TARGET_CPU_ARM64
    next = (next + 3) & ~3UL;
#endif
    return reinterpret_cast<MIDIPacket*>(next);
}
