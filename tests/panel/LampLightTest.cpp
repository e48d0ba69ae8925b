#include "artwork/PanelPictures.h"
#include "tests/panel/MirroringPanel.h"
#include "tests/panel/Painted.h"
#include "tests/panel/look/Luminance.h"

#include <gtest/gtest.h>

namespace kestrel::test {

namespace {
// The place of "INSERT/PARAM", the longest label, in units from the top left of the panel.
constexpr int LabelLeft = 698;
constexpr int LabelTop = 186;
constexpr int LabelHeight = 8;
constexpr int SliceWidth = 13;
constexpr int Slices = 5;

constexpr int Density = 2;

class LampLight : public testing::Test, protected MirroringPanel {
protected:
    LampLight()
        : MirroringPanel(Window::Hidden)
    {
    }

    // The brightest pixel of each part of the label, from left to right.
    [[nodiscard]] std::array<double, Slices> label()
    {
        const QImage image = painted(view, Density);
        std::array<double, Slices> brightest {};
        for (int slice = 0; slice < Slices; ++slice) {
            const QRect area(Density * (LabelLeft + slice * SliceWidth), Density * LabelTop,
                Density * SliceWidth, Density * LabelHeight);
            double& most = brightest[static_cast<std::size_t>(slice)];
            for (int y = area.top(); y <= area.bottom(); ++y) {
                for (int x = area.left(); x <= area.right(); ++x)
                    most = std::max(most, luminance(image.pixel(x, y)));
            }
        }
        return brightest;
    }
};
} // namespace

TEST_F(LampLight, reaches_both_ends_of_the_longest_label)
{
    const auto unlit = label();
    lamp(0, true);
    const auto lit = label();
    const double middle = lit[2] - unlit[2];
    EXPECT_GT(middle, 0.1);
    for (std::size_t slice = 0; slice < Slices; ++slice)
        EXPECT_GE(lit[slice] - unlit[slice], 0.7 * middle) << "part " << slice;
}

TEST_F(LampLight, fades_over_the_metal_without_an_edge)
{
    constexpr int Lit = 67; // the top of the lit frame
    constexpr int KeyBottom = 61;
    const InterfaceImage image = artwork::panelPicture(QStringLiteral("btn_green"));
    const DrawnPicture& picture = *image.drawn();
    const QRect frame(0, Lit, 67, 67);
    const QRect area = picture.lightArea(frame).translated(0, -Lit);
    const QImage light = picture.drawLight(frame, area.size() * Density);
    const auto at = [&](int x, int y) {
        return qGreen(light.pixel((x - area.left()) * Density, (y - area.top()) * Density));
    };
    for (const int x : { 33, 10, -5 }) {
        for (int y = KeyBottom + 4; y < area.bottom(); ++y) {
            EXPECT_LE(at(x, y + 1), at(x, y)) << x << ", " << y;
            EXPECT_GE(at(x, y + 1), at(x, y) - 8) << x << ", " << y;
        }
    }
    for (int x = area.left(); x <= area.right(); ++x)
        EXPECT_LE(std::max(at(x, area.top()), at(x, area.bottom())), 4) << x;
    for (int y = area.top(); y <= area.bottom(); ++y)
        EXPECT_LE(std::max(at(area.left(), y), at(area.right(), y)), 4) << y;
}

TEST_F(LampLight, of_every_colour_is_strongest_at_its_key)
{
    constexpr QRect Lit(0, 67, 67, 67);
    constexpr QPoint KeyMiddle(33, 50);
    for (const char* picture : { "btn_red", "btn_orange", "btn_green" }) {
        const InterfaceImage image = artwork::panelPicture(QLatin1String(picture));
        const QRect area = image.drawn()->lightArea(Lit);
        const QImage light = image.drawn()->drawLight(Lit, area.size());
        const QColor key(light.pixel(KeyMiddle + Lit.topLeft() - area.topLeft()));
        for (int y = 0; y < light.height(); ++y) {
            for (int x = 0; x < light.width(); ++x) {
                const QColor there(light.pixel(x, y));
                ASSERT_LE(there.red(), key.red()) << picture << ": " << x << ", " << y;
                ASSERT_LE(there.green(), key.green()) << picture << ": " << x << ", " << y;
            }
        }
    }
}

} // namespace kestrel::test
