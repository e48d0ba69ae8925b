#include "tools/artwork/CharacterAtlas.h"
#include "tools/artwork/DotMatrixFont.h"
#include "tools/artwork/KnobStrip.h"
#include "tools/artwork/LampKeys.h"

#include <QImage>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace kestrel::test {
using namespace artwork;

namespace {

// The frame whose lower edge lies `fromBottom` pixels above the picture's lower edge.
QImage frameAbove(const QImage& strip, int fromBottom, int height)
{
    return strip.copy(0, strip.height() - fromBottom - height, strip.width(), height);
}

// What a cell of the doubled atlas shows: its dots are 2 × 2 pixels, 3 apart.
std::string dotsOf(int code)
{
    static const QImage atlas = drawCharacterAtlas(2);
    const QImage cell = frameAbove(atlas, (127 - code) * 26, 26);
    std::string rows;
    for (int row = 0; row < DotRows; ++row) {
        for (int column = 0; column < DotColumns; ++column)
            rows += qAlpha(cell.pixel(3 * column, 3 * row)) == 255 ? '#' : '.';
        rows += '\n';
    }
    return rows;
}

std::string ringOf(int value)
{
    std::string lamps;
    for (int lamp = 1; lamp <= 11; ++lamp)
        lamps += isRingLampLit(value, lamp) ? 'o' : '.';
    return lamps;
}

bool isEmpty(const QImage& image)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) != 0)
                return false;
        }
    }
    return true;
}

int brightness(const QImage& image, QPoint at)
{
    return qGray(image.pixel(at));
}

const std::string blank = ".....\n.....\n.....\n.....\n.....\n.....\n.....\n.....\n.....\n";

TEST(CharacterAtlas, is_one_column_of_128_cells)
{
    EXPECT_EQ(drawCharacterAtlas(1).size(), QSize(8, 1664));
    EXPECT_EQ(drawCharacterAtlas(2).size(), QSize(16, 3328));
}

TEST(CharacterAtlas, letters_stand_in_the_cell_of_their_code)
{
    EXPECT_EQ(dotsOf('A'), ".###.\n#...#\n#...#\n#...#\n#####\n#...#\n#...#\n.....\n.....\n");
    EXPECT_EQ(dotsOf('g'), ".....\n.....\n.####\n#...#\n#...#\n#...#\n.####\n....#\n.###.\n");
    EXPECT_EQ(dotsOf(0x7E), ".....\n..#..\n...#.\n#####\n...#.\n..#..\n.....\n.....\n.....\n");
    EXPECT_EQ(dotsOf(0x7F), ".....\n..#..\n.#...\n#####\n.#...\n..#..\n.....\n.....\n.....\n");
}

TEST(CharacterAtlas, the_first_sixteen_codes_and_space_show_no_lit_dot)
{
    for (int code = 0; code <= 0x0F; ++code)
        EXPECT_EQ(dotsOf(code), blank) << code;
    EXPECT_EQ(dotsOf(' '), blank);
}

TEST(CharacterAtlas, blocks_fill_from_the_right)
{
    const std::vector<std::string> rows { "#####\n", ".####\n", "..###\n", "...##\n", "....#\n" };
    for (int i = 0; i < 5; ++i) {
        std::string expected;
        for (int row = 0; row < DotRows; ++row)
            expected += rows[static_cast<std::size_t>(i)];
        EXPECT_EQ(dotsOf(0x14 + i), expected) << i;
    }
}

TEST(CharacterAtlas, every_printing_code_has_a_glyph_of_its_own)
{
    std::map<std::string, int> seen;
    for (int code = 0x10; code < CharacterCount; ++code) {
        const auto [entry, isNew] = seen.emplace(dotsOf(code), code);
        EXPECT_TRUE(isNew) << code << " looks like " << entry->second;
    }
}

TEST(CharacterAtlas, only_letters_with_descenders_reach_below_the_line)
{
    std::string below;
    for (int code = 0x20; code < 0x7E; ++code) {
        if (dotsOf(code).substr(7 * 6) != ".....\n.....\n")
            below += static_cast<char>(code);
    }
    EXPECT_EQ(below, ",;_gjpqy");
}

