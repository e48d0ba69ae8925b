#include "artwork/DotMatrixFont.h"
#include "artwork/KnobStrip.h"
#include "artwork/PanelPictures.h"
#include "tests/panel/look/Luminance.h"

#include <QImage>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace kestrel::test {
using namespace artwork;

namespace {

// The frame of a picture of the panel whose lower edge lies `fromBottom` units above the picture's.
QImage frame(const char* name, int fromBottom, QSize units, int scale = 1)
{
    const InterfaceImage picture = panelPicture(QLatin1String(name));
    const int top = qRound(picture.height()) - fromBottom - units.height();
    return picture.piece(QRect(QPoint(0, top), units), units * scale);
}

QImage knobFrame(int value, int scale = 1)
{
    return frame("knob67x67", (127 - value) * 67, { 67, 67 }, scale);
}

QImage lampFrame(const char* name, bool isLit, int scale = 1)
{
    return frame(name, isLit ? 0 : 67, { 67, 67 }, scale);
}

// What a cell of the doubled size shows: its dots are 2 × 2 pixels, 3 apart.
std::string dotsOf(int code)
{
    const QImage cell = frame("text", (127 - code) * 13, { 8, 13 }, 2);
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
    EXPECT_EQ(panelPicture("text").size(), QSizeF(8, 1664));
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
    EXPECT_EQ(panelPicture("knob67x67").size(), QSizeF(67, 8576));
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
    // Lamp 6 is at twelve o'clock, 27 units above the knob's middle.
    const QPoint lamp6(33, 4);
    EXPECT_GT(brightness(knobFrame(6), lamp6), 200);
    EXPECT_LT(brightness(knobFrame(5), lamp6), 100);
    EXPECT_LT(brightness(knobFrame(7), lamp6), 100);
}

TEST(KnobStrip, bit_6_lights_the_lower_lamp)
{
    const QPoint lowerLamp(33, 60);
    EXPECT_GT(luminance(knobFrame(0x46).pixel(lowerLamp)),
        4 * luminance(knobFrame(0x06).pixel(lowerLamp)));
}

TEST(LampKeys, are_two_square_frames_the_lit_one_below)
{
    for (const char* name : { "btn_green", "btn_red", "btn_orange" }) {
        ASSERT_EQ(panelPicture(name).size(), QSizeF(67, 134));
        const QPoint key(33, 50);
        EXPECT_GT(luminance(lampFrame(name, true).pixel(key)),
            4 * luminance(lampFrame(name, false).pixel(key)))
            << name;
    }
}

TEST(LampKeys, leave_the_part_under_the_knob_free)
{
    for (const char* name : { "btn_green", "btn_red", "btn_orange" }) {
        for (const bool isLit : { false, true }) {
            const QImage picture = lampFrame(name, isLit, 2);
            EXPECT_TRUE(isEmpty(picture.copy(0, 0, 134, 62)));
            EXPECT_TRUE(isEmpty(picture.copy(0, 133, 134, 1))) << "the glow is cut off";
        }
    }
}

TEST(PanelPictures, are_drawn_at_any_density_without_a_picture_of_another_size)
{
    for (const char* name : { "back", "text", "knob67x67", "btn_green", "btn_red", "btn_orange" }) {
        const InterfaceImage picture = panelPicture(name);
        ASSERT_NE(picture.drawn(), nullptr) << name;
        EXPECT_TRUE(picture.single().isNull()) << name << " keeps no pixels";
    }
    EXPECT_EQ(knobFrame(6, 5).size(), QSize(335, 335));
    EXPECT_TRUE(panelPicture("no such picture").isNull());
}

// Stretched pixels would show the same value three times in a row.
TEST(PanelPictures, have_edges_of_single_pixels_at_triple_density)
{
    const QImage knob = knobFrame(6, 3);
    int changes = 0;
    for (int x = 1; x < knob.width(); ++x)
        changes += x % 3 != 0 && knob.pixel(x, 100) != knob.pixel(x - 1, 100) ? 1 : 0;
    EXPECT_GT(changes, 30);
}

} // namespace
} // namespace kestrel::test
