#include "artwork/DisplayGlass.h"

#include "artwork/Canvas.h"
#include "artwork/CharacterDrawing.h"
#include "artwork/DotGrid.h"
#include "artwork/DotMatrixFont.h"
#include "artwork/Light.h"
#include "artwork/NearestPixel.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace kestrel::artwork {

namespace {
constexpr QRectF Glass(288, 9, 401, 44);
constexpr double Corner = 3.5;

// The places of the cells, as the panel places its characters.
constexpr std::array<double, 4> ZoneLefts { 298, 395, 492, 589 };
constexpr std::array<double, 2> RowTops { 17, 33 };
constexpr int ZoneLength = 10;
constexpr double CharacterPitch = 9;

constexpr QColor UnlitDot(120, 214, 200, 21);
// What the eye sees of dots that cannot be told apart: each lights 4/9 of its square.
constexpr QColor UnlitDots(120, 214, 200, 9);

// The places of all dots in one direction, in pixels, and the side of a dot.
struct Dots {
    std::vector<int> lefts;
    std::vector<int> tops;
    double side;
};

// Fills the room before `next`, wider than that between two characters, with dots of the same
// pitch.
void bridge(std::vector<int>& places, int next, int pitch, int space)
{
    const int room = next - places.back();
    const int dots = std::max(0, (room - 2 * space) / pitch + 1);
    const int first = places.back() + (room - (dots - 1) * pitch) / 2;
    for (int i = 0; i < dots; ++i)
        places.push_back(first + i * pitch);
}

DotGrid gridOfDisplay(const QTransform& toPixels)
{
    return DotGrid({ nearestPixel(DotGrid::CellWidth * toPixels.m11()),
        nearestPixel(DotGrid::CellHeight * toPixels.m22()) });
}

// The dots of the characters, and of what is between the zones. So faint a light must not spill
// into narrow gaps: small dots are whole pixels.
Dots dotsOfDisplay(const DotGrid& grid, const QTransform& toPixels)
{
    const double side = grid.side() < grid.pitch() - 1 ? grid.side() : std::floor(grid.side());
    Dots dots { {}, {}, side };
    for (const double zone : ZoneLefts) {
        for (int k = 0; k < ZoneLength; ++k) {
            const int left
                = nearestPixel(toPixels.m11() * (zone + k * CharacterPitch) + toPixels.dx());
            const int first = left + static_cast<int>(grid.dot(0, 0).left());
            if (k == 0 && !dots.lefts.empty())
                bridge(dots.lefts, first, grid.pitch(),
                    nearestPixel(toPixels.m11() * CharacterPitch)
                        - (DotColumns - 1) * grid.pitch());
            for (int column = 0; column < DotColumns; ++column)
                dots.lefts.push_back(left + static_cast<int>(grid.dot(0, column).left()));
        }
    }
    for (const double top : RowTops) {
        for (int row = 0; row < DotRows; ++row)
            dots.tops.push_back(nearestPixel(toPixels.m22() * top + toPixels.dy())
                + static_cast<int>(grid.dot(row, 0).top()));
    }
    return dots;
}

QImage unlitDot(double side)
{
    QImage dot = dotShape(side);
    QPainter painter(&dot);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(dot.rect(), UnlitDot);
    return dot;
}

void drawDots(QPainter& painter, const Dots& dots)
{
    const QImage dot = unlitDot(dots.side);
    const int origin = dots.lefts.front();
    QImage line(dots.lefts.back() - origin + dot.width(), dot.height(), dot.format());
    line.fill(Qt::transparent);
    QPainter filling(&line);
    filling.setCompositionMode(QPainter::CompositionMode_Source);
    for (const int left : dots.lefts)
        filling.drawImage(left - origin, 0, dot);
    filling.end();

    painter.save();
    painter.resetTransform();
    for (const int top : dots.tops)
        painter.drawImage(origin, top, line);
    painter.restore();
}

// The tone that stands for dots covers the whole glass, because its edge would be seen.
void drawUnlitDots(Canvas& canvas, const QPainterPath& glass)
{
    const QTransform toPixels = canvas.painter().transform();
    const DotGrid grid = gridOfDisplay(toPixels);
    if (grid.isParted())
        return drawDots(canvas.painter(), dotsOfDisplay(grid, toPixels));
    canvas.painter().fillPath(glass, UnlitDots);
}

// The room's light on the glass: a pale band across the upper half that ends in a slanted edge.
void drawReflection(Canvas& canvas, const QPainterPath& glass)
{
    QPainterPath band;
    band.moveTo(Glass.topLeft());
    band.lineTo(Glass.right(), Glass.top());
    band.lineTo(Glass.right(), Glass.top() + 9);
    band.lineTo(Glass.left(), Glass.top() + 25);
    band.closeSubpath();
    QLinearGradient pale(0, Glass.top(), 0, Glass.top() + 25);
    pale.setColorAt(0.0, QColor(214, 236, 240, 24));
    pale.setColorAt(1.0, QColor(214, 236, 240, 7));
    canvas.painter().fillPath(band.intersected(glass), pale);
}
} // namespace

void drawDisplayGlass(Canvas& canvas)
{
    recess(canvas, roundedRect(Glass.adjusted(-4, -3, 4, 3), 6), QColor(7, 7, 8), 1.5);
    const QPainterPath glass = roundedRect(Glass, Corner);
    QLinearGradient depth(Glass.topLeft(), Glass.bottomLeft());
    depth.setColorAt(0.0, QColor(3, 6, 7));
    depth.setColorAt(0.5, QColor(5, 11, 12));
    depth.setColorAt(1.0, QColor(6, 13, 14));
    canvas.painter().fillPath(glass, depth);
    drawUnlitDots(canvas, glass);
    drawReflection(canvas, glass);
    shadeInside(canvas, glass, QPointF(0, 1.2), 3.0, QColor(0, 0, 0, 200));
    canvas.painter().strokePath(roundedRect(Glass.adjusted(0.3, 0.3, -0.3, -0.3), Corner),
        QPen(QColor(255, 255, 255, 16), 0.6));
}

} // namespace kestrel::artwork