TEST(KnobStrip, is_one_column_of_128_square_frames)
{
    EXPECT_EQ(drawKnobStrip(1).size(), QSize(67, 8576));
}

TEST(KnobStrip, rings_light_as_their_mode_says)
{
    EXPECT_EQ(ringOf(0x00), "...........");
    EXPECT_EQ(ringOf(0x01), "o..........");
    EXPECT_EQ(ringOf(0x0B), "..........o");
    EXPECT_EQ(ringOf(0x10), "...........");
    EXPECT_EQ(ringOf(0x13), "..oooo.....");
    EXPECT_EQ(ringOf(0x16), ".....o.....");
    EXPECT_EQ(ringOf(0x1B), ".....oooooo");
    EXPECT_EQ(ringOf(0x20), "...........");
    EXPECT_EQ(ringOf(0x24), "oooo.......");
    EXPECT_EQ(ringOf(0x2B), "ooooooooooo");
    EXPECT_EQ(ringOf(0x30), "...........");
    EXPECT_EQ(ringOf(0x31), ".....o.....");
    EXPECT_EQ(ringOf(0x33), "...ooooo...");
    EXPECT_EQ(ringOf(0x36), "ooooooooooo");
    EXPECT_EQ(ringOf(0x41), ringOf(0x01)) << "the lower lamp is no part of the ring";
}

TEST(KnobStrip, a_value_finds_its_frame_counted_from_the_bottom)
{
    const QImage strip = drawKnobStrip(1);
    // Lamp 6 is at twelve o'clock, 27 units above the knob's middle.
    const QPoint lamp6(33, 4);
    EXPECT_GT(brightness(frameAbove(strip, (127 - 6) * 67, 67), lamp6), 200);
    EXPECT_LT(brightness(frameAbove(strip, (127 - 5) * 67, 67), lamp6), 100);
    EXPECT_LT(brightness(frameAbove(strip, (127 - 7) * 67, 67), lamp6), 100);
}

TEST(KnobStrip, bit_6_lights_the_lower_lamp)
{
    const QImage strip = drawKnobStrip(1);
    const QPoint lowerLamp(33, 60);
    EXPECT_GT(brightness(frameAbove(strip, (127 - 0x46) * 67, 67), lowerLamp), 180);
    EXPECT_LT(brightness(frameAbove(strip, (127 - 0x06) * 67, 67), lowerLamp), 100);
}

TEST(KnobStrip, exactly_the_42_values_that_are_never_drawn_have_empty_frames)
{
    const QImage strip = drawKnobStrip(1);
    std::vector<int> empty;
    for (int value = 0; value < 128; ++value) {
        if (isEmpty(frameAbove(strip, (127 - value) * 67, 67)))
            empty.push_back(value);
    }
    const std::vector<int> expected { 12, 13, 14, 15, 28, 29, 30, 31, 44, 45, 46, 47, 55, 56, 57,
        58, 59, 60, 61, 62, 63, 76, 77, 78, 79, 92, 93, 94, 95, 108, 109, 110, 111, 119, 120, 121,
        122, 123, 124, 125, 126, 127 };
    EXPECT_EQ(empty, expected);
}

TEST(LampKeys, are_two_square_frames_the_lit_one_below)
{
    for (const LampColour colour : { LampColour::Green, LampColour::Red, LampColour::Orange }) {
        const QImage picture = drawLampKey(colour, 1);
        ASSERT_EQ(picture.size(), QSize(67, 134));
        const QPoint key(33, 50);
        EXPECT_GT(brightness(frameAbove(picture, 0, 67), key), 200);
        EXPECT_LT(brightness(frameAbove(picture, 67, 67), key), 70);
    }
}

TEST(LampKeys, leave_the_part_under_the_knob_free)
{
    for (const LampColour colour : { LampColour::Green, LampColour::Red, LampColour::Orange }) {
        const QImage picture = drawLampKey(colour, 2);
        for (const int fromBottom : { 0, 134 }) {
            const QImage frame = frameAbove(picture, fromBottom, 134);
            EXPECT_TRUE(isEmpty(frame.copy(0, 0, 134, 62)));
            EXPECT_TRUE(isEmpty(frame.copy(0, 133, 134, 1))) << "the glow is cut off";
        }
    }
}

} // namespace
} // namespace kestrel::test
