#include "tests/panel/GeometryPictures.h"
#include "tests/panel/MirroringPanel.h"
#include "tests/panel/Painted.h"
#include "tests/panel/look/NaturalSize.h"

#include <gmock/gmock.h>

#include <map>

namespace kestrel::test {

namespace {
namespace Pictures = GeometryPictures;
using namespace std::string_view_literals;

constexpr std::array<int, 4> ZoneLeft { 298, 395, 492, 589 };
constexpr std::array<int, 4> KnobLeft { 309, 406, 503, 600 };

struct LampPlace {
    QString image;
    int left;
};
const std::array<LampPlace, 8> LampPlaces { { { "btn_red", 697 }, { "btn_red", 18 },
    { "btn_orange", 309 }, { "btn_orange", 406 }, { "btn_orange", 503 }, { "btn_orange", 600 },
    { "btn_green", 212 }, { "btn_green", 115 } } };

// Converts a rectangle measured from the bottom left of the panel to pixels from the top left.
QRect inPicture(double left, double bottom, double width, double height, double panelHeight = 220)
{
    return QRectF(left, panelHeight - bottom - height, width, height).toRect();
}

bool isAll(const QImage& image, const QRect& area, QRgb colour)
{
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (image.pixel(x, y) != colour)
                return false;
        }
    }
    return true;
}

// True if the area shows only the background picture.
bool isBackground(const QImage& image, const QRect& area)
{
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (image.pixel(x, y) != Pictures::background(x, y))
                return false;
        }
    }
    return true;
}

// Makes a panel with the usual pictures, except for one.
PlugInPanelView withPicture(const QString& replaced, const QImage& picture)
{
    return PlugInPanelView(QRect(0, 0, 782, 220), [&](const QString& name) {
        return name == replaced ? InterfaceImage(picture) : Pictures::named(name);
    });
}

class Drawing : public testing::Test, protected MirroringPanel {
protected:
    Drawing()
        : MirroringPanel(Window::Hidden, &Pictures::named)
    {
    }
};
} // namespace

TEST_F(Drawing, every_character_has_its_cell)
{
    for (std::uint8_t zone = 0; zone < 8; ++zone) {
        std::string characters;
        for (int k = 0; k < 10; ++k)
            characters += static_cast<char>(zone * 10 + k);
        display(zone, characters);
    }
    const QImage image = painted(view);
    for (int zone = 0; zone < 8; ++zone) {
        for (int k = 0; k < 10; ++k) {
            const int left = ZoneLeft[static_cast<std::size_t>(zone % 4)] + 9 * k;
            const QRect cell = inPicture(left, zone < 4 ? 190 : 174, 8, 13);
            EXPECT_TRUE(isAll(image, cell, Pictures::cell(zone * 10 + k))) << zone << " " << k;
            const QRect gap(cell.right() + 1, cell.top(), 1, 13);
            EXPECT_TRUE(isBackground(image, gap)) << zone << " " << k;
        }
    }
}

TEST_F(Drawing, the_rows_are_13_high_and_3_apart)
{
    display(0, "aaaaaaaaaa");
    display(4, "bbbbbbbbbb");
    const QImage image = painted(view);
    EXPECT_TRUE(isBackground(image, QRect(298, 0, 8, 17)));
    EXPECT_TRUE(isAll(image, QRect(298, 17, 8, 13), Pictures::cell('a')));
    EXPECT_TRUE(isBackground(image, QRect(298, 30, 8, 3)));
    EXPECT_TRUE(isAll(image, QRect(298, 33, 8, 13), Pictures::cell('b')));
    EXPECT_TRUE(isBackground(image, QRect(298, 46, 8, 1)));
}

TEST_F(Drawing, every_code_from_0_to_127_shows_its_own_cell)
{
    for (int code = 0; code < 128; ++code) {
        display(0, std::string(10, static_cast<char>(code)));
        const QImage image = painted(view);
        ASSERT_TRUE(isAll(image, QRect(298, 17, 8, 13), Pictures::cell(code))) << code;
    }
}

TEST_F(Drawing, codes_above_127_draw_nothing)
{
    for (int code = 128; code < 256; ++code) {
        display(0, std::string(10, static_cast<char>(code)));
        ASSERT_TRUE(isBackground(painted(view), QRect(298, 17, 97, 13))) << code;
    }
}

TEST_F(Drawing, no_text_is_drawn_before_the_first_message)
{
    EXPECT_TRUE(isBackground(painted(view), QRect(290, 0, 400, 60)));
}

