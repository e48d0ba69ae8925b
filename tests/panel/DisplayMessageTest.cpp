#include "panel/PlugInPanelView.h"
#include "tests/panel/GeometryPictures.h"
#include "tests/panel/PanelMessages.h"

#include <gmock/gmock.h>

namespace kestrel::test {

namespace {
using PanelMessages::Bytes;
using testing::Each;
using testing::ElementsAre;

class DisplayMessages : public testing::Test {
protected:
    void send(const Bytes& bytes) { view.updateZone(bytes, false); }

    [[nodiscard]] std::string zone(std::size_t number) const
    {
        const auto& codes = (*view.myZonesArray())[number];
        return { codes.begin(), codes.end() };
    }

    PlugInPanelView view { QRect(0, 0, 782, 220), &GeometryPictures::named };
    const std::string empty = std::string(10, '\0');
};
} // namespace

TEST_F(DisplayMessages, one_record_fills_the_zone_it_names_and_no_other)
{
    send({ 0xF0, 0x00, 0x00, 0x66, 0x05, 0x00, 0x12, 0x02, 'T', 'h', 'r', 'e', 's', 'h', 'o', 'l',
        'd', ' ', 0xF7 });
    EXPECT_EQ(zone(2), "Threshold ");
    for (const std::size_t other : { 0u, 1u, 3u, 4u, 5u, 6u, 7u, 8u, 9u })
        EXPECT_EQ(zone(other), empty) << other;
}

TEST_F(DisplayMessages, one_message_may_carry_several_records)
{
    send({ 0xF0, 0x00, 0x00, 0x66, 0x05, 0x00, 0x12, //
        0x04, '0', '1', '2', '3', '4', '5', '6', '7', '8', '9', //
        0x05, 'a', 'b', 'c', 'd', 'e', 'f', 'g', 'h', 'i', 'j', 0xF7 });
    EXPECT_EQ(zone(4), "0123456789");
    EXPECT_EQ(zone(5), "abcdefghij");
}

TEST_F(DisplayMessages, a_later_record_for_the_same_zone_wins)
{
    send(PanelMessages::display({ { 3, "first     " }, { 3, "second    " } }));
    EXPECT_EQ(zone(3), "second    ");
}

TEST_F(DisplayMessages, zones_8_and_9_are_stored)
{
    send(PanelMessages::display({ { 8, "eighth    " }, { 9, "ninth     " } }));
    EXPECT_EQ(zone(8), "eighth    ");
    EXPECT_EQ(zone(9), "ninth     ");
}

TEST_F(DisplayMessages, a_record_for_zone_10_or_more_is_skipped_with_its_ten_characters)
{
    send(PanelMessages::display({ { 10, "0000000000" }, { 0, "kept      " }, { 0x7F, "1111111111" },
        { 0xFF, "2222222222" }, { 1, "kept too  " } }));
    EXPECT_EQ(zone(0), "kept      ");
    EXPECT_EQ(zone(1), "kept too  ");
    for (std::size_t other = 2; other < 10; ++other)
        EXPECT_EQ(zone(other), empty) << other;
}

TEST_F(DisplayMessages, the_end_byte_in_place_of_the_first_zone_ends_the_message)
{
    send({ 0xF0, 0x00, 0x00, 0x66, 0x05, 0x00, 0x12, 0xF7, '0', '1', '2', '3', '4', '5', '6', '7',
        '8', '9', 0x01, '0', '1', '2', '3', '4', '5', '6', '7', '8', '9', 0xF7 });
    EXPECT_THAT(*view.myZonesArray(), Each(Each(0)));
}

TEST_F(DisplayMessages, nothing_after_the_end_byte_is_read)
{
    Bytes bytes = PanelMessages::display({ { 0, "before    " } });
    // If the end byte were taken for a zone, the ten bytes would be skipped and the record stored.
    bytes.insert(bytes.end(), 10, 'x');
    bytes.insert(bytes.end(), { 0x01, 'a', 'f', 't', 'e', 'r', ' ', ' ', ' ', ' ', ' ', 0xF7 });
    send(bytes);
    EXPECT_EQ(zone(0), "before    ");
    EXPECT_EQ(zone(1), empty);
}

TEST_F(DisplayMessages, a_message_of_seven_bytes_or_fewer_changes_nothing)
{
    const Bytes bytes { 0xF0, 0x00, 0x00, 0x66, 0x05, 0x00, 0x12 };
    for (std::size_t length = 0; length <= bytes.size(); ++length) {
        send({ bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length) });
        EXPECT_THAT(*view.myZonesArray(), Each(Each(0))) << length;
    }
}

