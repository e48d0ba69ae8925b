#include "artwork/PanelPictures.h"
#include "tests/panel/look/ColourVision.h"

#include <QImage>

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace kestrel::test {

namespace {
constexpr double ClearlyApart = 20; // CIEDE2000

// The mean colour of the face of a key.
QColor faceOf(const char* picture, bool isLit)
{
    const QRect face(12, 42, 43, 16); // within the frame, whose lit one lies below
    const QImage image = artwork::panelPicture(QLatin1String(picture))
                             .piece(face.translated(0, isLit ? 67 : 0), face.size());
    const QColor mean(
        image.scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).pixel(0, 0));
    return mean;
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

} // namespace kestrel::test
