#include "artwork/DotGrid.h"

#include "tests/panel/CellSize.h"

#include <gtest/gtest.h>

namespace kestrel::test {

namespace {
using artwork::DotColumns;
using artwork::DotGrid;
using artwork::DotRows;

// The smallest window in which a dot has a pixel of its own, and more than a screen has.
constexpr int Narrowest = 538;
constexpr int Widest = 4000;

double left(const DotGrid& grid, int column)
{
    return grid.dot(0, column).left();
}

double top(const DotGrid& grid, int row)
{
    return grid.dot(row, 0).top();
}
} // namespace

TEST(DotGrid, lies_in_its_cell_and_leaves_the_last_column_of_pixels_dark)
{
    for (int width = Narrowest; width <= Widest; ++width) {
        const QSize cell = cellAt(width);
        const QRectF last = DotGrid(cell).dot(DotRows - 1, DotColumns - 1);
        EXPECT_LE(last.right(), cell.width() - 1) << width;
        EXPECT_LE(last.bottom(), cell.height()) << width;
    }
}

TEST(DotGrid, has_one_whole_pitch_in_both_directions_wherever_dots_are_parted)
{
    for (int width = Narrowest; width <= Widest; ++width) {
        const DotGrid grid(cellAt(width));
        if (!grid.isParted())
            continue;
        EXPECT_LE(grid.side(), grid.pitch() - 0.4) << width;
        for (int column = 1; column < DotColumns; ++column)
            EXPECT_EQ(left(grid, column) - left(grid, column - 1), grid.pitch()) << width;
        for (int row = 1; row < DotRows; ++row) {
            const double distance = top(grid, row) - top(grid, row - 1);
            const double least = row < 7 ? grid.pitch() : grid.pitch() / 2.0; // in the tails
            EXPECT_LE(distance, grid.pitch()) << width << " row " << row;
            EXPECT_GE(distance, least) << width << " row " << row;
        }
    }
}

TEST(DotGrid, fills_at_least_seven_tenths_of_what_its_cell_has_for_it)
{
    for (int width = Narrowest; width <= Widest; ++width) {
        const QSize cell = cellAt(width);
        const DotGrid grid(cell);
        EXPECT_GE(left(grid, DotColumns - 1) + grid.side(), 0.7 * 7 / 8 * cell.width()) << width;
        EXPECT_GE(top(grid, DotRows - 1) + grid.side(), 0.7 * cell.height()) << width;
    }
}

TEST(DotGrid, has_larger_dots_of_the_same_pitch_where_there_is_more_room)
{
    const DotGrid narrow(cellAt(1564));
    const DotGrid wide(cellAt(1760));
    EXPECT_EQ(wide.pitch(), narrow.pitch());
    EXPECT_GE(wide.side(), narrow.side() + 0.15);
}

// The upper dot is in the rows 1 and 2, the lower one in the rows 4 and 5.
TEST(DotGrid, makes_the_two_dots_of_a_colon_equal)
{
    for (int width = Narrowest; width <= Widest; ++width) {
        const DotGrid grid(cellAt(width));
        EXPECT_EQ(top(grid, 2) - top(grid, 1), top(grid, 5) - top(grid, 4)) << width;
    }
}

TEST(DotGrid, is_symmetrical_from_left_to_right)
{
    for (int width = Narrowest; width <= Widest; ++width) {
        const DotGrid grid(cellAt(width));
        EXPECT_EQ(left(grid, 1) - left(grid, 0), left(grid, 4) - left(grid, 3)) << width;
        EXPECT_EQ(left(grid, 2) - left(grid, 1), left(grid, 3) - left(grid, 2)) << width;
    }
}

} // namespace kestrel::test
