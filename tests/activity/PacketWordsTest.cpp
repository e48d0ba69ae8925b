#include "activity/PacketWords.h"

#include <gtest/gtest.h>

#include <vector>

namespace kestrel::test {

namespace {
using Bytes = std::vector<std::uint8_t>;
using Kind = ActivityEvent::Kind;

ActivityEvent packet(const Bytes& bytes)
{
    ActivityEvent event(Kind::Packet, {});
    event.setPacket(bytes);
    return event;
}

std::string words(const Bytes& bytes)
{
    return PacketWords::describe(packet(bytes));
}

Bytes display(std::uint8_t zone, std::string_view text)
{
    Bytes bytes { 0xF0, 0, 0, 0x66, 5, 0, 0x12, zone };
    bytes.insert(bytes.end(), text.begin(), text.end());
    bytes.push_back(0xF7);
    return bytes;
}
} // namespace

TEST(PacketWords, a_key_is_named_as_it_is_engraved_in_one_packet_and_in_two)
{
    EXPECT_EQ(words({ 0xB0, 0x0F, 0x40, 0x2F, 0x45 }), "Key 6 pressed");
    EXPECT_EQ(words({ 0xB0, 0x0F, 0x40, 0x2F, 0x0B }), "Key 12 released");
    EXPECT_EQ(words({ 0xB0, 0x0F, 0x40 }), "Key follows");
    EXPECT_EQ(words({ 0xB0, 0x2F, 0x40 }), "Key 1 pressed");
}

TEST(PacketWords, a_lamp_is_named_by_its_label)
{
    EXPECT_EQ(words({ 0xB0, 0x0C, 0x1C, 0x2C, 0x42 }), "Lamp SELECT 1 on");
    EXPECT_EQ(words({ 0xB0, 0x0C, 0x1C }), "Lamp follows");
    EXPECT_EQ(words({ 0xB0, 0x2C, 0x07 }), "Lamp COMPARE off");
    EXPECT_EQ(words({ 0xB0, 0x2C, 0x48 }), "Lamp number 8 on");
}

TEST(PacketWords, a_knob_has_a_position_a_mode_and_a_lower_lamp)
{
    EXPECT_EQ(words({ 0xB0, 0x18, 0x25 }), "Knob 1: 5 of 11, from the left");
    EXPECT_EQ(words({ 0xB0, 0x19, 0x05 }), "Knob 2: 5 of 11, alone");
    EXPECT_EQ(words({ 0xB0, 0x1A, 0x1B }), "Knob 3: 11 of 11, from the middle");
    EXPECT_EQ(words({ 0xB0, 0x1B, 0x73 }), "Knob 4: 3 of 11, to both sides, lower lamp on");
    EXPECT_EQ(words({ 0xB0, 0x1B, 0x00 }), "Knob 4: dark");
}

TEST(PacketWords, the_display_is_quoted_by_zone_without_its_fill)
{
    EXPECT_EQ(words(display(2, "FREQ      ")), "Display zone 2: FREQ");
    EXPECT_EQ(words(display(0,
                  "A         \x01"
                  "B\x1F        ")),
        "Display zone 0: A, zone 1: B·");
    EXPECT_EQ(words(display(0, "short")), "Display, without a text");
}

TEST(PacketWords, what_has_no_meaning_is_an_unknown_packet)
{
    for (const Bytes& bytes : { Bytes {}, Bytes { 0x90, 0 }, Bytes { 0x90, 0, 1 },
             Bytes { 0xF0, 0, 0, 0x66, 5, 0, 0x13, 0 }, Bytes { 0xF0, 0, 0 }, Bytes { 0xB0, 7, 7 },
             Bytes { 0xB0, 0x0F, 0x41 }, Bytes { 0xC0, 0, 0 } })
        EXPECT_EQ(words(bytes), "Unknown packet");
    EXPECT_EQ(words({ 0x90, 0, 0 }), "Heartbeat");
}

TEST(PacketWords, bytes_are_hexadecimal_and_a_cut_packet_says_so)
{
    EXPECT_EQ(PacketWords::hexadecimal(packet({ 0x90, 0x00, 0x7F })), "90 00 7F");
    EXPECT_EQ(PacketWords::hexadecimal(packet({})), "");
    const std::string cut
        = PacketWords::hexadecimal(packet(Bytes(ActivityEvent::KeptBytes + 1, 0xAB)));
    EXPECT_EQ(cut.size(), ActivityEvent::KeptBytes * 3 - 1 + std::string(" …").size());
    EXPECT_TRUE(cut.ends_with("AB …"));
}

TEST(PacketWords, only_a_press_is_a_press)
{
    EXPECT_TRUE(PacketWords::isKeyPress(packet({ 0xB0, 0x2F, 0x40 })));
    EXPECT_TRUE(PacketWords::isKeyPress(packet({ 0xB0, 0x0F, 0x40, 0x2F, 0x45 })));
    EXPECT_FALSE(PacketWords::isKeyPress(packet({ 0xB0, 0x2F, 0x00 })));
    EXPECT_FALSE(PacketWords::isKeyPress(packet({ 0xB0, 0x0F, 0x40 })));
    EXPECT_FALSE(PacketWords::isKeyPress(packet({ 0xB0, 0x2C, 0x40 })));
}

TEST(PacketWords, events_of_the_link_are_sentences)
{
    ActivityEvent opened(Kind::LinkOpened, {});
    opened.setText("ZENTA");
    EXPECT_EQ(PacketWords::describe(opened), "Link opened: ZENTA");
    EXPECT_EQ(PacketWords::describe({ Kind::ConsoleSilent, {} }), "No heartbeat for 5 seconds");
    EXPECT_EQ(PacketWords::describe({ Kind::WorkstationMissing, {} }), "Pro Tools is not running");
}

} // namespace kestrel::test
