#include "panel/KnobRing.h"
#include "tests/panel/MirroringPanel.h"
#include "tests/panel/Painted.h"
#include "tests/support/ApprovedPicture.h"

#include <gtest/gtest.h>

namespace kestrel::test {

namespace {
// The number of columns in the picture of all knob frames.
constexpr int Columns = 11;
constexpr int Rows = 8;

// A panel with the pictures of the product. Its drawing is compared with approved pictures.
class ApprovedPictures : public testing::TestWithParam<int>, protected MirroringPanel {
protected:
    ApprovedPictures()
        : MirroringPanel(Window::Hidden)
    {
    }
    void SetUp() override { ASSERT_FALSE(view.imageBack().isNull()); }

    [[nodiscard]] int scale() const { return GetParam(); }
    [[nodiscard]] QImage panel() { return painted(view, scale()); }
    [[nodiscard]] QImage part(const QRect& units)
    {
        return panel().copy(QRect(units.topLeft() * scale(), units.size() * scale()));
    }

    // Shows the codes from `first` on in the eight zones, one code in each cell.
    void displayCodes(int first)
    {
        for (std::uint8_t zone = 0; zone < 8; ++zone) {
            std::string codes;
            for (int k = 0; k < 10; ++k)
                codes += static_cast<char>(std::min(first + zone * 10 + k, 255));
            display(zone, codes);
        }
    }

    void compare(const QString& name, const QImage& actual) const
    {
        compareWithApproved(
            QStringLiteral("panel/%1@%2x").arg(name).arg(scale()), actual, 1, Fonts::None);
    }
};

QImage stacked(const QList<QImage>& images)
{
    int height = 0;
    for (const QImage& image : images)
        height += image.height();
    QImage stack(images.first().width(), height, QImage::Format_RGB32);
    QPainter painter(&stack);
    int top = 0;
    for (const QImage& image : images) {
        painter.drawImage(0, top, image);
        top += image.height();
    }
    return stack;
}
} // namespace

TEST_P(ApprovedPictures, the_empty_panel)
{
    compare("empty", panel());
}

TEST_P(ApprovedPictures, the_full_character_set)
{
    const QRect displayArea(290, 10, 400, 44);
    displayCodes(0);
    const QImage first = part(displayArea);
    displayCodes(80);
    compare("characters", stacked({ first, part(displayArea) }));
}

TEST_P(ApprovedPictures, a_plug_in_being_edited)
{
    display(0, "Threshold ");
    display(1, "Ratio     ");
    display(2, "Attack    ");
    display(3, "Gain      ");
    display(4, "-24.0 dB  ");
    display(5, "4.0:1     ");
    display(6, "10 ms     ");
    display(7, "+6.5 dB   ");
    knob(0, 0x24);
    knob(1, 0x46);
    knob(2, 0x02);
    knob(3, 0x18);
    lamp(1, true);
    lamp(2, true);
    lamp(6, true);
    compare("editing", panel());
}

TEST_P(ApprovedPictures, all_lamps_lit_and_unlit)
{
    const QRect lampArea(0, 110, 782, 110);
    const QImage unlit = part(lampArea);
    for (std::uint8_t i = 0; i < 8; ++i)
        lamp(i, true);
    compare("lamps", stacked({ unlit, part(lampArea) }));
}

TEST_P(ApprovedPictures, the_86_knob_frames)
{
    const QRect knobArea(309, 80, 67, 67);
    const int side = 67 * scale();
    QImage sheet(Columns * side, Rows * side, QImage::Format_RGB32);
    sheet.fill(Qt::black);
    QPainter painter(&sheet);
    int drawn = 0;
    for (int value = 0; value < 128; ++value) {
        if (!KnobRing(static_cast<std::uint8_t>(value)).hasPicture())
            continue;
        knob(0, value);
        painter.drawImage(drawn % Columns * side, drawn / Columns * side, part(knobArea));
        ++drawn;
    }
    painter.end();
    EXPECT_EQ(drawn, 86);
    compare("knobs", sheet);
}

INSTANTIATE_TEST_SUITE_P(, ApprovedPictures, testing::Values(1, 2),
    [](const auto& scale) { return "at_scale_" + std::to_string(scale.param); });

} // namespace kestrel::test
