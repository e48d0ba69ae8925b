#include "artwork/DotGrid.h"

#include <algorithm>
#include <cmath>

namespace kestrel::artwork {

namespace {

// From this pitch on, in pixels, there is a gap between all dots.
constexpr double PartedPitch = 2.95;

// The dots that share pixels first where there are too few of them. Most characters have the same
// dots in the row below the upper one, and only tails in the last but one. The outer columns and
// the middle one are the stems.
constexpr std::array SharingColumns { 1, 3 };
constexpr std::array SharingRows { 7, 1 };

int nearest(double value)
{
    return static_cast<int>(std::floor(value + 0.5));
}

// Where each dot of a line begins. The last one begins at the pixel `last` at the latest.
template <std::size_t Count>
std::array<double, Count> places(double pitch, int last, const std::array<int, 2>& sharing)
{
    constexpr int Dots = static_cast<int>(Count);
    const int missing = Dots - 1 - last;
    const double fitting = std::min(pitch, static_cast<double>(last) / (Dots - 1));
    std::array<double, Count> starts {};
    if (missing <= 0 || missing > static_cast<int>(sharing.size())) {
        for (int i = 0; i < Dots; ++i)
            starts[static_cast<std::size_t>(i)] = missing <= 0 ? nearest(i * fitting) : i * fitting;
        return starts;
    }
    int free = 0;
    for (int i = 0; i < Dots; ++i) {
        const bool shares
            = std::find(sharing.begin(), sharing.begin() + missing, i) != sharing.begin() + missing;
        starts[static_cast<std::size_t>(i)] = shares ? free - 0.5 : free++;
    }
    return starts;
}
} // namespace

DotGrid::DotGrid(QSize cellPixels)
    : m_horizontal(cellPixels.width() * Pitch / CellWidth)
    , m_vertical(cellPixels.height() * Pitch / CellHeight)
    , m_side(std::max(1.0, pitch() * 2 / 3))
    , m_lefts(places<DotColumns>(m_horizontal,
          cellPixels.width() - 1 - static_cast<int>(std::ceil(m_side)), SharingColumns))
    , m_tops(places<DotRows>(m_vertical, cellPixels.height() - 1, SharingRows))
{
}

QRectF DotGrid::dot(int row, int column) const
{
    return { m_lefts[static_cast<std::size_t>(column)], m_tops[static_cast<std::size_t>(row)],
        m_side, m_side };
}

bool DotGrid::isParted() const
{
    return pitch() >= PartedPitch;
}

double DotGrid::pitch() const
{
    return std::min(m_horizontal, m_vertical);
}

} // namespace kestrel::artwork
