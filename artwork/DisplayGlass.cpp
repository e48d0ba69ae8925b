#include "artwork/DisplayGlass.h"

#include "artwork/Canvas.h"
#include "artwork/CharacterDrawing.h"
#include "artwork/DotGrid.h"
#include "artwork/DotMatrixFont.h"
#include "artwork/Light.h"
#include "common/NearestPixel.h"

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
constexpr int ColumnsBeside = 4; // columns of dots beside the outer characters
constexpr int RowsBeside = 2;

// The places of all dots in one direction, in pixels.
class DotLine {
public:
    explicit DotLine(double pitch)
        : m_pitch(pitch)
    {
    }

    // Adds the next dot, and dots at an even distance in the gap before it.
    void add(int place)
    {
        if (!m_places.empty()) {
            const int start = m_places.back();
            const int steps = static_cast<int>(std::lround((place - start) / m_pitch));
            for (int i = 1; i < steps; ++i)
                m_places.push_back(
                    start + nearestPixel(static_cast<double>(place - start) * i / steps));
        }
        m_places.push_back(place);
    }

    void extend(int count)
    {
        const int first = m_places.front();
        const int last = m_places.back();
        for (int i = 1; i <= count; ++i) {
            m_places.insert(m_places.begin(), first - nearestPixel(i * m_pitch));
            m_places.push_back(last + nearestPixel(i * m_pitch));
        }
    }

    [[nodiscard]] const std::vector<int>& places() const { return m_places; }

private:
    double m_pitch;
    std::vector<int> m_places;
};

struct Dots {
    std::vector<int> lefts;
    std::vector<int> tops;
    double side; // of each dot; all in pixels
};

DotGrid gridOfDisplay(const QTransform& toPixels)
{
    return DotGrid({ nearestPixel(DotGrid::CellWidth * toPixels.m11()),
        nearestPixel(DotGrid::CellHeight * toPixels.m22()) });
}

// The dots of the characters and, between and beside them, as many as there is room for.
Dots dotsOfDisplay(const DotGrid& grid, const QTransform& toPixels)
{
    DotLine columns(grid.horizontalPitch());
    for (const double zone : ZoneLefts) {
        for (int k = 0; k < ZoneLength; ++k) {
            const int left
                = nearestPixel(toPixels.m11() * (zone + k * CharacterPitch) + toPixels.dx());
            for (int column = 0; column < DotColumns; ++column)
                columns.add(left + static_cast<int>(grid.dot(0, column).left()));
        }
    }
    columns.extend(ColumnsBeside);
    DotLine rows(grid.verticalPitch());
    for (const double top : RowTops) {
        for (int row = 0; row < DotRows; ++row)
            rows.add(nearestPixel(toPixels.m22() * top + toPixels.dy())
                + static_cast<int>(grid.dot(row, 0).top()));
    }
    rows.extend(RowsBeside);
    return { columns.places(), rows.places(), grid.side() };
}

std::vector<int> regular(const std::vector<int>& places, int step)
{
    std::vector<int> even;
    for (int place = places.front(); place <= places.back(); place += step)
        even.push_back(place);
    return even;
}

// Where dots are too small to be told apart, their uneven gaps would make a pattern of their own. A
// regular mesh shows there what the eye sees of them.
Dots meshInPlaceOf(const Dots& dots, double pitch)
{
    const int step = std::max(2, static_cast<int>(std::ceil(pitch)));
    return { regular(dots.lefts, step), regular(dots.tops, step), step - 1.0 };
}

QImage unlitDot(double side)
{
    QImage dot = dotShape(side);
    QPainter painter(&dot);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(dot.rect(), UnlitDot);
    return dot;
}

void drawUnlitDots(Canvas& canvas)
{
    QPainter& painter = canvas.painter();
    const QTransform toPixels = painter.transform();
    const DotGrid grid = gridOfDisplay(toPixels);
    Dots dots = dotsOfDisplay(grid, toPixels);
    if (!grid.isParted())
        dots = meshInPlaceOf(dots, grid.pitch());

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
    drawUnlitDots(canvas);
    drawReflection(canvas, glass);
    shadeInside(canvas, glass, QPointF(0, 1.2), 3.0, QColor(0, 0, 0, 200));
    canvas.painter().strokePath(roundedRect(Glass.adjusted(0.3, 0.3, -0.3, -0.3), Corner),
        QPen(QColor(255, 255, 255, 16), 0.6));
}

} // namespace kestrel::artwork