TEST_F(DisplayMessages, another_command_changes_nothing)
{
    Bytes bytes = PanelMessages::display({ { 0, "0123456789" } });
    bytes[6] = 0x13;
    send(bytes);
    EXPECT_THAT(*view.myZonesArray(), Each(Each(0)));
}

TEST_F(DisplayMessages, the_header_before_the_command_is_not_looked_at)
{
    Bytes bytes = PanelMessages::display({ { 0, "0123456789" } });
    std::fill_n(bytes.begin(), 6, 0x55);
    send(bytes);
    EXPECT_EQ(zone(0), "0123456789");
}

TEST_F(DisplayMessages, a_record_cut_off_by_the_end_of_the_data_is_ignored)
{
    Bytes bytes = PanelMessages::display({ { 0, "whole     " }, { 1, "cut off   " } });
    bytes.resize(bytes.size() - 2); // the end byte and the last character
    send(bytes);
    EXPECT_EQ(zone(0), "whole     ");
    EXPECT_EQ(zone(1), empty);
}

TEST_F(DisplayMessages, a_record_that_ends_with_the_data_needs_no_end_byte)
{
    Bytes bytes = PanelMessages::display({ { 1, "0123456789" } });
    bytes.pop_back();
    send(bytes);
    EXPECT_EQ(zone(1), "0123456789");
}

TEST_F(DisplayMessages, character_codes_are_stored_as_raw_bytes)
{
    send({ 0xF0, 0, 0, 0x66, 5, 0, 0x12, 0x06, 0, 1, 0x14, 0x7F, 0x80, 0xC3, 0xF6, 0xF7, 0xF8, 0xFF,
        0xF7 });
    EXPECT_THAT((*view.myZonesArray())[6],
        ElementsAre(0, 1, 0x14, 0x7F, 0x80, 0xC3, 0xF6, 0xF7, 0xF8, 0xFF));
}

TEST_F(DisplayMessages, the_store_is_made_by_the_first_message_even_a_malformed_one)
{
    EXPECT_FALSE(view.myZonesArray().has_value());
    view.initMessageArry();
    EXPECT_FALSE(view.myZonesArray().has_value());
    send({});
    ASSERT_TRUE(view.myZonesArray().has_value());
    EXPECT_THAT(*view.myZonesArray(), Each(Each(0)));
}

TEST_F(DisplayMessages, setting_up_keeps_a_store_that_is_there)
{
    send(PanelMessages::display({ { 0, "0123456789" } }));
    view.setupMessageArry();
    EXPECT_EQ(zone(0), "0123456789");
}

TEST_F(DisplayMessages, emptying_the_display_clears_all_ten_zones_and_leaves_knobs_and_lamps)
{
    for (std::uint8_t number = 0; number < 10; ++number)
        send(PanelMessages::display({ { number, "0123456789" } }));
    view.updateDSParea(PanelMessages::knob(3, 0x25), false);
    view.updateDSParea(PanelMessages::lamp(7, true), false);
    view.initMessageArry();
    EXPECT_THAT(*view.myZonesArray(), Each(Each(0)));
    EXPECT_THAT(*view.myKnobArray(), ElementsAre(0, 0, 0, 0x25));
    EXPECT_THAT(*view.mySwitchArray(), ElementsAre(0, 0, 0, 0, 0, 0, 0, 0x47, 0));
}

TEST_F(DisplayMessages, text_attributes_are_never_filled)
{
    view.prepareAttributes();
    send(PanelMessages::display({ { 0, "0123456789" } }));
    EXPECT_TRUE(view.attributes().isEmpty());
    EXPECT_EQ(view.heightDisplayPixel(), 0);
}

} // namespace kestrel::test
