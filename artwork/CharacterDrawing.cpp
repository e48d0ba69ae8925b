#include "artwork/CharacterDrawing.h"

#include "artwork/DotGrid.h"
#include "artwork/DotMatrixFont.h"
#include "artwork/Light.h"
#include "artwork/NearestPixel.h"
#include "artwork/SmallFace.h"

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
constexpr double DimLight = 0.4; // of a lit pixel

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

// The strength of the joints between dots: nearly 1 where there is hardly room for a gap, faint
// where the gap alone is wider than a pixel.
double jointStrength(const DotGrid& grid)
{
    return std::clamp(1.53 - 0.516 * grid.scale(), 0.24, 0.92);
}

bool isLit(int code, int row, int column)
{
    return column >= 0 && column < DotColumns && row >= 0 && row < DotRows
        && isDotLit(code, row, column);
}

// True for the first of four lit dots that make a point, such as each half of a colon.
bool beginsPoint(int code, int row, int column)
{
    const auto areLit = [&](int line) {
        return isLit(code, line, column) && isLit(code, line, column + 1)
            && !isLit(code, line, column - 1) && !isLit(code, line, column + 2);
    };
    return areLit(row) && areLit(row + 1) && !isLit(code, row - 1, column)
        && !isLit(code, row - 1, column + 1) && !isLit(code, row + 2, column);
}

// Where a lit dot is drawn. The dots of a point touch where dots are not told apart, or it would be
// heavier than the strokes.
QRectF litPlace(int code, int row, int column, const DotGrid& grid)
{
    for (int down = 0; !grid.isParted() && down < 2; ++down) {
        for (int right = 0; right < 2; ++right) {
            if (beginsPoint(code, row - down, column - right))
                return grid.dot(row - down + 1, column - right + 1)
                    .translated((right - 1) * grid.side(), (down - 1) * grid.side());
        }
    }
    return grid.dot(row, column);
}

// The lines between the middles of neighbouring lit dots that do not touch. Diagonals are joined
// only where no other way leads from dot to dot.
QPainterPath joints(int code, const DotGrid& grid)
{
    QPainterPath lines;
    const auto join = [&](int row, int column, int otherRow, int otherColumn) {
        const QPointF from = litPlace(code, row, column, grid).center();
        const QPointF to = litPlace(code, otherRow, otherColumn, grid).center();
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

// The alpha of a pixel that shines with this part of the full light.
int alphaOf(double light)
{
    return static_cast<int>(std::lround(255 * std::pow(light, 1 / DisplayGamma)));
}

// Makes a pixel that is half covered shine half as bright as a covered one.
void turnCoverageIntoLight(QImage& image)
{
    static const auto alphas = [] {
        std::array<int, 256> table {};
        for (std::size_t i = 0; i < table.size(); ++i)
            table[i] = alphaOf(static_cast<double>(i) / 255);
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
                painter.fillRect(litPlace(code, row, column, grid), Core);
        }
    }
    painter.end();
    if (!isShaped)
        turnCoverageIntoLight(image);
    return image;
}

// Fills what four lit dots enclose where dots are not told apart.
void fillSquares(QPainter& painter, int code, const DotGrid& grid)
{
    for (int row = 0; row + 1 < DotRows; ++row) {
        for (int column = 0; column + 1 < DotColumns; ++column) {
            if (isDotLit(code, row, column) && isDotLit(code, row, column + 1)
                && isDotLit(code, row + 1, column) && isDotLit(code, row + 1, column + 1))
                painter.fillRect(
                    litPlace(code, row, column, grid) | litPlace(code, row + 1, column + 1, grid),
                    Core);
        }
    }
}

QImage drawPixelByPixel(int code, const SmallFace& face, QSize pixels)
{
    static const int dimAlpha = alphaOf(DimLight);
    QImage image = transparent(pixels);
    for (int row = 0; row < std::min(SmallFace::Rows, pixels.height()); ++row) {
        for (int column = 0; column < std::min(face.columns(), pixels.width()); ++column) {
            const SmallFace::Light light = face.light(code, row, column);
            if (light == SmallFace::Light::Dark)
                continue;
            QColor colour = Core;
            if (light == SmallFace::Light::Dim)
                colour.setAlpha(dimAlpha);
            image.setPixelColor(column, row, colour);
        }
    }
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
    if (SmallFace::isFor(pixels))
        return drawPixelByPixel(code, SmallFace(pixels), pixels);
    const DotGrid grid(pixels);
    QImage image = transparent(pixels);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor joint = grid.isParted() ? Rim : Core;
    if (grid.isParted())
        joint.setAlphaF(static_cast<float>(jointStrength(grid)));
    painter.strokePath(joints(code, grid), QPen(joint, grid.side(), Qt::SolidLine, Qt::FlatCap));
    if (!grid.isParted())
        fillSquares(painter, code, grid);
    painter.drawImage(0, 0, litDots(code, grid, pixels));
    return image;
}

QImage drawCharacterLight(int code, QSize pixels, QSize reach)
{
    if (isBlank(code))
        return {};
    // The light of dots cannot be blurred by less than a pixel. It is fainter there instead.
    const double radius = BloomRadius * pixels.height() / DotGrid::CellHeight;
    QImage light = transparent(pixels + 2 * reach);
    QPainter painter(&light);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(reach.width(), reach.height());
    const DotGrid grid(pixels);
    if (grid.isParted()) {
        for (int row = 0; row < DotRows; ++row) {
            for (int column = 0; column < DotColumns; ++column) {
                if (isDotLit(code, row, column))
                    painter.fillRect(grid.dot(row, column), Bloom);
            }
        }
    } else {
        painter.setOpacity(Bloom.alphaF() * std::min(1.0, radius));
        painter.drawImage(0, 0, drawCharacter(code, pixels));
    }
    painter.end();
    return blurred(light, wholePixels(radius), Bloom);
}

} // namespace kestrel::artwork
