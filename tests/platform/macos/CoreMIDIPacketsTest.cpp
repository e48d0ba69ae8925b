#include "platform/macos/CoreMIDIPackets.h"

#include <TargetConditionals.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <initializer_list>

namespace kestrel::test {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

// A packet list as CoreMIDI passes it to the receive thread, laid out byte by byte.
class HandMadeList {
public:
    HandMadeList& add(std::uint64_t timeStamp, std::vector<std::uint8_t> data)
    {
        const auto length = static_cast<std::uint16_t>(data.size());
        pad();
        append(&timeStamp, sizeof timeStamp);
        append(&length, sizeof length);
        append(data.data(), data.size());
        ++m_count;
        return *this;
    }

    const ::MIDIPacketList& list()
    {
        std::memcpy(m_bytes.data(), &m_count, sizeof m_count);
        return *reinterpret_cast<const ::MIDIPacketList*>(m_bytes.data());
    }

private:
    void pad()
    {
#if TARGET_CPU_ARM64
        m_size = (m_size + 3) / 4 * 4; // x86-64 leaves no gap
#endif
    }
    void append(const void* bytes, std::size_t size)
    {
        if (size > 0)
            std::memcpy(m_bytes.data() + m_size, bytes, size);
        m_size += size;
    }

    alignas(8) std::array<std::byte, 4096> m_bytes {};
    std::size_t m_size = sizeof(UInt32);
    UInt32 m_count = 0;
};

std::vector<std::uint8_t> bytes(const std::optional<MIDIPacket>& packet)
{
    return packet ? std::vector(packet->data.begin(), packet->data.end())
                  : std::vector<std::uint8_t>();
}

TEST(CoreMIDIPackets, an_empty_list_has_no_packet)
{
    HandMadeList made;
    CoreMIDIPackets packets(made.list());
    EXPECT_EQ(packets.next(), std::nullopt);
    EXPECT_EQ(packets.next(), std::nullopt);
}

TEST(CoreMIDIPackets, packets_of_odd_lengths_come_whole_and_in_order)
{
    HandMadeList made;
    made.add(7, { 0xB0, 0x0F, 0x40, 0x2F, 0x05 }).add(8, { 0xF8 }).add(9, { 0x90, 0x00, 0x00 });
    CoreMIDIPackets packets(made.list());

    const auto first = packets.next();
    ASSERT_TRUE(first);
    EXPECT_EQ(first->timeStamp, 7U);
    EXPECT_THAT(bytes(first), ElementsAre(0xB0, 0x0F, 0x40, 0x2F, 0x05));
    const auto second = packets.next();
    ASSERT_TRUE(second);
    EXPECT_EQ(second->timeStamp, 8U);
    EXPECT_THAT(bytes(second), ElementsAre(0xF8));
    const auto third = packets.next();
    ASSERT_TRUE(third);
    EXPECT_EQ(third->timeStamp, 9U);
    EXPECT_THAT(bytes(third), ElementsAre(0x90, 0x00, 0x00));
    EXPECT_EQ(packets.next(), std::nullopt);
}

TEST(CoreMIDIPackets, a_packet_longer_than_its_declared_array_comes_whole)
{
    std::vector<std::uint8_t> sysex(1001, 0x20);
    sysex.front() = 0xF0;
    sysex.back() = 0xF7;
    HandMadeList made;
    made.add(0, sysex).add(0, { 0x90, 0x00, 0x00 });
    CoreMIDIPackets packets(made.list());

    EXPECT_THAT(bytes(packets.next()), ElementsAreArray(sysex));
    EXPECT_THAT(bytes(packets.next()), ElementsAre(0x90, 0x00, 0x00));
}

TEST(CoreMIDIPackets, a_packet_without_bytes_keeps_its_place)
{
    HandMadeList made;
    made.add(1, {}).add(2, { 0xFE });
    CoreMIDIPackets packets(made.list());

    const auto empty = packets.next();
    ASSERT_TRUE(empty);
    EXPECT_TRUE(empty->data.empty());
    EXPECT_THAT(bytes(packets.next()), ElementsAre(0xFE));
}

} // namespace
} // namespace kestrel::test
