#include "artwork/CharacterDrawing.h"

#include "artwork/DotGrid.h"
#include "artwork/DotMatrixFont.h"
#include "artwork/Light.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace kestrel::artwork {

namespace {
constexpr QColor Core(220, 255, 247);
constexpr QColor Rim(140, 243, 222);
constexpr QColor Bloom(38, 222, 190);
constexpr double BloomRadius = 1.3; // units
constexpr int BloomOpacity = 216;

constexpr int SmallestShaped = 3; // pixels: smaller dots are plain squares

bool isBlank(int code)
{
    for (int row = 0; row < DotRows; ++row) {
        for (int column = 0; column < DotColumns; ++column) {
            if (isDotLit(code, row, column))
                return false;
        }
    }
    return true;
}

// The strength of the joints between dots of that pitch in pixels: nearly 1 where dots touch, faint
// where the gap alone is wider than a pixel.
double jointStrength(double pitch)
{
    return std::clamp(1.2 - 0.22 * pitch, 0.24, 0.92);
}

bool isLit(int code, int row, int column)
{
    return column >= 0 && column < DotColumns && row < DotRows && isDotLit(code, row, column);
}

// The lines between the middles of neighbouring lit dots. Diagonals are joined only where no other
// way leads from dot to dot.
QPainterPath joints(int code, const DotGrid& grid)
{
    QPainterPath lines;
    const auto join = [&](int row, int column, int otherRow, int otherColumn) {
        lines.moveTo(QRectF(grid.dot(row, column)).center());
        lines.lineTo(QRectF(grid.dot(otherRow, otherColumn)).center());
    };
    for (int row = 0; row < DotRows; ++row) {
        for (int column = 0; column < DotColumns; ++column) {
            if (!isDotLit(code, row, column))
                continue;
            const bool right = isLit(code, row, column + 1);
            const bool below = isLit(code, row + 1, column);
            if (right)
                join(row, column, row, column + 1);
            if (below)
                join(row, column, row + 1, column);
            if (isLit(code, row + 1, column + 1) && !right && !below)
                join(row, column, row + 1, column + 1);
            if (isLit(code, row + 1, column - 1) && !below && !isLit(code, row, column - 1))
                join(row, column, row + 1, column - 1);
        }
    }
    return lines;
}

QImage litDot(int side)
{
    QImage dot = dotShape(side);
    QPainter painter(&dot);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    QRadialGradient light(QRectF(dot.rect()).center(), side * 0.75);
    light.setColorAt(0.0, Core);
    light.setColorAt(0.45, Core);
    light.setColorAt(1.0, Rim);
    painter.fillRect(dot.rect(), side < SmallestShaped ? QBrush(Core) : QBrush(light));
    return dot;
}

QImage transparent(QSize pixels)
{
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}
} // namespace

QImage dotShape(int side)
{
    QImage shape = transparent({ side, side });
    QPainter painter(&shape);
    if (side < SmallestShaped) {
        painter.fillRect(shape.rect(), Qt::white);
        return shape;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(roundedRect(QRectF(shape.rect()), side * 0.26), Qt::white);
    return shape;
}

QImage drawCharacter(int code, QSize pixels)
{
    QImage image = transparent(pixels);
    const DotGrid grid(pixels);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor joint = Rim;
    joint.setAlphaF(static_cast<float>(jointStrength(grid.pitch())));
    painter.strokePath(joints(code, grid), QPen(joint, grid.side(), Qt::SolidLine, Qt::FlatCap));
    const QImage dot = litDot(grid.side());
    for (int row = 0; row < DotRows; ++row) {
        for (int column = 0; column < DotColumns; ++column) {
            if (isDotLit(code, row, column))
                painter.drawImage(grid.dot(row, column).topLeft(), dot);
        }
    }
    return image;
}

QImage drawCharacterLight(int code, QSize pixels, QSize reach)
{
    if (isBlank(code))
        return {};
    QImage light = transparent(pixels + 2 * reach);
    const DotGrid grid(pixels);
    QPainter painter(&light);
    painter.translate(reach.width(), reach.height());
    for (int row = 0; row < DotRows; ++row) {
        for (int column = 0; column < DotColumns; ++column) {
            if (isDotLit(code, row, column))
                painter.fillRect(grid.dot(row, column), Bloom);
        }
    }
    painter.end();
    painter.begin(&light);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.fillRect(light.rect(), QColor(0, 0, 0, BloomOpacity));
    painter.end();
    const double radius = BloomRadius * pixels.height() / DotGrid::CellHeight;
    return blurred(light, std::max(1, static_cast<int>(std::lround(radius))), Bloom);
}

} // namespace kestrel::artwork
