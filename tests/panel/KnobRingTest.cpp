#include "panel/KnobRing.h"

#include "artwork/KnobStrip.h"
#include "panel/PanelText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace kestrel::test {

namespace {
using Mode = KnobRing::Mode;

bool isLampLit(KnobRing ring, int lamp)
{
    const int position = ring.position();
    if (position == 0)
        return false;
    switch (ring.mode()) {
    case Mode::OneLamp:
        return lamp == position;
    case Mode::FromMiddle:
        return lamp >= std::min(position, KnobRing::MiddleLamp)
            && lamp <= std::max(position, KnobRing::MiddleLamp);
    case Mode::FromFirst:
        return lamp <= position;
    case Mode::BothSides:
        return std::abs(lamp - KnobRing::MiddleLamp) < position;
    }
    return false;
}

QString said(int value)
{
    return PanelText::ring(KnobRing(static_cast<std::uint8_t>(value)));
}
} // namespace

TEST(KnobRing, a_value_holds_position_mode_and_lower_lamp)
{
    EXPECT_EQ(KnobRing(0x00).position(), 0);
    EXPECT_EQ(KnobRing(0x0B).position(), 11);
    EXPECT_EQ(KnobRing(0x47).position(), 7);
    EXPECT_EQ(KnobRing(0x76).position(), 6);
    EXPECT_EQ(KnobRing(0x07).mode(), Mode::OneLamp);
    EXPECT_EQ(KnobRing(0x47).mode(), Mode::OneLamp);
    EXPECT_EQ(KnobRing(0x17).mode(), Mode::FromMiddle);
    EXPECT_EQ(KnobRing(0x27).mode(), Mode::FromFirst);
    EXPECT_EQ(KnobRing(0x36).mode(), Mode::BothSides);
    EXPECT_EQ(KnobRing(0x76).mode(), Mode::BothSides);
    EXPECT_FALSE(KnobRing(0x36).isLowerLampLit());
    EXPECT_TRUE(KnobRing(0x76).isLowerLampLit());
    EXPECT_TRUE(KnobRing(0x40).isLowerLampLit());
}

TEST(KnobRing, a_ring_that_spreads_has_6_positions_and_the_others_11)
{
    EXPECT_EQ(KnobRing(0x01).lastPosition(), 11);
    EXPECT_EQ(KnobRing(0x51).lastPosition(), 11);
    EXPECT_EQ(KnobRing(0x21).lastPosition(), 11);
    EXPECT_EQ(KnobRing(0x31).lastPosition(), 6);
    EXPECT_EQ(KnobRing(0x71).lastPosition(), 6);
}

TEST(KnobRing, exactly_42_values_up_to_127_and_all_above_have_no_picture)
{
    int without = 0;
    for (int value = 0; value < 256; ++value) {
        const KnobRing ring(static_cast<std::uint8_t>(value));
        const bool isWithout
            = (value & 0x0C) == 0x0C || (value >= 55 && value <= 63) || value > 118;
        EXPECT_EQ(ring.hasPicture(), !isWithout) << value;
        EXPECT_EQ(ring.frame(), value);
        without += value < 128 && !ring.hasPicture() ? 1 : 0;
    }
    EXPECT_EQ(without, 42);
}

TEST(KnobRing, a_value_without_a_picture_shows_no_lamp)
{
    for (const int value : { 0x0C, 0x1F, 0x37, 0x4F, 0x77, 0x7F, 0x85, 0xC5, 0xFF }) {
        const KnobRing ring(static_cast<std::uint8_t>(value));
        EXPECT_EQ(ring.position(), 0) << value;
        EXPECT_FALSE(ring.isLowerLampLit()) << value;
        EXPECT_EQ(said(value), "not shown") << value;
    }
}

TEST(KnobRing, the_pictures_of_the_knob_show_what_a_ring_says)
{
    for (int value = 0; value < 128; ++value) {
        const KnobRing ring(static_cast<std::uint8_t>(value));
        for (int lamp = 1; ring.hasPicture() && lamp <= KnobRing::Lamps; ++lamp) {
            EXPECT_EQ(isLampLit(ring, lamp), artwork::isRingLampLit(value, lamp))
                << value << " " << lamp;
        }
    }
}

TEST(KnobRing, reads_in_every_mode_as_the_lamps_that_are_lit)
{
    EXPECT_EQ(said(0x07), "lamp 7 of 11");
    EXPECT_EQ(said(0x12), "from the middle to lamp 2 of 11");
    EXPECT_EQ(said(0x1B), "from the middle to lamp 11 of 11");
    EXPECT_EQ(said(0x24), "from the first to lamp 4 of 11");
    EXPECT_EQ(said(0x31), "the middle lamp");
    EXPECT_EQ(said(0x32), "1 lamp to each side of the middle");
    EXPECT_EQ(said(0x36), "5 lamps to each side of the middle");
}

TEST(KnobRing, that_is_dark_says_so_in_every_mode)
{
    for (const int value : { 0x00, 0x10, 0x20, 0x30 })
        EXPECT_EQ(said(value), "dark") << value;
}

TEST(KnobRing, reads_the_lower_lamp_only_when_it_is_lit)
{
    EXPECT_EQ(said(0x40), "dark, lower lamp lit");
    EXPECT_EQ(said(0x47), "lamp 7 of 11, lower lamp lit");
    EXPECT_EQ(said(0x76), "5 lamps to each side of the middle, lower lamp lit");
}

} // namespace kestrel::test
