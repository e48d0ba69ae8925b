#include "artwork/DotGrid.h"
#include "common/NearestPixel.h"
#include "tests/panel/MirroringPanel.h"
#include "tests/panel/Painted.h"
#include "tests/panel/look/NaturalSize.h"

#include <gtest/gtest.h>

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
};
} // namespace

// The lit dots are drawn by the characters, the unlit ones by the background.
TEST_P(UnlitDots, lie_below_the_lit_ones_wherever_dots_are_told_apart)
{
    const double horizontal = view.width() / 782.0;
    const double vertical = view.height() / 220.0;
    const artwork::DotGrid grid({ nearestPixel(8 * horizontal), nearestPixel(13 * vertical) });
    if (!grid.isParted())
        return;
    const QImage image = painted(view);
    const QPoint first(nearestPixel(298 * horizontal), nearestPixel(17 * vertical));
    const QPoint last(nearestPixel((589 + 9 * 9) * horizontal), nearestPixel(33 * vertical));
    for (const QPoint& cell : { first, last }) {
        int seen = 0;
        for (int row = 0; row < artwork::DotRows; ++row) {
            for (int column = 0; column < artwork::DotColumns; ++column) {
                const QPoint dot = cell + grid.dot(row, column).topLeft().toPoint();
                const QPoint gap = dot - QPoint(1, 1);
                seen += qGreen(image.pixel(dot)) > qGreen(image.pixel(gap)) + 2 ? 1 : 0;
            }
        }
        EXPECT_EQ(seen, artwork::DotRows * artwork::DotColumns) << "cell at " << cell.x();
    }
}

INSTANTIATE_TEST_SUITE_P(around_the_smallest_parted_size, UnlitDots, testing::Range(1525, 1546));
INSTANTIATE_TEST_SUITE_P(at_all_sizes, UnlitDots, testing::Range(391, 2600, 101));

} // namespace kestrel::test
