#include "artwork/PanelPictures.h"
#include "artwork/Wordmark.h"
#include "tests/panel/look/Luminance.h"
#include "tests/panel/look/NaturalSize.h"

#include <QImage>
#include <QPainterPath>

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace kestrel::test {

namespace {
constexpr double DesignWidth = 782;
constexpr double Clear = 7; // the contrast that the Web Content Accessibility Guidelines want

// A text on the panel and its place in units.
struct Label {
    const char* text;
    QRectF place;
};

// Down to the edge of the panel, as a label may go on in a second line.
constexpr double KeyLabels = 185;
const std::vector<Label> Labels { { "ASSIGN", { 20, KeyLabels, 64, 29 } },
    { "COMPARE", { 110, KeyLabels, 77, 29 } }, { "BYPASS", { 207, KeyLabels, 77, 29 } },
    { "SELECT 1", { 301, KeyLabels, 83, 29 } }, { "SELECT 4", { 592, KeyLabels, 83, 29 } },
    { "INSERT/PARAM", { 685, KeyLabels, 80, 20 } }, { "PLUG-IN PANEL", { 26, 94, 120, 13 } },
    { "KESTREL", { 690, 94, 80, 13 } } };

// The luminances of the pixels of a text on a panel of this width, the brightest first.
std::vector<double> pixelsOf(const Label& label, int width)
{
    const QImage panel = artwork::panelPicture(QStringLiteral("back"))
                             .piece(QRect(0, 0, 782, 220), naturalSize(width));
    const double scale = width / DesignWidth;
    const QRect part = QRectF(label.place.topLeft() * scale, label.place.size() * scale).toRect();
    std::vector<double> pixels;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x)
            pixels.push_back(luminance(panel.pixel(x, y)));
    }
    std::sort(pixels.rbegin(), pixels.rend());
    return pixels;
}

class LabelLegibility : public testing::TestWithParam<int> { };
} // namespace

TEST_P(LabelLegibility, every_label_has_clear_strokes)
{
    constexpr std::size_t PixelsOfAStem = 5;
    for (const Label& label : Labels) {
        const auto pixels = pixelsOf(label, GetParam());
        const auto enough = PixelsOfAStem * std::string_view(label.text).size();
        ASSERT_LT(enough, pixels.size());
        EXPECT_GE(contrastOf(pixels[enough], pixels[pixels.size() / 2]), Clear) << label.text;
    }
}

TEST_P(LabelLegibility, the_name_of_the_product_is_as_bright_as_the_labels)
{
    const double name = pixelsOf(Labels.back(), GetParam()).front();
    const double label = pixelsOf(Labels.front(), GetParam()).front();
    EXPECT_GE(name, 0.9 * label);
}

TEST(Wordmark, lies_in_its_place_however_the_panel_is_stretched)
{
    for (int width = 1; width <= 500; width += 3) {
        for (int height = 1; height <= 80; ++height) {
            const QRectF place(10, 20, width, height);
            const QPainterPath word = artwork::zentaWordmark(place);
            ASSERT_TRUE(word.isEmpty() || place.contains(word.boundingRect()))
                << width << " x " << height;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, LabelLegibility,
    testing::Values(391, 450, 587, 700, 782, 1001, 1173, 1564),
    [](const auto& width) { return "at_width_" + std::to_string(width.param); });

} // namespace kestrel::test
