#include "artwork/PanelPictures.h"
#include "tests/panel/look/ColourVision.h"

#include <QImage>

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace kestrel::test {

namespace {
constexpr double ClearlyApart = 20; // CIEDE2000

constexpr int FrameHeight = 67;

// The mean colour of a part of a frame.
QColor meanOf(const char* picture, int frame, const QRect& part)
{
    const QImage image = artwork::panelPicture(QLatin1String(picture))
                             .piece(part.translated(0, frame * FrameHeight), part.size());
    return image.scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).pixel(0, 0);
}

// The face of a key.
QColor faceOf(const char* picture, bool isLit)
{
    return meanOf(picture, isLit ? 1 : 0, QRect(12, 42, 43, 16));
}

// The lens of the lamp below a knob.
QColor lowerLamp(bool isLit)
{
    return meanOf("knob67x67", isLit ? 0x40 : 0, QRect(30, 60, 7, 2));
}

// The lens of the lit lamp at twelve o'clock.
QColor ringLamp()
{
    return meanOf("knob67x67", 6, QRect(32, 4, 3, 2));
}

const std::map<std::string, ColourVision> Visions { { "usual", ColourVision::Usual },
    { "no red cones", ColourVision::NoRedCones }, { "no green cones", ColourVision::NoGreenCones },
    { "no blue cones", ColourVision::NoBlueCones } };
} // namespace

TEST(ColourDifference, is_0_for_equal_colours_and_100_from_black_to_white)
{
    EXPECT_NEAR(difference(QColor(10, 200, 90), QColor(10, 200, 90)), 0, 1e-9);
    EXPECT_NEAR(difference(Qt::black, Qt::white), 100, 0.1);
    EXPECT_NEAR(difference(QColor(255, 0, 0), QColor(0, 255, 0)), 86.6, 0.1);
}

TEST(LampColours, lit_lamps_are_told_apart_by_all_eyes)
{
    const std::map<std::string, const char*> lamps { { "red", "btn_red" }, { "green", "btn_green" },
        { "amber", "btn_orange" } };
    for (const auto& [name, vision] : Visions) {
        for (auto one = lamps.begin(); one != lamps.end(); ++one) {
            for (auto other = std::next(one); other != lamps.end(); ++other) {
                const double apart = difference(seenBy(vision, faceOf(one->second, true)),
                    seenBy(vision, faceOf(other->second, true)));
                EXPECT_GE(apart, ClearlyApart)
                    << one->first << ", " << other->first << ", " << name;
                std::printf("%s and %s, %s: %.1f\n", one->first.c_str(), other->first.c_str(),
                    name.c_str(), apart);
            }
        }
    }
}

TEST(LampColours, lit_and_unlit_are_told_apart_by_all_eyes)
{
    for (const auto& [name, vision] : Visions) {
        for (const char* lamp : { "btn_red", "btn_green", "btn_orange" }) {
            EXPECT_GE(
                difference(seenBy(vision, faceOf(lamp, true)), seenBy(vision, faceOf(lamp, false))),
                ClearlyApart)
                << lamp << ", " << name;
        }
    }
}

TEST(LampColours, the_lit_lower_lamp_of_a_knob_is_warm_and_not_pale)
{
    const QColor lamp = lowerLamp(true);
    EXPECT_LE(lamp.hsvHue(), 30);
    EXPECT_GE(lamp.hsvSaturationF(), 0.7);
}

TEST(LampColours, the_lower_lamp_is_told_from_the_ring_and_from_an_unlit_one_by_all_eyes)
{
    for (const auto& [name, vision] : Visions) {
        const QColor lit = seenBy(vision, lowerLamp(true));
        EXPECT_GE(difference(lit, seenBy(vision, ringLamp())), ClearlyApart) << name;
        EXPECT_GE(difference(lit, seenBy(vision, lowerLamp(false))), ClearlyApart) << name;
    }
}

} // namespace kestrel::test
