#include "artwork/DotGrid.h"

#include <algorithm>
#include <cmath>

namespace kestrel::artwork {

namespace {

constexpr int RowsWithoutTails = 7;
constexpr int Tails = DotRows - RowsWithoutTails;

// The side of a dot that is nearest to two thirds of the pitch.
int usualSide(int pitch)
{
    return (2 * pitch + 1) / 3;
}

// Each row for tails may be one pixel closer to the one before.
bool fits(int pitch, QSize cell)
{
    const int side = usualSide(pitch);
    return (DotColumns - 1) * pitch + side < cell.width()
        && (DotRows - 1) * pitch - Tails + side <= cell.height();
}

int widestPitch(QSize cell)
{
    int pitch = 1;
    while (fits(pitch + 1, cell))
        ++pitch;
    return pitch;
}

// Dots give as much light as if they were two thirds of the cell's own pitch wide, so that strokes
// grow steadily with the cell. From the narrowest pitch on they do so gradually. Small ones are
// larger where their cell has room for a wider pitch, because thin strokes look dim there. A sliver
// of a pixel would only blur their edges.
double sideOf(int pitch, double scale, int room)
{
    constexpr double Small = 2.5;
    double side = std::sqrt(pitch * scale * 2 / 3);
    side = std::max(side, std::min({ (side + scale) / 2, Small, pitch - 0.5 }));
    if (pitch == 2)
        side = std::min(side, 1 + 1.3 * (scale - 1.25));
    const double whole = std::floor(side);
    return std::clamp(side - whole < 0.15 ? whole : side, 1.0, static_cast<double>(room));
}

// For capitals of so many pixels. Where dots touch, their distances are chosen by hand: letters are
// as symmetrical as they can be, the two dots of a colon are equal, and so are the two halves of a
// small "e".
constexpr std::array<int, DotColumns> FiveColumns { 0, 1, 2, 3, 4 };
constexpr std::array<int, DotColumns> SevenColumns { 0, 1, 3, 5, 6 };
constexpr std::array<int, DotRows> SevenRows { 0, 1, 2, 3, 4, 5, 6, 7, 8 };
constexpr std::array<int, DotRows> TenRows { 0, 1, 3, 5, 6, 8, 9, 11, 12 };
constexpr std::array<int, DotRows> ElevenRows { 0, 2, 3, 5, 7, 8, 10, 12, 14 };
} // namespace

DotGrid::DotGrid(QSize cellPixels)
    : m_scale(std::min(static_cast<double>(cellPixels.width()) / CellWidth,
        static_cast<double>(cellPixels.height()) / CellHeight))
    , m_pitch(widestPitch(cellPixels))
{
    if (isParted())
        placeParted(cellPixels);
    else
        placeJoined(cellPixels);
    // The characters lie in the middle of seven units, and the eighth parts them.
    const double room
        = cellPixels.width() * (CellWidth - 1.0) / CellWidth - m_lefts.back() - m_side;
    const int offset = std::max(0, static_cast<int>(std::lround(room / 2 - 0.25)));
    for (int& left : m_lefts)
        left += offset;
}

void DotGrid::placeParted(QSize cellPixels)
{
    m_side = sideOf(m_pitch, m_scale, cellPixels.width() - 1 - (DotColumns - 1) * m_pitch);
    for (int column = 0; column < DotColumns; ++column)
        m_lefts[static_cast<std::size_t>(column)] = column * m_pitch;
    for (int row = 0; row < DotRows; ++row)
        m_tops[static_cast<std::size_t>(row)] = row * m_pitch;
    const int last = cellPixels.height() - static_cast<int>(std::ceil(m_side));
    const int before = m_tops[RowsWithoutTails - 1];
    m_tops[DotRows - 1] = std::min(m_tops[DotRows - 1], last);
    m_tops[RowsWithoutTails]
        = std::min(m_tops[RowsWithoutTails], (before + m_tops[DotRows - 1] + 1) / 2);
}

void DotGrid::placeJoined(QSize cellPixels)
{
    m_lefts = cellPixels.width() > SevenColumns.back() + 1 ? SevenColumns : FiveColumns;
    if (cellPixels.height() > ElevenRows.back())
        m_tops = ElevenRows;
    else
        m_tops = cellPixels.height() > TenRows.back() ? TenRows : SevenRows;
}

QRectF DotGrid::dot(int row, int column) const
{
    return { static_cast<double>(m_lefts[static_cast<std::size_t>(column)]),
        static_cast<double>(m_tops[static_cast<std::size_t>(row)]), m_side, m_side };
}

} // namespace kestrel::artwork
