#include "link/MIDIMessage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <numeric>
#include <vector>

namespace kestrel::test {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

TEST(MIDIMessage, a_plain_one_has_no_source_no_length_and_no_data)
{
    const MIDIMessage message;
    EXPECT_EQ(message.sourceID(), 0);
    EXPECT_EQ(message.length(), 0u);
    EXPECT_THAT(message.readData(), IsEmpty());
}

TEST(MIDIMessage, set_data_leaves_source_and_length_alone)
{
    MIDIMessage message;
    message.setReadData(std::vector<std::uint8_t> { 0xB0, 0x08, 0x00 });
    EXPECT_THAT(message.readData(), ElementsAre(0xB0, 0x08, 0x00));
    EXPECT_EQ(message.sourceID(), 0);
    EXPECT_EQ(message.length(), 0u);
}

TEST(MIDIMessage, source_and_length_can_be_set_and_leave_the_data_alone)
{
    MIDIMessage message(-7);
    message.setReadData(std::vector<std::uint8_t> { 0x90 });
    message.setSourceID(9);
    message.setLength(5);
    EXPECT_EQ(message.sourceID(), 9);
    EXPECT_EQ(message.length(), 5u);
    EXPECT_THAT(message.readData(), ElementsAre(0x90));
}

TEST(MIDIMessage, a_packet_is_copied)
{
    std::vector<std::uint8_t> bytes { 0xB0, 0x0C, 0x1C, 0x2C, 0x41 };
    MIDIMessage message(-7);
    message.readPacket({ 12, bytes }, 5);
    bytes.assign(5, 0);
    EXPECT_THAT(message.readData(), ElementsAre(0xB0, 0x0C, 0x1C, 0x2C, 0x41));
    EXPECT_EQ(message.length(), 5u);
    EXPECT_EQ(message.sourceID(), -7);
}

TEST(MIDIMessage, only_the_given_length_is_read_and_never_more_than_there_is)
{
    const std::vector<std::uint8_t> bytes { 1, 2, 3 };
    MIDIMessage message;
    message.readPacket({ 0, bytes }, 2);
    EXPECT_THAT(message.readData(), ElementsAre(1, 2));
    message.readPacket({ 0, bytes }, 4);
    EXPECT_THAT(message.readData(), ElementsAre(1, 2, 3));
    EXPECT_EQ(message.length(), 3u);
}

TEST(MIDIMessage, every_size_is_kept_whole)
{
    MIDIMessage message;
    for (const std::size_t size :
        std::initializer_list<std::size_t> { 0, 1, 127, 128, 129, 32720, 65536, 3 }) {
        std::vector<std::uint8_t> bytes(size);
        std::iota(bytes.begin(), bytes.end(), std::uint8_t { 1 });
        message.readPacket({ 0, bytes }, static_cast<std::uint32_t>(size));
        EXPECT_THAT(message.readData(), ElementsAreArray(bytes));
    }
}

} // namespace
} // namespace kestrel::test
