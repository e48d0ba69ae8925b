#include "artwork/CharacterDrawing.h"

#include "artwork/DotGrid.h"
#include "artwork/DotMatrixFont.h"
#include "artwork/Light.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <array>
#include <cmath>

namespace kestrel::artwork {

namespace {
constexpr QColor Core(220, 255, 247);
constexpr QColor Rim(140, 243, 222);
constexpr QColor Bloom(38, 222, 190, 216);
constexpr double BloomRadius = 1.3; // units

constexpr double SmallestShaped = 3; // pixels: smaller dots are plain squares
constexpr double DisplayGamma = 2.2;
constexpr double Lean = 0.35; // pixels
constexpr float LightBetweenStems = 0.2F;

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
    return column >= 0 && column < DotColumns && row >= 0 && row < DotRows
        && isDotLit(code, row, column);
}

bool isShared(double place)
{
    return place != std::floor(place);
}

// Where a lit dot is drawn. One that shares two pixels leans towards the lit one of its neighbours,
// so that a stroke's end stays clear.
QRectF litPlace(int code, int row, int column, const DotGrid& grid)
{
    const auto lean = [](bool before, bool after) { return Lean * (int(after) - int(before)); };
    QRectF place = grid.dot(row, column);
    if (isShared(place.left()))
        place.translate(lean(isLit(code, row, column - 1), isLit(code, row, column + 1)), 0);
    if (isShared(place.top()))
        place.translate(0, lean(isLit(code, row - 1, column), isLit(code, row + 1, column)));
    return place;
}

// True for a dot alone between two stems, such as the slash of a zero.
bool isAloneBetweenStems(int code, int row, int column)
{
    return column == DotColumns / 2 && isLit(code, row, 0) && isLit(code, row, DotColumns - 1)
        && !isLit(code, row, column - 1) && !isLit(code, row, column + 1);
}

// Where columns share pixels, a bright dot there would close the letter.
QColor lightOf(int code, int row, int column, const DotGrid& grid)
{
    QColor light = Core;
    if (isShared(grid.dot(row, 1).left()) && isAloneBetweenStems(code, row, column))
        light.setAlphaF(LightBetweenStems);
    return light;
}

// The lines between the middles of neighbouring lit dots that do not touch. Diagonals are joined
// only where no other way leads from dot to dot.
QPainterPath joints(int code, const DotGrid& grid)
{
    QPainterPath lines;
    const auto join = [&](int row, int column, int otherRow, int otherColumn) {
        const QPointF from = grid.dot(row, column).center();
        const QPointF to = grid.dot(otherRow, otherColumn).center();
        if (std::max(std::abs(to.x() - from.x()), to.y() - from.y()) <= grid.side())
            return;
        lines.moveTo(from);
        lines.lineTo(to);
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

QImage litDot(double side)
{
    QImage dot = dotShape(side);
    QPainter painter(&dot);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    QRadialGradient light(QPointF(side, side) / 2, side * 0.75);
    light.setColorAt(0.0, Core);
    light.setColorAt(0.45, Core);
    light.setColorAt(1.0, Rim);
    painter.fillRect(dot.rect(), light);
    return dot;
}

QImage transparent(QSize pixels)
{
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

// Makes a pixel that is half covered shine half as bright as a covered one.
void turnCoverageIntoLight(QImage& image)
{
    static const auto alphas = [] {
        std::array<int, 256> table {};
        for (std::size_t i = 0; i < table.size(); ++i)
            table[i] = static_cast<int>(
                std::lround(255 * std::pow(static_cast<double>(i) / 255, 1 / DisplayGamma)));
        return table;
    }();
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        std::transform(line, line + image.width(), line, [](QRgb pixel) {
            const int alpha = alphas[static_cast<std::size_t>(qAlpha(pixel))];
            return qPremultiply(qRgba(Core.red(), Core.green(), Core.blue(), alpha));
        });
    }
}

QImage litDots(int code, const DotGrid& grid, QSize pixels)
{
    QImage image = transparent(pixels);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool isShaped = grid.side() >= SmallestShaped;
    const QImage dot = isShaped ? litDot(grid.side()) : QImage();
    for (int row = 0; row < DotRows; ++row) {
        for (int column = 0; column < DotColumns; ++column) {
            if (!isDotLit(code, row, column))
                continue;
            if (isShaped)
                painter.drawImage(grid.dot(row, column).topLeft(), dot);
            else
                painter.fillRect(
                    litPlace(code, row, column, grid), lightOf(code, row, column, grid));
        }
    }
    painter.end();
    if (!isShaped)
        turnCoverageIntoLight(image);
    return image;
}
} // namespace

QImage dotShape(double side)
{
    const int pixels = static_cast<int>(std::ceil(side));
    const QRectF square(0, 0, side, side);
    QImage shape = transparent({ pixels, pixels });
    QPainter painter(&shape);
    painter.setRenderHint(QPainter::Antialiasing);
    if (side < SmallestShaped)
        painter.fillRect(square, Qt::white);
    else
        painter.fillPath(roundedRect(square, side * 0.26), Qt::white);
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
    painter.drawImage(0, 0, litDots(code, grid, pixels));
    return image;
}

QImage drawCharacterLight(int code, QSize pixels, QSize reach)
{
    if (isBlank(code))
        return {};
    QImage light = transparent(pixels + 2 * reach);
    const DotGrid grid(pixels);
    QPainter painter(&light);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(reach.width(), reach.height());
    for (int row = 0; row < DotRows; ++row) {
        for (int column = 0; column < DotColumns; ++column) {
            if (isDotLit(code, row, column))
                painter.fillRect(grid.dot(row, column), Bloom);
        }
    }
    painter.end();
    const double radius = BloomRadius * pixels.height() / DotGrid::CellHeight;
    return blurred(light, std::max(1, static_cast<int>(std::lround(radius))), Bloom);
}

} // namespace kestrel::artwork