TEST_F(Drawing, zones_8_and_9_are_not_drawn)
{
    display(0, "          ");
    const QImage before = painted(view);
    display(8, "8888888888");
    display(9, "9999999999");
    EXPECT_EQ(painted(view), before);
}

TEST_F(Drawing, each_knob_has_its_place)
{
    for (std::uint8_t i = 0; i < 4; ++i)
        knob(i, 0x40 + i);
    const QImage image = painted(view);
    for (std::uint8_t i = 0; i < 4; ++i) {
        const QRect place = inPicture(KnobLeft[i], 73, 67, 67);
        EXPECT_TRUE(isAll(image, place, Pictures::frame(0x40 + i))) << int(i);
        EXPECT_TRUE(isBackground(image, place.translated(-1, 0).adjusted(0, 0, -66, -40)));
        EXPECT_TRUE(isBackground(image, place.translated(0, -1).adjusted(0, 0, 0, -66)));
    }
}

TEST_F(Drawing, exactly_42_knob_values_draw_nothing_and_the_others_their_own_frame)
{
    int blank = 0;
    for (int value = 0; value < 128; ++value) {
        const bool isBlank = (value >= 12 && value <= 15) || (value >= 28 && value <= 31)
            || (value >= 44 && value <= 47) || (value >= 55 && value <= 63)
            || (value >= 76 && value <= 79) || (value >= 92 && value <= 95)
            || (value >= 108 && value <= 111) || (value >= 119 && value <= 127);
        blank += isBlank ? 1 : 0;
        knob(1, value);
        const QImage image = painted(view);
        const QRect upperPart = inPicture(406, 105, 67, 35); // no lamp is below it
        if (isBlank)
            ASSERT_TRUE(isBackground(image, upperPart)) << value;
        else
            ASSERT_TRUE(isAll(image, inPicture(406, 73, 67, 67), Pictures::frame(value))) << value;
    }
    EXPECT_EQ(blank, 42);
}

TEST_F(Drawing, knob_values_above_127_draw_nothing)
{
    for (const int value : { 128, 192, 255 }) {
        knob(0, value);
        ASSERT_TRUE(isBackground(painted(view), inPicture(309, 105, 67, 35))) << value;
    }
}

TEST_F(Drawing, every_lamp_is_drawn_lit_or_unlit_in_its_place_and_colour)
{
    for (int lit = 0; lit < 8; ++lit) {
        for (std::uint8_t i = 0; i < 8; ++i)
            lamp(i, i == lit);
        const QImage image = painted(view);
        for (int i = 0; i < 8; ++i) {
            const auto& [picture, left] = LampPlaces[static_cast<std::size_t>(i)];
            const QRect belowKnobs = inPicture(left, 38, 67, 35);
            ASSERT_TRUE(isAll(image, belowKnobs, Pictures::lamp(picture, i == lit))) << lit << i;
        }
    }
}

TEST_F(Drawing, lamps_are_as_high_as_wide)
{
    const QImage image = painted(view);
    EXPECT_TRUE(isAll(image, inPicture(18, 38, 67, 67), Pictures::lamp("btn_red", false)));
    EXPECT_TRUE(isBackground(image, inPicture(18, 105, 67, 1)));
    EXPECT_TRUE(isBackground(image, inPicture(18, 37, 67, 1)));
    EXPECT_TRUE(isBackground(image, inPicture(85, 38, 1, 67)));
}

TEST_F(Drawing, knobs_are_drawn_over_lamps)
{
    const QRect both = inPicture(309, 73, 67, 32);
    EXPECT_TRUE(isAll(painted(view), both, Pictures::frame(0)));
    knob(0, 127);
    EXPECT_TRUE(isAll(painted(view), both, Pictures::lamp("btn_orange", false)));
}

TEST_F(Drawing, the_background_fills_the_panel_and_its_own_opacity_alone_counts)
{
    const QImage image = painted(view);
    EXPECT_TRUE(isBackground(image, QRect(0, 0, 782, 15)));
    EXPECT_TRUE(isBackground(image, QRect(0, 190, 782, 30)));
    EXPECT_TRUE(isBackground(image, QRect(700, 0, 82, 100)));
}

