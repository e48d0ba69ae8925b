#include "link/MessageDispatcher.h"

#include "link/MIDIMessage.h"
#include "tests/fakes/Recorders.h"

#include <gtest/gtest.h>

#include <sstream>

namespace kestrel::test {
namespace {

// A dispatcher with destinations that record each call.
class RecordedDestinations final : public MessageDispatcher::Destinations {
public:
    // Sends one packet, given in hexadecimal. Returns the calls since the last packet, "" for none.
    std::string send(const std::string& packet)
    {
        m_calls.clear();
        std::istringstream words(packet);
        std::vector<std::uint8_t> bytes;
        for (unsigned int byte = 0; words >> std::hex >> byte;)
            bytes.push_back(static_cast<std::uint8_t>(byte));
        MIDIMessage message;
        message.setReadData(bytes);
        dispatcher.receiveMessage(message);
        return m_calls;
    }

    void answerHeartbeat() override { m_calls += "heartbeat"; }
    void redrawLCDdisplay(const MIDIMessage& message) override
    {
        m_calls += "LCD " + hex(message.readData());
    }
    void redrawDSParea(const MIDIMessage& message) override
    {
        m_calls += "DSP " + hex(message.readData());
    }
    void eventKeyPost(unsigned int buttonCode) override
    {
        m_calls += "key " + std::to_string(buttonCode);
    }

