#pragma once

#include "platform/MIDIServices.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

namespace kestrel {

// A queue of whole packets from one writing thread to one reading thread. Neither of them waits,
// locks or allocates.
class PacketRing {
public:
    // The number of bytes ever written, so that a later position is always greater.
    using Position = std::uint64_t;

    // `capacity` is in bytes and a power of two. A packet takes its size plus at most 31 bytes, and
    // is stored in one piece.
    explicit PacketRing(std::size_t capacity);

    // Writing thread. When there is no room, returns false and counts a loss.
    bool write(std::uint64_t timeStamp, std::span<const std::uint8_t> data);

    // Any thread. Counts a loss between the packets written before and those written from now on.
    void countLoss() { m_losses.fetch_add(1, std::memory_order_release); }
    [[nodiscard]] std::uint32_t losses() const { return m_losses.load(std::memory_order_acquire); }

    // Reading thread. The packets between begin() and end() stay in place until they are released.
    [[nodiscard]] Position begin() const { return m_read.load(std::memory_order_relaxed); }
    [[nodiscard]] Position end() const { return m_written.load(std::memory_order_acquire); }
    // Returns the packet at `at` and moves `at` behind it. No value when `at` equals `end`.
    [[nodiscard]] std::optional<MIDIPacket> read(Position& at, Position end) const;
    // Returns how many losses were counted before the packet at `at`, which must not be the end.
    [[nodiscard]] std::uint32_t lossesBefore(Position at) const;
    void release(Position upTo) { m_read.store(upTo, std::memory_order_release); }

private:
    [[nodiscard]] std::byte* byteAt(Position position) const;

    struct Unmap {
        std::size_t size;
        void operator()(std::byte* bytes) const;
    };
    using Mapping = std::unique_ptr<std::byte, Unmap>;
    [[nodiscard]] static Mapping map(std::size_t size); // throws std::bad_alloc

    const std::size_t m_capacity;
    const Mapping m_bytes;
    alignas(64) std::atomic<Position> m_written { 0 };
    std::atomic<std::uint32_t> m_losses { 0 };
    alignas(64) std::atomic<Position> m_read { 0 };
};

} // namespace kestrel