TEST_F(Drawing, a_background_with_holes_shows_the_dark_ground_and_nothing_of_the_frame_before)
{
    PlugInPanelView holed(QRect(0, 0, 782, 220), [](const QString& name) {
        QImage image(782, 220, QImage::Format_ARGB32_Premultiplied);
        image.fill(QColor(200, 100, 0, 128));
        return name == "back" ? InterfaceImage(image) : InterfaceImage();
    });
    // SourceIn over an opaque ground gives half of the colour and nothing of the ground.
    const QRgb half = qRgb(100, 50, 0);
    const QImage onScreen = painted(holed);
    for (const auto x : { 0, 400, 781 }) {
        EXPECT_NEAR(qRed(onScreen.pixel(x, 110)), qRed(half), 1);
        EXPECT_NEAR(qGreen(onScreen.pixel(x, 110)), qGreen(half), 1);
        EXPECT_EQ(qBlue(onScreen.pixel(x, 110)), 0);
    }
    QImage offScreen(782, 220, QImage::Format_ARGB32_Premultiplied);
    offScreen.fill(Qt::transparent);
    QPainter painter(&offScreen);
    holed.drawRect(painter, holed.rect());
    painter.end();
    EXPECT_NEAR(qAlpha(offScreen.pixel(400, 110)), 128, 1);
    EXPECT_NEAR(qRed(offScreen.pixel(400, 110)), 100, 1); // premultiplied
}

