#include "artwork/CharacterSet.h"

#include "artwork/CharacterDrawing.h"
#include "artwork/DotGrid.h"
#include "artwork/DotMatrixFont.h"

namespace kestrel::artwork {

namespace {
constexpr int Reach = 3; // units that the bloom of a character reaches beyond its cell
} // namespace

QSize CharacterSet::size() const
{
    return { DotGrid::CellWidth, DotGrid::CellHeight * CharacterCount };
}

QImage CharacterSet::draw(const QRect& source, QSize pixels) const
{
    return drawCharacter(source.top() / DotGrid::CellHeight, pixels);
}

QRect CharacterSet::lightArea(const QRect& source) const
{
    return source.adjusted(-Reach, -Reach, Reach, Reach);
}

QImage CharacterSet::drawLight(const QRect& source, QSize pixels) const
{
    const auto reach = [](int length, int units) { return qRound(length * Reach * 1.0 / units); };
    const QSize margin(reach(pixels.width(), source.width() + 2 * Reach),
        reach(pixels.height(), source.height() + 2 * Reach));
    return drawCharacterLight(source.top() / DotGrid::CellHeight, pixels - 2 * margin, margin);
}

} // namespace kestrel::artwork
