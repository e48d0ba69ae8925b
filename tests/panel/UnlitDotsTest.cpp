#include "artwork/DotGrid.h"
#include "artwork/NearestPixel.h"
#include "tests/panel/MirroringPanel.h"
#include "tests/panel/Painted.h"
#include "tests/panel/look/NaturalSize.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace kestrel::test {

using artwork::nearestPixel;

namespace {
// An empty panel of the given width on a display of density 1.
class UnlitDots : public testing::TestWithParam<int>, protected MirroringPanel {
protected:
    UnlitDots()
        : MirroringPanel(Window::Hidden)
    {
        view.resize(naturalSize(GetParam()));
    }

    [[nodiscard]] double horizontal() const { return view.width() / 782.0; }
    [[nodiscard]] double vertical() const { return view.height() / 220.0; }
    [[nodiscard]] artwork::DotGrid grid() const
    {
        return artwork::DotGrid({ nearestPixel(8 * horizontal()), nearestPixel(13 * vertical()) });
    }
    [[nodiscard]] QPoint firstCell() const
    {
        return { nearestPixel(298 * horizontal()), nearestPixel(17 * vertical()) };
    }
    [[nodiscard]] QPoint lastCell() const
    {
        return { nearestPixel((589 + 9 * 9) * horizontal()), nearestPixel(33 * vertical()) };
    }

    // The green of the glass in a line of pixels, from the first dot of the upper or the lower row
    // to the last one.
    [[nodiscard]] std::vector<int> lineOfDots(const QImage& image, double rowTop, int dotRow) const
    {
        const QRectF dot = grid().dot(dotRow, 0);
        const int y = nearestPixel(rowTop * vertical()) + static_cast<int>(dot.center().y());
        const int end
            = lastCell().x() + static_cast<int>(grid().dot(0, artwork::DotColumns - 1).left());
        std::vector<int> line;
        for (int x = firstCell().x() + static_cast<int>(dot.left()); x <= end; ++x)
            line.push_back(qGreen(image.pixel(x, y)));
        return line;
    }
};

// The mean green of the last cell.
double meanOfLastCell(PlugInPanelView& view, double density)
{
    const double horizontal = view.width() / 782.0 * density;
    const double vertical = view.height() / 220.0 * density;
    const QRect cell(nearestPixel((589 + 9 * 9) * horizontal), nearestPixel(33 * vertical),
        nearestPixel(8 * horizontal), nearestPixel(13 * vertical));
    const QImage image = painted(view, density);
    double sum = 0;
    for (int y = cell.top(); y <= cell.bottom(); ++y) {
        for (int x = cell.left(); x <= cell.right(); ++x)
            sum += qGreen(image.pixel(x, y));
    }
    return sum / (cell.width() * cell.height());
}

constexpr int Contrast = 10; // of 255, of a dot and a gap that shows no part of one
constexpr std::array RowTops { 17.0, 33.0 };
} // namespace

// The lit dots are drawn by the characters, the unlit ones by the background.
TEST_P(UnlitDots, lie_below_the_lit_ones_wherever_dots_are_told_apart)
{
    if (!grid().isParted())
        return;
    const QImage image = painted(view);
    for (const double top : RowTops) {
        for (int i = 0; i < 40; ++i) {
            const int left = 298 + i / 10 * 97 + i % 10 * 9;
            const QPoint cell(nearestPixel(left * horizontal()), nearestPixel(top * vertical()));
            int seen = 0;
            for (int row = 0; row < artwork::DotRows; ++row) {
                for (int column = 0; column < artwork::DotColumns; ++column) {
                    const QRectF dot = grid().dot(row, column).translated(cell);
                    const QPoint middle(int(dot.center().x()), int(dot.center().y()));
                    const QPoint gap(int(dot.left()) - 1, middle.y());
                    seen += qGreen(image.pixel(middle)) >= qGreen(image.pixel(gap)) + Contrast;
                }
            }
            EXPECT_EQ(seen, artwork::DotRows * artwork::DotColumns) << "cell at " << cell.x();
        }
    }
}

TEST_P(UnlitDots, are_an_even_pitch_apart_in_all_characters_and_between_the_zones)
{
    if (!grid().isParted())
        return;
    const QImage image = painted(view);
    const int space = nearestPixel(9 * horizontal()) + 1 - 4 * grid().pitch(); // of two characters
    for (const double top : RowTops) {
        const std::vector<int> line = lineOfDots(image, top, 0);
        std::vector<int> starts { 0 };
        for (int x = 1; x < static_cast<int>(line.size()); ++x) {
            const auto at = static_cast<std::size_t>(x);
            if (line[at] >= line[at - 1] + Contrast / 2)
                starts.push_back(x);
        }
        int narrow = 0;
        for (std::size_t i = 1; i < starts.size(); ++i) {
            const int distance = starts[i] - starts[i - 1];
            EXPECT_GE(distance, grid().pitch()) << "at " << starts[i];
            EXPECT_LE(distance, space + grid().pitch()) << "at " << starts[i];
            narrow += distance == grid().pitch();
        }
        EXPECT_GE(narrow, 40 * (artwork::DotColumns - 1));
    }
}

TEST_P(UnlitDots, are_an_even_tone_where_they_are_not_told_apart)
{
    if (grid().isParted())
        return;
    constexpr double ManyPixels = 4;
    EXPECT_NEAR(meanOfLastCell(view, 1), meanOfLastCell(view, ManyPixels), 3);
    const QImage image = painted(view);
    for (const double top : RowTops) {
        for (int row = 0; row < artwork::DotRows; ++row) {
            const std::vector<int> line = lineOfDots(image, top, row);
            for (std::size_t i = 1; i < line.size(); ++i)
                ASSERT_LE(std::abs(line[i] - line[i - 1]), 2) << "at " << i;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(around_the_smallest_parted_size, UnlitDots, testing::Range(910, 940));
INSTANTIATE_TEST_SUITE_P(at_all_sizes, UnlitDots, testing::Range(391, 2600, 101));
INSTANTIATE_TEST_SUITE_P(
    at_usual_sizes, UnlitDots, testing::Values(587, 782, 1173, 1564, 1760, 2346, 3128));

} // namespace kestrel::test