TEST_F(Drawing, the_background_comes_out_on_a_transparent_picture_too)
{
    QImage image(782, 220, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    view.drawRect(painter, view.rect());
    painter.end();
    EXPECT_TRUE(isBackground(image.convertToFormat(QImage::Format_RGB32), QRect(0, 0, 782, 15)));
    EXPECT_EQ(qAlpha(image.pixel(0, 0)), 255);
}

TEST_F(Drawing, without_pictures_the_panel_is_one_dark_ground)
{
    PlugInPanelView bare(QRect(0, 0, 782, 220), [](const QString&) { return InterfaceImage(); });
    bare.updateZone(PanelMessages::display({ { 0, "0123456789" } }), true);
    bare.updateDSParea(PanelMessages::knob(0, 5), true);
    const QImage image = painted(bare);
    EXPECT_TRUE(isAll(image, image.rect(), image.pixel(0, 0)));
    EXPECT_LT(qGray(image.pixel(0, 0)), 32);
}

TEST_F(Drawing, a_background_whose_pixels_cannot_be_read_leaves_the_dark_ground)
{
    PlugInPanelView unreadable(QRect(0, 0, 782, 220), [](const QString& name) {
        return name == "back" ? InterfaceImage::named("unreadable") : Pictures::named(name);
    });
    unreadable.updateZone(PanelMessages::display({ { 0, "0123456789" } }), true);
    const QImage image = painted(unreadable);
    EXPECT_TRUE(isAll(image, image.rect(), image.pixel(0, 0)));
    EXPECT_LT(qGray(image.pixel(0, 0)), 32);
}

TEST_F(Drawing, without_a_background_nothing_else_has_a_place_either)
{
    PlugInPanelView bare = withPicture("back", {});
    bare.updateZone(PanelMessages::display({ { 0, "0123456789" } }), true);
    const QImage image = painted(bare);
    EXPECT_TRUE(isAll(image, image.rect(), image.pixel(0, 0)));
}

TEST_F(Drawing, a_short_atlas_draws_the_cells_that_it_has)
{
    // An atlas of 10 cells: the lowest cell is still code 127, because cells count from the bottom.
    PlugInPanelView shortened
        = withPicture("text", Pictures::named("text").single().copy(0, 118 * 13, 8, 10 * 13));
    shortened.updateZone(PanelMessages::display({ { 0, "\x75\x76\x7F\x00\x20     "sv } }), false);
    const QImage image = painted(shortened);
    EXPECT_TRUE(isBackground(image, QRect(298, 17, 8, 13)));
    EXPECT_TRUE(isAll(image, QRect(307, 17, 8, 13), Pictures::cell(0x76)));
    EXPECT_TRUE(isAll(image, QRect(316, 17, 8, 13), Pictures::cell(0x7F)));
    EXPECT_TRUE(isBackground(image, QRect(325, 17, 20, 13)));
}

TEST_F(Drawing, a_cell_is_as_wide_as_the_atlas)
{
    PlugInPanelView narrow = withPicture("text", Pictures::named("text").single().scaled(6, 1664));
    narrow.updateZone(PanelMessages::display({ { 0, "aaaaaaaaaa" } }), false);
    const QImage narrowText = painted(narrow);
    EXPECT_TRUE(isAll(narrowText, QRect(298, 17, 6, 13), Pictures::cell('a')));
    EXPECT_TRUE(isBackground(narrowText, QRect(304, 17, 3, 13)));

    PlugInPanelView wide = withPicture("text", Pictures::named("text").single().scaled(12, 1664));
    wide.updateZone(PanelMessages::display({ { 0, "         a" } }), false);
    const QImage wideText = painted(wide); // each cell covers part of the previous one
    EXPECT_TRUE(isAll(wideText, QRect(379, 17, 12, 13), Pictures::cell('a')));
    EXPECT_TRUE(isBackground(wideText, QRect(391, 17, 4, 13)));
}

TEST_F(Drawing, twice_as_wide_everything_is_twice_as_large)
{
    view.resize(1564, 440);
    display(3, "          ");
    display(7, "~         ");
    knob(2, 0x33);
    lamp(6, true);
    const QImage image = painted(view);
    const int fine = Pictures::Doubled;
    EXPECT_TRUE(isAll(image, inPicture(2 * 589, 2 * 174, 16, 26, 440), Pictures::cell('~', fine)));
    EXPECT_TRUE(
        isAll(image, inPicture(2 * 503, 2 * 73, 134, 134, 440), Pictures::frame(0x33, fine)));
    EXPECT_TRUE(isAll(
        image, inPicture(2 * 212, 2 * 38, 134, 134, 440), Pictures::lamp("btn_green", true, fine)));
    EXPECT_EQ(image.pixel(1500, 400), Pictures::background(1500, 400, fine));
}

TEST_F(Drawing, on_a_display_of_double_density_the_finer_pictures_are_painted_pixel_for_pixel)
{
    display(0, "abcdefghij");
    knob(0, 0x0B);
    PlugInPanelView large(QRect(0, 0, 1564, 440), &Pictures::named);
    large.updateZone(PanelMessages::display({ { 0, "abcdefghij" } }), false);
    large.updateDSParea(PanelMessages::knob(0, 0x0B), false);
    const QImage image = painted(view, 2);
    EXPECT_EQ(image, painted(large));
    EXPECT_EQ(image.pixel(700, 420), Pictures::background(700, 420, Pictures::Doubled));
}

TEST_F(Drawing, text_scales_on_each_axis_but_knobs_and_lamps_stay_square)
{
    view.resize(782, 440); // only the height doubles
    display(4, "aaaaaaaaaa");
    knob(0, 0x01);
    const QImage image = painted(view);
    EXPECT_TRUE(isAll(image, inPicture(298, 2 * 174, 8, 26, 440).adjusted(0, 1, 0, -1),
        image.pixel(302, 440 - 2 * 174 - 13)));
    EXPECT_TRUE(isAll(image, inPicture(309, 2 * 73, 67, 67, 440), Pictures::frame(1)));
    EXPECT_TRUE(
        isAll(image, inPicture(697, 2 * 38, 67, 67, 440), Pictures::lamp("btn_red", false)));
    EXPECT_NE(image.pixel(720, 440 - 2 * 38 - 68), Pictures::lamp("btn_red", false));
}

TEST_F(Drawing, at_an_odd_size_cells_do_not_bleed_into_each_other)
{
    for (const int width : { 391, 587, 1001, 1173, 2346 }) {
        view.resize(naturalSize(width));
        display(0, "\x40\x00\x7F\x40\x00\x7F\x40\x00\x7F\x40"sv);
        const QImage image = painted(view);
        std::map<QRgb, int> colours;
        const QRect row = view.zoneRect(0).adjusted(2, 3, -2, -3);
        for (int x = row.left(); x <= row.right(); ++x)
            ++colours[image.pixel(x, row.center().y())];
        for (const auto& [colour, count] : colours) {
            if (qGreen(colour) != 255)
                continue; // background
            EXPECT_TRUE(qRed(colour) == 0 || qRed(colour) == 0x40 || qRed(colour) == 0x7F)
                << width << " " << qRed(colour);
        }
        EXPECT_GT(colours[Pictures::cell(0x40, Pictures::Doubled)], 0) << width;
    }
}

TEST_F(Drawing, painting_a_part_gives_the_pixels_of_painting_all)
{
    display(1, "0123456789");
    knob(1, 0x12);
    lamp(3, true);
    const QImage whole = painted(view);
    QImage image = whole.copy();
    const QRect part(400, 60, 90, 100);
    QPainter painter(&image);
    painter.fillRect(part, Qt::magenta);
    painter.setClipRect(part);
    view.drawRect(painter, part);
    painter.end();
    EXPECT_EQ(image, whole);
}

TEST_F(Drawing, painting_what_a_message_made_stale_is_enough_at_every_size_and_density)
{
    for (const int width : { 587, 782, 1001 }) {
        for (const double density : { 1.0, 1.25, 1.5, 1.75, 2.0 }) {
            view.resize(naturalSize(width));
            display(1, "          ");
            knob(1, 0x01);
            lamp(7, false);
            QImage image = painted(view, density);
            display(1, "@@@@@@@@@@");
            knob(1, 0x35);
            lamp(7, true);
            image.setDevicePixelRatio(density);
            QPainter painter(&image);
            const QRegion stale = QRegion(view.zoneRect(1)) + view.knobRect(1) + view.switchRect(7);
            painter.setClipRegion(stale);
            view.drawRect(painter, stale.boundingRect());
            painter.end();
            image.setDevicePixelRatio(1);
            EXPECT_EQ(image, painted(view, density)) << width << " " << density;
        }
    }
}

TEST_F(Drawing, the_painter_comes_back_as_it_was)
{
    QImage image(782, 220, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.translate(3, 4);
    const QTransform before = painter.transform();
    view.drawRect(painter, view.rect());
    EXPECT_EQ(painter.transform(), before);
    EXPECT_EQ(painter.compositionMode(), QPainter::CompositionMode_SourceOver);
}

TEST_F(Drawing, a_view_of_no_size_draws_nothing)
{
    view.resize(0, 0);
    display(0, "0123456789");
    QImage image(10, 10, QImage::Format_RGB32);
    image.fill(Qt::magenta);
    QPainter painter(&image);
    view.drawRect(painter, view.rect());
    painter.end();
    EXPECT_TRUE(isAll(image, image.rect(), qRgb(255, 0, 255)));
}

TEST_F(Drawing, codes_above_127_are_negative_and_lie_above_code_0_in_an_atlas_that_has_them)
{
    QImage atlas(8, 256 * 13, QImage::Format_RGB32);
    QPainter painter(&atlas);
    for (int i = 0; i < 256; ++i) // the topmost is code -128
        painter.fillRect(0, i * 13, 8, 13, QColor(i, 255, 0));
    painter.end();
    PlugInPanelView tall = withPicture("text", atlas);
    tall.updateZone(PanelMessages::display({ { 0, "\x80\xC0\xFF\x01\x7F     "sv } }), false);
    const QImage image = painted(tall);
    EXPECT_EQ(image.pixel(298, 17), qRgb(0, 255, 0));
    EXPECT_EQ(image.pixel(307, 17), qRgb(64, 255, 0));
    EXPECT_EQ(image.pixel(316, 17), qRgb(127, 255, 0));
    EXPECT_EQ(image.pixel(325, 17), qRgb(129, 255, 0));
    EXPECT_EQ(image.pixel(334, 17), qRgb(255, 255, 0));
}

TEST_F(Drawing, lamps_are_drawn_over_the_text_and_knobs_over_both)
{
    view.resize(3 * 782, 220); // so wide that they overlap
    display(0, "aaaaaaaaaa");
    knob(0, 0x01);
    const QPoint inText(3 * (298 + 9 * 5) + 12, 220 - 190 - 6); // in the sixth cell
    EXPECT_EQ(painted(view).pixel(inText), Pictures::frame(1, Pictures::Doubled));
    knob(0, 127);
    EXPECT_EQ(painted(view).pixel(inText), Pictures::lamp("btn_orange", false, Pictures::Doubled));
}

TEST_F(Drawing, a_knob_is_as_large_as_its_strip_is_wide)
{
    PlugInPanelView narrow
        = withPicture("knob67x67", Pictures::named("knob67x67").single().scaled(50, 128 * 50));
    narrow.updateDSParea(PanelMessages::knob(1, 0x45), false);
    const QImage image = painted(narrow);
    EXPECT_TRUE(isAll(image, inPicture(406, 73, 50, 50), Pictures::frame(0x45)));
    EXPECT_TRUE(isBackground(image, inPicture(406, 123, 67, 17)));
    EXPECT_TRUE(isBackground(image, inPicture(456, 105, 17, 35)));
}

TEST_F(Drawing, the_red_lamp_says_how_large_all_lamps_are)
{
    PlugInPanelView small
        = withPicture("btn_red", Pictures::named("btn_red").single().scaled(40, 80));
    small.updateDSParea(PanelMessages::lamp(6, true), false);
    const QImage image = painted(small);
    EXPECT_TRUE(isAll(image, inPicture(212, 38, 40, 40), Pictures::lamp("btn_green", true)));
    EXPECT_TRUE(isBackground(image, inPicture(212, 78, 67, 27)));
    EXPECT_TRUE(isBackground(image, inPicture(252, 38, 27, 67)));
    // The frame of the red picture sets the cut: the lower 27 rows show the lit lamp.
    EXPECT_TRUE(isAll(image, inPicture(115, 38 + 27, 40, 13), Pictures::lamp("btn_green", false)));
    EXPECT_TRUE(isAll(image, inPicture(115, 38, 40, 27), Pictures::lamp("btn_green", true)));
}

} // namespace kestrel::test
