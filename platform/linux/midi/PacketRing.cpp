#include "platform/linux/midi/PacketRing.h"

#include <sys/mman.h>

#include <cstring>
#include <new>

namespace kestrel {

namespace {
// A record is a header followed by the bytes of one packet. All records begin at multiples of the
// header's size, so that a header always fits between the last record and the end of the buffer.
struct Header {
    std::uint64_t timeStamp;
    std::uint32_t size;
    std::uint32_t losses; // counted before the packet was written
};
constexpr std::size_t Unit = sizeof(Header);
constexpr std::uint32_t RestIsUnused = 0xFFFFFFFF;

constexpr std::size_t recordSize(std::size_t size)
{
    return Unit + (size + Unit - 1) / Unit * Unit;
}
} // namespace

PacketRing::PacketRing(std::size_t capacity)
    : m_capacity(capacity)
    , m_bytes(map(capacity))
{
}

// Not from the heap: every new link has new rings, and what was allocated behind an old one would
// keep the heap from shrinking. Maps all pages now, so that the writing thread never waits for one.
PacketRing::Mapping PacketRing::map(std::size_t size)
{
    void* const bytes = ::mmap(
        nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_POPULATE, -1, 0);
    if (bytes == MAP_FAILED)
        throw std::bad_alloc();
    return { static_cast<std::byte*>(bytes), Unmap { size } };
}

void PacketRing::Unmap::operator()(std::byte* bytes) const
{
    ::munmap(bytes, size);
}

std::byte* PacketRing::byteAt(Position position) const
{
    return m_bytes.get() + (position & (m_capacity - 1));
}

bool PacketRing::write(std::uint64_t timeStamp, std::span<const std::uint8_t> data)
{
    Position at = m_written.load(std::memory_order_relaxed);
    const Position limit = m_read.load(std::memory_order_acquire) + m_capacity;
    const std::size_t size = recordSize(data.size());
    const std::size_t untilEnd = m_capacity - (at & (m_capacity - 1));
    const std::size_t skipped = size > untilEnd ? untilEnd : 0;
    if (data.size() >= m_capacity || at + skipped + size > limit) {
        countLoss();
        return false;
    }
    const std::uint32_t lost = losses();
    if (skipped > 0) {
        const Header unused { 0, RestIsUnused, lost };
        std::memcpy(byteAt(at), &unused, Unit);
        at += skipped;
    }
    const Header header { timeStamp, static_cast<std::uint32_t>(data.size()), lost };
    std::memcpy(byteAt(at), &header, Unit);
    if (!data.empty())
        std::memcpy(byteAt(at) + Unit, data.data(), data.size());
    m_written.store(at + size, std::memory_order_release);
    return true;
}

std::optional<MIDIPacket> PacketRing::read(Position& at, Position end) const
{
    if (at == end)
        return {};
    Header header;
    std::memcpy(&header, byteAt(at), Unit);
    if (header.size == RestIsUnused) {
        at += m_capacity - (at & (m_capacity - 1));
        std::memcpy(&header, byteAt(at), Unit);
    }
    const auto* data = reinterpret_cast<const std::uint8_t*>(byteAt(at) + Unit);
    at += recordSize(header.size);
    return MIDIPacket { header.timeStamp, { data, header.size } };
}

std::uint32_t PacketRing::lossesBefore(Position at) const
{
    Header header;
    std::memcpy(&header, byteAt(at), Unit);
    return header.losses;
}

} // namespace kestrel
