#include "platform/linux/midi/PacketRing.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdint>
#include <fstream>
#include <memory>
#include <thread>
#include <vector>

namespace kestrel::test {
namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes bytes(const MIDIPacket& packet)
{
    return { packet.data.begin(), packet.data.end() };
}

std::vector<Bytes> takeAll(PacketRing& ring)
{
    std::vector<Bytes> packets;
    PacketRing::Position at = ring.begin();
    const PacketRing::Position end = ring.end();
    while (const auto packet = ring.read(at, end))
        packets.push_back(bytes(*packet));
    ring.release(end);
    return packets;
}

std::size_t residentBytes()
{
    std::ifstream statm("/proc/self/statm");
    std::size_t size = 0, resident = 0;
    statm >> size >> resident;
    return resident * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

TEST(PacketRing, packets_come_out_whole_in_order_and_with_their_time)
{
    PacketRing ring(256);
    ASSERT_TRUE(ring.write(7, Bytes { 0x90, 0x00, 0x00 }));
    ASSERT_TRUE(ring.write(9, Bytes { 0xB0, 0x0C, 0x1C, 0x2C, 0x41 }));
    PacketRing::Position at = ring.begin();
    const auto first = ring.read(at, ring.end());
    const auto second = ring.read(at, ring.end());
    ASSERT_TRUE(first && second);
    EXPECT_EQ(first->timeStamp, 7u);
    EXPECT_EQ(bytes(*first), (Bytes { 0x90, 0x00, 0x00 }));
    EXPECT_EQ(second->timeStamp, 9u);
    EXPECT_EQ(bytes(*second), (Bytes { 0xB0, 0x0C, 0x1C, 0x2C, 0x41 }));
    EXPECT_FALSE(ring.read(at, ring.end()));
}

TEST(PacketRing, a_packet_without_bytes_is_a_packet)
{
    PacketRing ring(256);
    ASSERT_TRUE(ring.write(0, {}));
    EXPECT_EQ(takeAll(ring), (std::vector<Bytes> { {} }));
}

TEST(PacketRing, what_arrives_after_the_end_was_taken_waits_for_the_next_time)
{
    PacketRing ring(256);
    ring.write(0, Bytes { 1 });
    PacketRing::Position at = ring.begin();
    const PacketRing::Position end = ring.end();
    ring.write(0, Bytes { 2 });
    EXPECT_TRUE(ring.read(at, end));
    EXPECT_FALSE(ring.read(at, end));
    ring.release(end);
    EXPECT_EQ(takeAll(ring), (std::vector<Bytes> { { 2 } }));
}

TEST(PacketRing, a_full_ring_refuses_counts_and_keeps_what_it_has)
{
    PacketRing ring(64); // two records of 32 bytes
    EXPECT_TRUE(ring.write(0, Bytes(16, 1)));
    EXPECT_TRUE(ring.write(0, Bytes(16, 2)));
    EXPECT_FALSE(ring.write(0, Bytes { 3 }));
    EXPECT_FALSE(ring.write(0, {}));
    EXPECT_EQ(ring.losses(), 2u);
    EXPECT_EQ(takeAll(ring), (std::vector<Bytes> { Bytes(16, 1), Bytes(16, 2) }));
    EXPECT_TRUE(ring.write(0, Bytes { 4 }));
    EXPECT_EQ(ring.losses(), 2u);
}

TEST(PacketRing, room_is_free_only_once_it_is_released)
{
    PacketRing ring(64);
    ring.write(0, Bytes(48, 1));
    PacketRing::Position at = ring.begin();
    ASSERT_TRUE(ring.read(at, ring.end()));
    EXPECT_FALSE(ring.write(0, Bytes(48, 2)));
    ring.release(at);
    EXPECT_TRUE(ring.write(0, Bytes(48, 3)));
}

TEST(PacketRing, a_packet_that_does_not_fit_before_the_end_stays_in_one_piece)
{
    PacketRing ring(128);
    ring.write(0, Bytes(64, 1)); // 80 of 128 bytes
    EXPECT_EQ(takeAll(ring).size(), 1u);
    const Bytes large(40, 2); // 64 bytes: 48 are left before the end
    ASSERT_TRUE(ring.write(0, large));
    EXPECT_EQ(takeAll(ring), (std::vector<Bytes> { large }));
}

TEST(PacketRing, each_packet_knows_the_losses_before_it_also_across_the_end_of_the_buffer)
{
    PacketRing ring(128);
    ring.write(0, Bytes(48, 1)); // leaves 64 bytes, and the next one 16
    ring.write(0, Bytes(32, 2));
    PacketRing::Position at = ring.begin();
    EXPECT_EQ(ring.lossesBefore(at), 0u);
    ASSERT_TRUE(ring.read(at, ring.end()));
    ring.release(at);
    ring.countLoss();
    ring.write(0, Bytes(16, 3)); // does not fit into the rest of the buffer
    EXPECT_EQ(ring.lossesBefore(at), 0u);
    ASSERT_TRUE(ring.read(at, ring.end()));
    EXPECT_EQ(ring.lossesBefore(at), 1u);
    EXPECT_EQ(bytes(*ring.read(at, ring.end())), Bytes(16, 3));
}

TEST(PacketRing, a_packet_larger_than_the_ring_is_refused)
{
    PacketRing ring(64);
    EXPECT_TRUE(ring.write(0, Bytes(48, 1)));
    EXPECT_EQ(takeAll(ring).size(), 1u);
    EXPECT_FALSE(ring.write(0, Bytes(49, 1)));
    EXPECT_FALSE(ring.write(0, Bytes(64, 1)));
    EXPECT_FALSE(ring.write(0, Bytes(5000, 1)));
    EXPECT_EQ(ring.losses(), 3u);
}

TEST(PacketRing, every_size_passes_at_every_place_of_the_buffer)
{
    PacketRing ring(1024);
    for (std::size_t round = 0; round < 4000; ++round) {
        const Bytes packet(round % 301, static_cast<std::uint8_t>(round));
        ASSERT_TRUE(ring.write(round, packet)) << round;
        ASSERT_EQ(takeAll(ring), (std::vector<Bytes> { packet })) << round;
    }
}

TEST(PacketRing, two_threads_lose_and_reorder_nothing)
{
    constexpr std::uint32_t Count = 200000;
    PacketRing ring(4096);
    std::thread writer([&ring] {
        for (std::uint32_t i = 0; i < Count;) {
            const std::uint8_t size = static_cast<std::uint8_t>(i % 40);
            if (ring.write(i, Bytes(size, static_cast<std::uint8_t>(i))))
                ++i;
            else
                std::this_thread::yield();
        }
    });
    std::uint32_t expected = 0;
    std::uint32_t wrong = 0;
    while (expected < Count) {
        PacketRing::Position at = ring.begin();
        const PacketRing::Position end = ring.end();
        while (const auto packet = ring.read(at, end)) {
            const Bytes wanted(expected % 40, static_cast<std::uint8_t>(expected));
            wrong += packet->timeStamp != expected || bytes(*packet) != wanted ? 1u : 0u;
            ++expected;
        }
        ring.release(end);
        std::this_thread::yield();
    }
    writer.join();
    EXPECT_EQ(wrong, 0u);
}

TEST(PacketRing, a_ring_that_has_gone_leaves_nothing_behind_among_later_allocations)
{
    constexpr std::size_t Capacity = std::size_t(1) << 20;
    constexpr std::size_t Rings = 8;
    // After this, malloc would take a block of this size from the heap.
    std::make_unique<PacketRing>(Capacity).reset();
    const std::size_t before = residentBytes();
    std::vector<std::unique_ptr<PacketRing>> rings;
    std::vector<std::unique_ptr<Bytes>> later;
    for (std::size_t i = 0; i < Rings; ++i) {
        rings.push_back(std::make_unique<PacketRing>(Capacity));
        later.push_back(std::make_unique<Bytes>(1024));
    }
    EXPECT_GE(residentBytes(), before + Rings * Capacity) << "the pages are there from the start";
    rings.clear();
    EXPECT_LT(residentBytes(), before + Capacity);
}

} // namespace
} // namespace kestrel::test