    MessageDispatcher dispatcher { *this };

private:
    std::string m_calls;
};

TEST(MessageDispatcher, packets_shorter_than_three_bytes_are_dropped)
{
    RecordedDestinations bench;
    EXPECT_EQ(bench.send(""), "");
    EXPECT_EQ(bench.send("90"), "");
    EXPECT_EQ(bench.send("90 00"), "");
    EXPECT_EQ(bench.send("B0 18"), "");
}

TEST(MessageDispatcher, only_note_on_of_note_0_with_velocity_0_is_the_heartbeat)
{
    RecordedDestinations bench;
    EXPECT_EQ(bench.send("90 00 00"), "heartbeat");
    EXPECT_EQ(bench.send("90 00 00 B0 18 05"), "heartbeat");
    EXPECT_EQ(bench.send("90 00 01"), "");
    EXPECT_EQ(bench.send("90 01 00"), "");
    EXPECT_EQ(bench.send("80 00 00"), "");
    EXPECT_EQ(bench.send("91 00 00"), "");
}

TEST(MessageDispatcher, large_display_messages_are_told_by_their_seventh_byte)
{
    RecordedDestinations bench;
    EXPECT_EQ(bench.send("F0 00 00 66 05 00 12 02 F7"), "LCD F0 00 00 66 05 00 12 02 F7");
    EXPECT_EQ(bench.send("F0 01 02 03 04 05 12"), "LCD F0 01 02 03 04 05 12");
    EXPECT_EQ(bench.send("F0 00 00 66 05 00 10 02 F7"), "");
}

TEST(MessageDispatcher, a_system_exclusive_packet_of_six_bytes_or_fewer_is_dropped)
{
    RecordedDestinations bench;
    EXPECT_EQ(bench.send("F0 00 00 66 05 12"), "");
    EXPECT_EQ(bench.send("F0 00 00 66 12"), "");
    EXPECT_EQ(bench.send("F0 00 12"), "");
}

TEST(MessageDispatcher, a_key_comes_in_two_packets_and_fires_once)
{
    RecordedDestinations bench;
    EXPECT_EQ(bench.send("B0 0F 40"), "");
    EXPECT_EQ(bench.send("B0 2F 45"), "key 69");
    EXPECT_EQ(bench.send("B0 2F 45"), "");
}

TEST(MessageDispatcher, a_key_port_without_its_zone_is_dropped_and_arms_nothing)
{
    RecordedDestinations bench;
    EXPECT_EQ(bench.send("B0 2F 45"), "");
    EXPECT_FALSE(bench.dispatcher.userAssignCmnd());
    EXPECT_EQ(bench.send("B0 2F 45"), "");
}

TEST(MessageDispatcher, both_zones_wait_across_unrelated_packets)
{
    RecordedDestinations bench;
    bench.send("B0 0F 40");
    bench.send("B0 0C 1C");
    EXPECT_EQ(bench.send("B0 18 05"), "DSP B0 18 05");
    EXPECT_EQ(bench.send("90 00 00"), "heartbeat");
    EXPECT_EQ(bench.send("F0 00 00 66 05 00 12 00 F7"), "LCD F0 00 00 66 05 00 12 00 F7");
    EXPECT_EQ(bench.send("B0"), "");
    EXPECT_EQ(bench.send("B0 1C 00"), "");
    EXPECT_EQ(bench.send("B1 2F 05"), "");
    EXPECT_EQ(bench.send("B0 2F 05"), "key 5");
    EXPECT_EQ(bench.send("B0 2C 05"), "DSP B0 2C 05");
}

TEST(MessageDispatcher, the_two_zones_wait_independently)
{
    RecordedDestinations bench;
    bench.send("B0 0F 40");
    bench.send("B0 0C 1C");
    EXPECT_TRUE(bench.dispatcher.userAssignCmnd());
    EXPECT_TRUE(bench.dispatcher.switchLEDCmnd());
    EXPECT_EQ(bench.send("B0 2C 41"), "DSP B0 2C 41");
    EXPECT_TRUE(bench.dispatcher.userAssignCmnd());
    EXPECT_EQ(bench.send("B0 2F 41"), "key 65");
    EXPECT_FALSE(bench.dispatcher.userAssignCmnd());

    bench.send("B0 0C 1C");
    bench.send("B0 0F 40");
    EXPECT_EQ(bench.send("B0 2F 41"), "key 65");
    EXPECT_EQ(bench.send("B0 2C 41"), "DSP B0 2C 41");
}

TEST(MessageDispatcher, another_zone_value_leaves_the_flags_as_they_were)
{
    RecordedDestinations bench;
    bench.send("B0 0F 41");
    bench.send("B0 0C 1B");
    EXPECT_FALSE(bench.dispatcher.userAssignCmnd());
    EXPECT_FALSE(bench.dispatcher.switchLEDCmnd());
    bench.send("B0 0F 40");
    bench.send("B0 0C 1C");
    bench.send("B0 0F 41");
    bench.send("B0 0C 1B");
    EXPECT_TRUE(bench.dispatcher.userAssignCmnd());
    EXPECT_TRUE(bench.dispatcher.switchLEDCmnd());
}

TEST(MessageDispatcher, a_key_in_one_packet_fires_at_once_and_arms_nothing)
{
    RecordedDestinations bench;
    EXPECT_EQ(bench.send("B0 0F 40 2F 03"), "key 3");
    EXPECT_FALSE(bench.dispatcher.userAssignCmnd());
    EXPECT_EQ(bench.send("B0 0F 41 2F 03"), "");
}

TEST(MessageDispatcher, a_key_in_one_packet_leaves_a_waiting_zone_waiting)
{
    RecordedDestinations bench;
    bench.send("B0 0F 40");
    EXPECT_EQ(bench.send("B0 0F 40 2F 03"), "key 3");
    EXPECT_TRUE(bench.dispatcher.userAssignCmnd());
}

TEST(MessageDispatcher, lamps_in_one_packet_leave_a_waiting_zone_waiting)
{
    RecordedDestinations bench;
    bench.send("B0 0C 1C");
    EXPECT_EQ(bench.send("B0 0C 1C 2C 41"), "DSP B0 0C 1C 2C 41");
    EXPECT_TRUE(bench.dispatcher.switchLEDCmnd());
}

TEST(MessageDispatcher, of_a_longer_packet_the_whole_reaches_the_decoder)
{
    RecordedDestinations bench;
    EXPECT_EQ(bench.send("B0 18 05 19 06"), "DSP B0 18 05 19 06");
    EXPECT_EQ(bench.send("B0 0F 40 2F 03 2F 04"), "key 3") << "and only its first key counts";
}

TEST(MessageDispatcher, a_zone_packet_of_four_bytes_still_waits_for_its_port)
{
    RecordedDestinations bench;
    EXPECT_EQ(bench.send("B0 0F 40 2F"), "");
    EXPECT_EQ(bench.send("B0 2F 04"), "key 4");
    EXPECT_EQ(bench.send("B0 0C 1C 2C"), "");
    EXPECT_EQ(bench.send("B0 2C 04"), "DSP B0 2C 04");
}

TEST(MessageDispatcher, a_zone_with_more_behind_it_is_taken_at_once_whatever_that_is)
{
    RecordedDestinations bench;
    EXPECT_EQ(bench.send("B0 0F 40 30 03"), "key 3");
    EXPECT_EQ(bench.send("B0 0F 40 B0 2F 05"), "key 47");
    EXPECT_FALSE(bench.dispatcher.userAssignCmnd());
    EXPECT_EQ(bench.send("B0 0C 1C B0 2C 41"), "DSP B0 0C 1C B0 2C 41");
    EXPECT_FALSE(bench.dispatcher.switchLEDCmnd());
}

TEST(MessageDispatcher, a_port_that_was_waited_for_may_have_more_behind_it)
{
    RecordedDestinations bench;
    bench.send("B0 0F 40");
    EXPECT_EQ(bench.send("B0 2F 45 0F 40 2F 05"), "key 69") << "and only its first key counts";
    EXPECT_FALSE(bench.dispatcher.userAssignCmnd());
    bench.send("B0 0C 1C");
    EXPECT_EQ(bench.send("B0 2C 41 2C 42"), "DSP B0 2C 41 2C 42");
    EXPECT_FALSE(bench.dispatcher.switchLEDCmnd());
}

TEST(MessageDispatcher, a_zone_that_comes_again_goes_on_waiting)
{
    RecordedDestinations bench;
    bench.send("B0 0F 40");
    bench.send("B0 0F 40");
    EXPECT_EQ(bench.send("B0 2F 05"), "key 5");
    bench.send("B0 0C 1C");
    bench.send("B0 0C 1C");
    EXPECT_EQ(bench.send("B0 2C 05"), "DSP B0 2C 05");
}

TEST(MessageDispatcher, a_key_code_is_a_whole_byte)
{
    RecordedDestinations bench;
    bench.send("B0 0F 40");
    EXPECT_EQ(bench.send("B0 2F C5"), "key 197");
    EXPECT_EQ(bench.send("B0 0F 40 2F C5"), "key 197");
}

TEST(MessageDispatcher, lamps_come_in_one_packet_or_in_two)
{
    RecordedDestinations bench;
    EXPECT_EQ(bench.send("B0 0C 1C 2C 41"), "DSP B0 0C 1C 2C 41");
    EXPECT_FALSE(bench.dispatcher.switchLEDCmnd());
    EXPECT_EQ(bench.send("B0 2C 41"), "");
    EXPECT_EQ(bench.send("B0 0C 1C"), "");
    EXPECT_EQ(bench.send("B0 2C 41"), "DSP B0 2C 41");
    EXPECT_EQ(bench.send("B0 2C 41"), "");
    EXPECT_EQ(bench.send("B0 0C 1B 2C 41"), "");
}

TEST(MessageDispatcher, exactly_the_controllers_0x18_to_0x1B_are_knobs)
{
    RecordedDestinations bench;
    for (unsigned int controller = 0; controller < 0x100; ++controller) {
        std::ostringstream packet;
        packet << "B0 " << std::hex << std::uppercase << (controller < 0x10 ? "0" : "")
               << controller << " 7F";
        const bool isKnob = controller >= 0x18 && controller <= 0x1B;
        EXPECT_EQ(bench.send(packet.str()), isKnob ? "DSP " + packet.str() : "");
    }
}

TEST(MessageDispatcher, other_status_bytes_and_channels_are_dropped)
{
    RecordedDestinations bench;
    for (const char* packet :
        { "B1 18 05", "00 00 00", "C0 18 05", "F7 00 00 66 05 00 12", "FF FF FF FF FF FF 12" })
        EXPECT_EQ(bench.send(packet), "") << packet;
}

} // namespace
} // namespace kestrel::test
