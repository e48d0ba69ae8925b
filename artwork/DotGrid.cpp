#include "artwork/DotGrid.h"

#include <algorithm>
#include <cmath>

namespace kestrel::artwork {

namespace {
constexpr double FilledShare = 0.68; // of the pitch
constexpr double SmallestGap = 0.95; // pixels, where dots are large enough to be told apart

int sideFor(double pitch)
{
    const int wanted = static_cast<int>(std::lround(FilledShare * pitch));
    const int parted = static_cast<int>(pitch - SmallestGap);
    return std::max(1, pitch < DotGrid::PartedPitch ? wanted : std::min(wanted, parted));
}

int nearest(double value)
{
    return static_cast<int>(std::floor(value + 0.5));
}
} // namespace

DotGrid::DotGrid(QSize cellPixels)
    : m_horizontal(cellPixels.width() * Pitch / CellWidth)
    , m_vertical(cellPixels.height() * Pitch / CellHeight)
    , m_side(sideFor(pitch()))
{
}

QRect DotGrid::dot(int row, int column) const
{
    return { nearest(column * m_horizontal), nearest(row * m_vertical), m_side, m_side };
}

double DotGrid::pitch() const
{
    return std::min(m_horizontal, m_vertical);
}

} // namespace kestrel::artwork
