#include "tools/zenta-console/ConsolePackets.h"

#include <gtest/gtest.h>

namespace kestrel::test {

using namespace console;

namespace {

using Packets = std::vector<Bytes>;

TEST(ConsolePackets, a_heartbeat_and_its_answer_differ_in_the_velocity)
{
    EXPECT_EQ(heartbeat(), (Bytes { 0x90, 0x00, 0x00 }));
    EXPECT_EQ(heartbeatAnswer(), (Bytes { 0x90, 0x00, 0x7F }));
}

TEST(ConsolePackets, buttons_go_down_with_64_to_75_and_up_with_0_to_11)
{
    EXPECT_EQ(userButton(1, Motion::Press), (Packets { { 0xB0, 0x0F, 0x40 }, { 0xB0, 0x2F, 64 } }));
    EXPECT_EQ(
        userButton(12, Motion::Press), (Packets { { 0xB0, 0x0F, 0x40 }, { 0xB0, 0x2F, 75 } }));
    EXPECT_EQ(
        userButton(1, Motion::Release), (Packets { { 0xB0, 0x0F, 0x40 }, { 0xB0, 0x2F, 0 } }));
    EXPECT_EQ(
        userButton(12, Motion::Release), (Packets { { 0xB0, 0x0F, 0x40 }, { 0xB0, 0x2F, 11 } }));
}

TEST(ConsolePackets, a_lamp_that_is_on_has_0x40_in_its_port)
{
    EXPECT_EQ(lampMessage(0, Lamp::Off), (Packets { { 0xB0, 0x0C, 0x1C }, { 0xB0, 0x2C, 0x00 } }));
    EXPECT_EQ(lampMessage(7, Lamp::On), (Packets { { 0xB0, 0x0C, 0x1C }, { 0xB0, 0x2C, 0x47 } }));
}

TEST(ConsolePackets, display_text_is_filled_up_to_ten_characters)
{
    EXPECT_EQ(displayText(9, "Gain"),
        (Bytes { 0xF0, 0x00, 0x00, 0x66, 0x05, 0x00, 0x12, 9, 'G', 'a', 'i', 'n', ' ', ' ', ' ',
            ' ', ' ', ' ', 0xF7 }));
    EXPECT_EQ(displayText(0, "0123456789").size(), 19u);
}

TEST(ConsolePackets, knobs_are_controllers_0x18_to_0x1B)
{
    EXPECT_EQ(knobPosition(1, 0x05), (Bytes { 0xB0, 0x18, 0x05 }));
    EXPECT_EQ(knobPosition(4, 0x7F), (Bytes { 0xB0, 0x1B, 0x7F }));
}

TEST(ConsolePackets, bytes_read_as_pairs_of_hex_digits)
{
    EXPECT_EQ(hexText(Bytes { 0x90, 0x00, 0x7F }), "90 00 7F");
    EXPECT_EQ(hexText(Bytes { 0xA5 }), "A5");
    EXPECT_EQ(hexText({}), "");
}

} // namespace
} // namespace kestrel::test
