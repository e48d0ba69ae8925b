#include "artwork/CharacterSet.h"

#include "artwork/CharacterDrawing.h"
#include "artwork/DotGrid.h"
#include "artwork/DotMatrixFont.h"

#include <QPainter>

#include <algorithm>

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
    if (source.height() == DotGrid::CellHeight && source.top() % DotGrid::CellHeight == 0)
        return drawCharacter(source.top() / DotGrid::CellHeight, pixels);
    // Any other part is put together from whole cells.
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    const double scale = static_cast<double>(pixels.height()) / source.height();
    const QSize cell(pixels.width(), qRound(DotGrid::CellHeight * scale));
    const int last = std::min(source.bottom() / DotGrid::CellHeight, CharacterCount - 1);
    for (int code = source.top() / DotGrid::CellHeight; code <= last; ++code) {
        const double top = (code * DotGrid::CellHeight - source.top()) * scale;
        painter.drawImage(0, qRound(top), drawCharacter(code, cell));
    }
    return image;
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
