#include "artwork/StrokeFont.h"
#include "tests/panel/look/Luminance.h"
#include "tools/artwork/SetupKeys.h"
#include "tools/artwork/StatusIcons.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace kestrel::test {
using namespace artwork;

namespace {

double contrast(QRgb a, QRgb b)
{
    return contrastOf(luminance(a), luminance(b));
}

// How many pixels of the icon stand out clearly from a bar of this colour.
int clearPixels(const QImage& icon, QColor bar)
{
    QImage shown(icon.size(), QImage::Format_RGB32);
    shown.fill(bar);
    QPainter(&shown).drawImage(0, 0, icon);
    int count = 0;
    for (int y = 0; y < shown.height(); ++y) {
        for (int x = 0; x < shown.width(); ++x)
            count += contrast(shown.pixel(x, y), bar.rgb()) >= 4.5 ? 1 : 0;
    }
    return count;
}

TEST(UserAssignableKeys, carry_black_text_on_both_faces)
{
    for (const KeyLight light : { KeyLight::On, KeyLight::Off }) {
        const QImage key = drawUserAssignableKey(light, 1);
        ASSERT_EQ(key.size(), QSize(78, 78));
        for (int y = 13; y < 72; ++y) {
            for (int x = 5; x < 73; ++x)
                ASSERT_GE(contrast(key.pixel(x, y), qRgb(0, 0, 0)), 7.0) << x << ", " << y;
        }
    }
}

TEST(UserAssignableKeys, are_clearly_brighter_when_lit)
{
    const QPoint face(39, 39);
    EXPECT_GE(luminance(drawUserAssignableKey(KeyLight::On, 1).pixel(face)),
        1.6 * luminance(drawUserAssignableKey(KeyLight::Off, 1).pixel(face)));
}

TEST(StatusIcons, read_on_dark_and_on_light_bars)
{
    for (const Link link : { Link::Online, Link::Offline }) {
        const QImage icon = drawStatusIcon(link, 1);
        ASSERT_EQ(icon.size(), QSize(16, 16));
        for (const int grey : { 20, 60, 210, 245 })
            EXPECT_GE(clearPixels(icon, QColor(grey, grey, grey)), 30) << grey;
    }
}

TEST(StatusIcons, differ_in_shape_and_not_only_in_colour)
{
    const QImage online = drawStatusIcon(Link::Online, 1);
    const QImage offline = drawStatusIcon(Link::Offline, 1);
    int different = 0;
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 16; ++x)
            different += std::abs(qAlpha(online.pixel(x, y)) - qAlpha(offline.pixel(x, y))) > 128;
    }
    EXPECT_GE(different, 50);
}

TEST(PushButtons, show_at_a_glance_that_they_are_pressed_or_disabled)
{
    const QString word = QStringLiteral("CLEAR");
    const QPoint face(8, 20);
    const double resting = luminance(drawPushButton(word, ButtonFace::Resting, 1).pixel(face));
    EXPECT_LE(luminance(drawPushButton(word, ButtonFace::Pressed, 1).pixel(face)), 0.75 * resting);
    EXPECT_LE(luminance(drawPushButton(word, ButtonFace::Disabled, 1).pixel(face)), 0.5 * resting);
}

TEST(PushButtons, have_room_for_their_word)
{
    for (const char* word : { "CLEAR", "LOAD", "SAVE", "ASSIGN", "OK", "CANCEL" })
        EXPECT_LE(widthOf(QLatin1String(word), 2.0), 44.0) << word;
}

TEST(StrokeFont, knows_every_character_that_is_engraved)
{
    for (const QChar letter :
        QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/-.^\u00B7\u21EA\u2325\u2318"))
        EXPECT_FALSE(strokesOf(letter, 0.0).isEmpty()) << static_cast<int>(letter.unicode());
}

TEST(StrokeFont, runs_upright_and_level_strokes_along_whole_pixels)
{
    const auto whole = [](double value) { return std::abs(value - std::round(value)) < 1e-6; };
    for (int capital = 4; capital <= 13; ++capital) {
        const QPainterPath path = strokesOf(
            QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789"), { capital, 2 + capital / 3 });
        for (int i = 1; i < path.elementCount(); ++i) {
            const QPointF from = path.elementAt(i - 1);
            const QPointF to = path.elementAt(i);
            if (!path.elementAt(i).isLineTo())
                continue;
            const bool isUpright = std::abs(from.x() - to.x()) < 1e-6;
            const bool isLevel = std::abs(from.y() - to.y()) < 1e-6;
            EXPECT_TRUE(!isUpright || whole(to.x())) << capital << ": upright at " << to.x();
            EXPECT_TRUE(!isLevel || whole(to.y())) << capital << ": level at " << to.y();
        }
    }
}

} // namespace
} // namespace kestrel::test
