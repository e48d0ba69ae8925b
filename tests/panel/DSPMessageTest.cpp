#include "panel/PlugInPanelView.h"
#include "tests/panel/GeometryPictures.h"
#include "tests/panel/PanelMessages.h"

#include <gmock/gmock.h>

namespace kestrel::test {

namespace {
using PanelMessages::Bytes;
using testing::Each;
using testing::ElementsAre;

class DSPMessages : public testing::Test {
protected:
    void send(const Bytes& bytes) { view.updateDSParea(bytes, false); }
    [[nodiscard]] const PanelKnobs& knobs() const { return *view.myKnobArray(); }
    [[nodiscard]] const PanelSwitches& switches() const { return *view.mySwitchArray(); }

    PlugInPanelView view { QRect(0, 0, 782, 220), &GeometryPictures::named };
};
} // namespace

TEST_F(DSPMessages, knobs_and_lamps_start_at_zero)
{
    EXPECT_THAT(knobs(), ElementsAre(0, 0, 0, 0));
    EXPECT_THAT(switches(), ElementsAre(0, 0, 0, 0, 0, 0, 0, 0, 0));
}

TEST_F(DSPMessages, controller_0x19_sets_knob_1)
{
    send({ 0xB0, 0x19, 0x45 });
    EXPECT_THAT(knobs(), ElementsAre(0, 0x45, 0, 0));
}

TEST_F(DSPMessages, the_low_four_bits_of_the_controller_name_the_knob)
{
    for (const unsigned high : { 0x00u, 0x10u, 0x20u, 0x70u, 0xF0u }) {
        for (unsigned knob = 0; knob < 4; ++knob) {
            const auto value = static_cast<std::uint8_t>(high / 2 + knob + 1);
            send({ 0xB0, static_cast<std::uint8_t>(high + 8 + knob), value });
            EXPECT_EQ(knobs()[knob], value) << high;
        }
    }
    EXPECT_THAT(switches(), Each(0));
}

TEST_F(DSPMessages, of_several_values_for_a_knob_the_last_one_wins)
{
    send({ 0xB0, 0x18, 0x05, 0x18, 0x7F });
    EXPECT_EQ(knobs()[0], 0x7F);
}

TEST_F(DSPMessages, every_value_goes_to_the_knob_of_the_first_controller)
{
    send({ 0xB0, 0x18, 0x05, 0x1B, 0x22 });
    EXPECT_THAT(knobs(), ElementsAre(0x22, 0, 0, 0));
}

TEST_F(DSPMessages, a_knob_message_of_even_length_stops_at_the_end_of_its_data)
{
    const Bytes bytes { 0xB0, 0x18, 0x05, 0x18, 0x7F };
    send({ bytes.begin(), bytes.begin() + 2 });
    EXPECT_EQ(knobs()[0], 0);
    send({ bytes.begin(), bytes.begin() + 4 });
    EXPECT_EQ(knobs()[0], 5);
}

TEST_F(DSPMessages, knob_values_are_stored_as_raw_bytes)
{
    send({ 0xB0, 0x1A, 0xFF });
    EXPECT_EQ(knobs()[2], 0xFF);
}

TEST_F(DSPMessages, a_message_without_a_controller_number_changes_nothing)
{
    send({});
    send({ 0xB0 });
    EXPECT_THAT(knobs(), Each(0));
    EXPECT_THAT(switches(), Each(0));
}

TEST_F(DSPMessages, the_lamp_message_in_one_piece_sets_a_lamp)
{
    send({ 0xB0, 0x0C, 0x1C, 0x2C, 0x42 });
    EXPECT_THAT(switches(), ElementsAre(0, 0, 0x42, 0, 0, 0, 0, 0, 0));
}

TEST_F(DSPMessages, the_lamp_message_after_a_lone_zone_select_sets_a_lamp)
{
    send({ 0xB0, 0x0C, 0x1C, 0x2C, 0x42 });
    send({ 0xB0, 0x2C, 0x02 });
    EXPECT_THAT(switches(), ElementsAre(0, 0, 0x02, 0, 0, 0, 0, 0, 0));
}

TEST_F(DSPMessages, one_lamp_message_may_set_several_lamps)
{
    send({ 0xB0, 0x0C, 0x1C, 0x2C, 0x40, 0x2C, 0x47, 0x2C, 0x03 });
    EXPECT_THAT(switches(), ElementsAre(0x40, 0, 0, 3, 0, 0, 0, 0x47, 0));
}

TEST_F(DSPMessages, a_lamp_number_above_7_changes_nothing)
{
    for (const std::uint8_t value : Bytes { 0x48, 0x08, 0x3F, 0x7F, 0x80, 0xFF })
        send({ 0xB0, 0x2C, value });
    EXPECT_THAT(switches(), Each(0));
}

TEST_F(DSPMessages, a_lone_zone_select_sets_no_lamp)
{
    send({ 0xB0, 0x0C, 0x01 });
    send({ 0xB0, 0x0C, 0x01, 0x2C });
    EXPECT_THAT(switches(), Each(0));
}

TEST_F(DSPMessages, the_byte_after_the_zone_select_is_not_looked_at)
{
    send({ 0xB0, 0x0C, 0x77, 0x66, 0x41 });
    EXPECT_EQ(switches()[1], 0x41);
}

TEST_F(DSPMessages, every_other_controller_is_ignored)
{
    for (unsigned controller = 0; controller < 256; ++controller) {
        const bool isKnob = (controller & 0x0Cu) == 0x08u;
        if (isKnob || controller == 0x0C || controller == 0x2C)
            continue;
        const auto c = static_cast<std::uint8_t>(controller);
        send({ 0xB0, c, 0x41, c, 0x42, c, 0x43 });
        ASSERT_THAT(knobs(), Each(0)) << controller;
        ASSERT_THAT(switches(), Each(0)) << controller;
    }
}

TEST_F(DSPMessages, going_offline_blanks_the_display_and_puts_out_every_lamp_and_knob)
{
    for (std::uint8_t i = 0; i < 8; ++i)
        send(PanelMessages::lamp(i, true));
    for (std::uint8_t i = 0; i < 4; ++i)
        send(PanelMessages::knob(i, 0x15));

    for (const Bytes& message : PanelMessages::silence()) {
        view.updateZone(message, false);
        send(message);
    }

    EXPECT_THAT(*view.myZonesArray(), Each(Each(' ')));
    EXPECT_THAT(switches(), ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 0));
    EXPECT_THAT(knobs(), Each(0));
}

TEST_F(DSPMessages, the_status_byte_is_not_looked_at)
{
    send({ 0x00, 0x19, 0x45 });
    send({ 0xBF, 0x0C, 0x1C, 0x2C, 0x42 });
    EXPECT_EQ(knobs()[1], 0x45);
    EXPECT_EQ(switches()[2], 0x42);
}

} // namespace kestrel::test
