#include "artwork/DotGrid.h"
#include "common/NearestPixel.h"
#include "tests/panel/MirroringPanel.h"
#include "tests/panel/Painted.h"
#include "tests/panel/look/NaturalSize.h"

#include <gtest/gtest.h>

#include <vector>

namespace kestrel::test {

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

    // The line of pixels in the lower row that has the most light.
    [[nodiscard]] int brightestLine(const QImage& image) const
    {
        const auto light = [&](int y) {
            int sum = 0;
            for (int x = firstCell().x(); x < lastCell().x(); ++x)
                sum += qGreen(image.pixel(x, y));
            return sum;
        };
        const int top = lastCell().y();
        int brightest = top;
        for (int y = top; y < top + nearestPixel(13 * vertical()); ++y)
            brightest = light(y) > light(brightest) ? y : brightest;
        return brightest;
    }
};

constexpr int Contrast = 10; // of 255, of a dot and a gap that shows no part of one
} // namespace

// The lit dots are drawn by the characters, the unlit ones by the background.
TEST_P(UnlitDots, lie_below_the_lit_ones_wherever_dots_are_told_apart)
{
    if (!grid().isParted())
        return;
    const QImage image = painted(view);
    for (const QPoint& cell : { firstCell(), lastCell() }) {
        int seen = 0;
        for (int row = 0; row < artwork::DotRows; ++row) {
            for (int column = 0; column < artwork::DotColumns; ++column) {
                const QRectF dot = grid().dot(row, column).translated(cell);
                const QPoint gap = dot.topLeft().toPoint() - QPoint(1, 1);
                const QPoint middle(int(dot.center().x()), int(dot.center().y()));
                seen += qGreen(image.pixel(middle)) >= qGreen(image.pixel(gap)) + Contrast ? 1 : 0;
            }
        }
        EXPECT_EQ(seen, artwork::DotRows * artwork::DotColumns) << "cell at " << cell.x();
    }
}

TEST_P(UnlitDots, are_an_even_mesh_no_denser_than_they_are_where_they_are_not_told_apart)
{
    if (grid().isParted())
        return;
    const QImage image = painted(view);
    const int line = brightestLine(image);
    const auto green = [&](int x) { return qGreen(image.pixel(x, line)); };
    std::vector<int> gaps;
    for (int x = firstCell().x(); x < lastCell().x(); ++x) {
        if (green(x) + Contrast <= green(x - 1))
            gaps.push_back(x);
    }
    ASSERT_GT(gaps.size(), 2U);
    const int step = gaps[1] - gaps[0];
    EXPECT_GE(step, grid().pitch());
    for (std::size_t i = 1; i < gaps.size(); ++i)
        ASSERT_EQ(gaps[i] - gaps[i - 1], step) << "at " << gaps[i];
}

INSTANTIATE_TEST_SUITE_P(around_the_smallest_parted_size, UnlitDots, testing::Range(1525, 1546));
INSTANTIATE_TEST_SUITE_P(at_all_sizes, UnlitDots, testing::Range(391, 2600, 101));

} // namespace kestrel::test
